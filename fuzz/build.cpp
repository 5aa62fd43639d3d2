// A sequence of calls of the builders: they come back as events.

#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/KDXBuilder.h>

#include <array>

#include "Support.h"

namespace {

/// Makes the calls that the input asks for, and writes down the events that they stand for.
class Session {
public:
    explicit Session(fuzz::Input& source) : input(source) {}

    void run() {
        while (!input.empty()) step();
        builder.popAll();
        while (depth > 0) expectEnd();
        fuzz::Events walk(fuzz::Input(builder.getKDX()).lines());
        fuzz::require(walk.read(), "a builder writes KDX");
        fuzz::require(walk.list == expected, "calls come back as events");
    }

private:
    void step() {
        constexpr std::array calls = {
            &Session::pushObject, &Session::pushUnnamed,    &Session::pushReplaced,
            &Session::pushRoot,   &Session::popObject,      &Session::addText,
            &Session::addList,    &Session::addNumber,      &Session::addMeasure,
            &Session::addAction,  &Session::addBuiltAction, &Session::moveThere};
        (this->*calls[input.byte() % calls.size()])();
    }

    /// Text that every place takes and no reader changes.
    std::string word() {
        std::string text;
        for (auto count = input.byte() % 8; count > 0; --count)
            text += "abcXYZ0189&._"[input.byte() % 13];
        return text;
    }

    void pushObject() {
        const std::string type = word();
        const std::string name = word();
        builder.pushObject(type, name);
        expectObject(type, name);
    }
    void pushUnnamed() {
        const std::string type = word();
        builder.pushObject(type);
        expectObject(type, "");
    }
    void pushReplaced() {
        const std::string type = 'T' + word();
        const std::string name = word();
        builder.pushReplacedObject(type, name);
        expectObject("&replace " + type, name);
    }
    void pushRoot() {
        const std::string type = 'T' + word();
        const std::string name = 'n' + word();
        builder.pushRoot('/' + type + ':' + name + '/' + type);
        expectObject(type, name);
        expectObject(type, "");
    }
    void popObject() {
        if (depth == 0) return requireRefusal([this] { builder.popObject(); });
        builder.popObject();
        expectEnd();
    }
    void addText() {
        const std::string name = word();
        const kiv::CleanKDXParamString value(word() + std::string(input.byte() % 3, '\\'));
        builder.addParam(name, value);
        expect('p', name, value);
    }
    void addList() {
        const std::string name = word();
        const std::string value = word();
        builder.addParam(name, std::vector<std::string>(2, value + '.'));
        expect('p', name, value + "., " + value + '.');
    }
    void addNumber() {
        const int value = static_cast<int>(input.byte()) - 100;
        builder.addParam("n", value);
        expect('p', "n", std::to_string(value));
    }
    void addMeasure() {
        const unsigned value = input.byte();
        const std::string unit = word();
        builder.addParam("n", value + 0.5, ' ' + unit);
        const std::string brackets = unit.empty() ? "" : " [" + unit + ']';
        expect('p', "n", std::to_string(value) + ".5" + brackets);
    }
    void addAction() {
        const std::string action = 'a' + word();
        const std::string params = word();
        const auto add = [&] { builder.addAction(' ' + action, params); };
        if (depth != 0) return requireRefusal(add);
        add();
        expect('a', '>' + action + ' ' + params, "");
    }
    void addBuiltAction() {
        kiv::ActionBuilder action("go");
        action.addParam("n", word() + ',');
        action.addParam("v");
        if (depth != 0) return requireRefusal([&] { builder.addAction(action); });
        builder.addAction(action);
        expect('a', action.getKDX(), "");
    }
    void moveThere() {
        kiv::KDXBuilder other(std::move(builder));
        builder = other;
    }

    template <typename Call>
    void requireRefusal(Call call) {
        const std::string before = closedText();
        const bool refused = failureOf<kiv::internal::error>(call).rfind("KDXBuilder::", 0) == 0;
        fuzz::require(refused && closedText() == before, "a refused call changes nothing");
    }

    std::string closedText() const {
        kiv::KDXBuilder copy = builder;
        copy.popAll();
        return copy.getKDX();
    }

    // Every event is that of one line.
    void expect(char kind, const std::string& first, const std::string& second) {
        expected.push_back({kind, first, second, expected.size()});
    }
    void expectObject(const std::string& type, const std::string& name) {
        expect('o', type, name);
        ++depth;
    }
    void expectEnd() {
        expect('e', "", "");
        --depth;
    }

    fuzz::Input& input;
    kiv::KDXBuilder builder;
    std::size_t depth = 0;
    std::vector<fuzz::Events::Event> expected;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    Session(input).run();
    return 0;
}
