#pragma once

#include <kiv/KDXReader.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// Statements read ahead without the GIL: so many at a time that taking it costs little, so few
/// that they fit into the processor's cache.
class StatementBatch {
public:
    struct Statement {
        kiv::MiniKDXParser::lineType kind;
        std::string_view first;
        std::string_view second;
    };

    /// Reads on. Only objects, parameters and ENDs are kept.
    /// @return false when none is left.
    bool read(kiv::KDXReader& reader);

    /// Shows what was read last to `visit(const Statement&)`, in its order.
    template <typename Visit>
    void each(Visit visit) const {
        std::string_view rest = halves;
        for (const Sizes& sizes : statements) {
            visit(
                {sizes.kind, rest.substr(0, sizes.first), rest.substr(sizes.first, sizes.second)});
            rest.remove_prefix(sizes.first + sizes.second);
        }
    }

private:
    struct Sizes {
        kiv::MiniKDXParser::lineType kind;
        std::size_t first;
        std::size_t second;
    };

    std::vector<Sizes> statements;
    std::string halves;  // of all of them, end to end
};

}  // namespace kdx
