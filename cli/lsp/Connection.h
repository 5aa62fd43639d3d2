#pragma once

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "Frame.h"
#include "Protocol.h"

namespace kdx::lsp {

/// The client at the other end of the standard input and output.
class Connection {
public:
    /// The next message; discarded() when it is no JSON; nothing when the client is gone.
    /// @throws Trouble when the input cannot be read, or is out of step.
    std::optional<Json> next();

    /// Whether the client has nothing more to say for the moment: a short while goes by in which
    /// nothing comes.
    bool isQuiet();

    /// Whether the client has taken back a request. Looks at all that has come by now.
    bool isCancelled(const Json& message);

    /// @throws Trouble when the client no longer listens.
    static void send(std::string_view message);

private:
    bool read();
    void sort(Json message);

    FrameReader frames;
    std::deque<Json> waiting;
    std::set<std::string> cancelled;  // the ids, as JSON
    bool ended = false;
};

}  // namespace kdx::lsp
