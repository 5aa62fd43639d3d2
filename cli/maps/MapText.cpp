#include "MapText.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "base/Status.h"
#include "io/Output.h"
#include "messages/Diagnostics.h"
#include "text/JsonText.h"
#include "text/ShownText.h"

namespace kdx {
namespace {

using Json = nlohmann::json;

/// Fills a map while the JSON is read: the text that a number has is seen only here.
class MapBuilder : public Json::json_sax_t {
public:
    explicit MapBuilder(kiv::StringMapMap& filledMap) : map(filledMap) {}

    bool null() override { return fail("null is no value of a parameter"); }
    bool boolean(bool value) override { return addValue(value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override {
        return addValue(value == 0 ? "-0" : std::to_string(value));  // 0 itself comes unsigned
    }
    bool number_unsigned(number_unsigned_t value) override {
        return addValue(std::to_string(value));
    }
    bool number_float(number_float_t /*value*/, const string_t& text) override {
        return addValue(text);
    }
    bool string(string_t& value) override { return addValue(value); }
    bool binary(binary_t& /*value*/) override { return fail("binary data"); }
    bool start_array(std::size_t /*size*/) override { return fail("an array is no part of a map"); }
    bool end_array() override { return true; }

    bool start_object(std::size_t /*size*/) override {
        if (depth == 2) return fail("an object is no value of a parameter");
        ++depth;
        return true;
    }

    bool end_object() override {
        --depth;
        return true;
    }

    bool key(string_t& text) override {
        if (depth == 1) {
            path = text;
            name.clear();
            const auto [entry, isNew] = map.try_emplace(path);
            parameters = &entry->second;
            return isNew || fail("the object stands here twice");
        }
        name = text;
        return parameters->find(name) == parameters->end() ||
               fail("the parameter stands here twice");
    }

    bool parse_error(std::size_t /*offset*/, const std::string& token,
                     const Json::exception& error) override {
        std::string what = error.what();
        what.erase(0, what.find("] ") + 2);
        const std::size_t quoted = what.find(token);  // whole, however long it is
        if (quoted != std::string::npos) what.replace(quoted, token.size(), shown(token));
        throw Trouble("is no JSON: " + what);
    }

private:
    bool addValue(const std::string& text) {
        if (depth < 2) return fail("not an object of objects");
        parameters->emplace(name, text);
        return true;
    }

    [[noreturn]] bool fail(const std::string& why) const {
        std::string where;
        if (depth > 0) where += " at \"" + shown(path) + '"';
        if (depth > 1) where += ", \"" + shown(name) + '"';
        throw Trouble("is no map" + where + ": " + why);
    }

    kiv::StringMapMap& map;
    std::map<std::string, std::string>* parameters = nullptr;
    std::string path;
    std::string name;
    int depth = 0;
};

}  // namespace

void appendJson(std::string& out, const kiv::StringMapMap::mapped_type& parameters,
                std::string_view margin) {
    out += '{';
    for (auto parameter = parameters.begin(); parameter != parameters.end(); ++parameter) {
        if (parameter != parameters.begin()) out += ',';
        out += '\n';
        out += margin;
        out += "  ";
        appendJsonString(out, parameter->first);
        out += ": ";
        appendJsonString(out, parameter->second);
    }
    if (!parameters.empty()) out.append(1, '\n').append(margin);
    out += '}';
}

namespace {

void appendEntry(std::string& out, const std::string& path,
                 const kiv::StringMapMap::mapped_type& parameters) {
    try {
        out += "  ";
        appendJsonString(out, path);
        out += ": ";
        appendJson(out, parameters, "  ");
    } catch (const Trouble& trouble) {
        throw Trouble(shown(path) + ": " + trouble.what());
    }
}

}  // namespace

void printJson(const kiv::StringMapMap& map) {
    Printer printer;
    const char* separator = "\n";
    printer.text += '{';
    for (const auto& [path, parameters] : map) {
        printer.text.append(separator);
        appendEntry(printer.text, path, parameters);
        printer.printIfLong();
        separator = ",\n";
    }
    printer.text += map.empty() ? "}\n" : "\n}\n";
    printer.print();
}

bool hasObjectIn(const kiv::StringMapMap& map, const std::string& path) {
    const std::string inside = path + '/';
    const auto next = map.lower_bound(inside);
    return next != map.end() && next->first.compare(0, inside.size(), inside) == 0;
}

std::vector<std::string> leftOutOfFlat(const kiv::StringMapMap& map) {
    std::vector<std::string> paths;
    for (const auto& [path, parameters] : map)
        if (parameters.empty() && !hasObjectIn(map, path)) paths.push_back(path);
    return paths;
}

void printFlat(const kiv::StringMapMap& map) {
    Printer printer;
    for (const auto& [path, parameters] : map) {
        for (const auto& [name, value] : parameters) {
            printer.text += path;
            printer.text += '\t';
            printer.text += name;
            printer.text += '\t';
            printer.text += value;
            printer.text += '\n';
        }
        printer.printIfLong();
    }
    printer.print();
}

kiv::StringMapMap readJson(std::string_view text) {
    kiv::StringMapMap map;
    MapBuilder builder(map);
    Json::sax_parse(text, &builder);
    return map;
}

kiv::StringMapMap readFlat(std::string_view text) {
    kiv::StringMapMap map;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t pathEnd = line.find('\t');
        const std::size_t nameEnd = line.find('\t', pathEnd + 1);
        const std::string where = "line " + std::to_string(number);
        if (pathEnd == std::string_view::npos || nameEnd == std::string_view::npos)
            throw Trouble(where + " is not PATH<tab>NAME<tab>VALUE: " + shown(line));
        const std::string_view name = line.substr(pathEnd + 1, nameEnd - pathEnd - 1);
        auto& parameters = map[std::string(line.substr(0, pathEnd))];
        if (!parameters.emplace(name, line.substr(nameEnd + 1)).second)
            throw Trouble(where + ": the parameter stands here twice: " + shown(line));
    }
    return map;
}

}  // namespace kdx
