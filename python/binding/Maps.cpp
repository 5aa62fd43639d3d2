#include <kiv/Error.h>
#include <kiv/KDXCheck.h>
#include <kiv/KDXDocument.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Bindings.h"
#include "Failure.h"
#include "StatementBatch.h"
#include "Text.h"

namespace kdx {
namespace {

using kiv::MiniKDXParser;
using kiv::StringMapMap;

/// The names of parameters as str, each made once: a text has many parameters and few names.
class Names {
public:
    py::handle get(std::string_view name) {
        const auto found = made.find(name);
        if (found != made.end()) return found->second;
        const std::string& kept = texts.emplace_back(name);
        return made.emplace(kept, stringOf(kept)).first->second;
    }

private:
    std::deque<std::string> texts;  // a deque, because it leaves what it holds in place
    std::unordered_map<std::string_view, py::str> made;
};

/// What `dict` has under `key`; `value` is put there if there is nothing.
py::handle setDefault(py::handle dict, py::handle key, py::handle value) {
    PyObject* const found = PyDict_SetDefault(dict.ptr(), key.ptr(), value.ptr());
    if (found == nullptr) throw ErrorIsSet();
    return found;
}

/// Fills a dict of dicts by path.
class FlatMap {
public:
    void newObject(std::string_view type, std::string_view name) {
        open.emplace_back(path.size(), py::handle());
        kiv::appendLevel(path, type, name);
        open.back().second = setDefault(map, stringOf(path), py::dict());
    }

    void newParameter(std::string_view name, std::string_view value) {
        setDefault(open.back().second, names.get(name), stringOf(value));
    }

    void endObject() {
        path.resize(open.back().first);
        open.pop_back();
    }

    py::object result() const { return map; }

private:
    py::dict map;
    Names names;
    std::string path;                                      // of the innermost open object
    std::vector<std::pair<std::size_t, py::handle>> open;  // the lengths of the paths around each
};

/// Fills objects that hold their parameters and objects.
class NestedMap {
public:
    NestedMap() : objectClass(py::module_::import("kdx._maps").attr("Object")) {
        root = objectClass();
        open.push_back(root);
    }

    void newObject(std::string_view type, std::string_view name) {
        std::string key;
        kiv::appendLevel(key, type, name);
        const py::object made = objectClass(stringOf(type), stringOf(name));
        open.push_back(setDefault(open.back(), stringOf(key), made));
    }

    void newParameter(std::string_view name, std::string_view value) {
        setDefault(open.back(), names.get(name), stringOf(value));
    }

    void endObject() { open.pop_back(); }

    py::object result() const { return root; }

private:
    py::object objectClass;
    py::object root;
    Names names;
    std::vector<py::handle> open;
};

kiv::KDXCheck::Report firstError(std::string_view text) {
    kiv::KDXCheck::Options options;
    options.warnings = false;
    options.maxProblems = 1;
    const py::gil_scoped_release released;
    return kiv::KDXCheck::check(text, options);
}

template <typename Map>
void put(Map& map, const StatementBatch::Statement& statement) {
    if (statement.kind == MiniKDXParser::lineObject)
        map.newObject(statement.first, statement.second);
    if (statement.kind == MiniKDXParser::lineParameter)
        map.newParameter(statement.first, statement.second);
    if (statement.kind == MiniKDXParser::lineEnd) map.endObject();
}

/// A key pressed to interrupt the program is heeded between two batches.
bool readBatch(StatementBatch& batch, kiv::KDXReader& reader) {
    if (PyErr_CheckSignals() != 0) throw ErrorIsSet();
    const py::gil_scoped_release released;
    return batch.read(reader);
}

template <typename Map>
py::object load(const py::object& given) {
    const Text text(given);
    const kiv::KDXCheck::Report report = firstError(text.view());
    if (report.errors != 0) throwDecodeError(given, text, report.problems.front());
    Map map;
    kiv::KDXReader reader(text.view());
    for (StatementBatch batch; readBatch(batch, reader);)
        batch.each([&](const StatementBatch::Statement& statement) { put(map, statement); });
    return map.result();
}

StringMapMap mapOf(const py::object& given) {
    StringMapMap map;
    const py::dict objects(given);  // any mapping makes one
    for (const auto& [path, mapping] : objects) {
        auto& filled = map[std::string(Text(path).view())];
        const py::dict parameters(py::reinterpret_borrow<py::object>(mapping));
        for (const auto& [name, value] : parameters)
            filled.emplace(Text(name).view(), Text(value).view());
    }
    return map;
}

/// Makes the values what must be written for them.
/// @return why that cannot be done; nothing when it could.
std::optional<std::string> protect(StringMapMap& map) {
    for (auto& [path, parameters] : map) {
        for (auto& [name, value] : parameters) {
            try {
                value = kiv::writtenValue(name, value);
            } catch (const kiv::data::invalid& refusal) {
                return path + ", " + name + ": " + refusal.message();
            }
        }
    }
    return std::nullopt;
}

/// Which object of `map` is lost when `read` is what was read back; nothing when all are there.
std::optional<std::string> lossOf(const StringMapMap& map, const StringMapMap& read) {
    for (const auto& [path, parameters] : map) {
        const auto found = read.find(path);
        if (found == read.end() || found->second != parameters)
            return path + ": no text has an object with this path";
    }
    return std::nullopt;
}

/// What is read back of a text; as far as it can be read.
StringMapMap readBack(const std::string& text) {
    StringMapMap map;
    try {
        kiv::KDXToStringMapMap::convert(text, map);
    } catch (const kiv::data::invalid&) {
        return map;
    } catch (const kiv::KDXToStringMapMap::Except&) {
        return map;
    }
    return map;
}

/// Appends the text of a map.
/// @return why no text can carry it; nothing when one can.
std::optional<std::string> write(const StringMapMap& map,
                                 const kiv::StringMapMapToKDX::Format& format, std::string& text) {
    StringMapMap written = map;
    const std::optional<std::string> refusal = protect(written);
    if (refusal) return refusal;
    kiv::StringMapMapToKDX::convert(written, text, format);
    return lossOf(map, readBack(text));
}

py::str dump(const py::object& given, std::int32_t indent, bool spaced, bool endComments) {
    const StringMapMap map = mapOf(given);
    std::string text;
    std::optional<std::string> loss;
    {
        const py::gil_scoped_release released;
        loss = write(map, {indent, spaced, endComments}, text);
    }
    if (loss) throwEncodeError(*loss);
    return stringOf(text);
}

py::str writtenValue(const py::object& name, const py::object& value) {
    try {
        return stringOf(kiv::writtenValue(Text(name).view(), Text(value).view()));
    } catch (const kiv::data::invalid& refusal) {
        throwEncodeError(std::string(Text(name).view()) + ": " + refusal.message());
    }
}

}  // namespace

void addMaps(py::module_& module) {
    module.def("load_flat", load<FlatMap>, py::arg("text"));
    module.def("load_nested", load<NestedMap>, py::arg("text"));
    module.def("dump_flat", dump, py::arg("map"), py::arg("indent"), py::arg("spaced"),
               py::arg("end_comments"));
    module.def("written_value", writtenValue);
}

}  // namespace kdx
