// A sequence of calls of the builders: they come back as events.

#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/KDXBuilder.h>

#include <limits>

#include "Support.h"

namespace {

/// Makes the calls that the input asks for, and writes down the events that they stand for.
class Session {
public:
    explicit Session(fuzz::Input& source) : input(source) {}

    void run() {
        while (!input.empty()) step(input.byte() % 12);
        builder.popAll();
        while (depth > 0) expectEnd();
        requireEvents();
    }

private:
    void step(unsigned choice) {
        switch (choice) {
            case 0: return pushObject();
            case 1: return pushUnnamed();
            case 2: return pushReplaced();
            case 3: return pushRoot();
            case 4: return popObject();
            case 5: return addText();
            case 6: return addList();
            case 7: return addNumber();
            case 8: return addMeasure();
            case 9: return addAction();
            case 10: return addBuiltAction();
            default: return moveThere();
        }
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
        expected.push_back({'p', name, value, 0});
    }
    void addList() {
        const std::string name = word();
        const std::string value = word();
        builder.addParam(name, std::vector<std::string>(2, value + '.'));
        expected.push_back({'p', name, value + "., " + value + '.', 0});
    }
    void addNumber() {
        const int value = static_cast<int>(input.byte()) - 100;
        builder.addParam("n", value);
        expected.push_back({'p', "n", std::to_string(value), 0});
    }
    void addMeasure() {
        const unsigned value = input.byte();
        const std::string unit = word();
        builder.addParam("n", value + 0.5, ' ' + unit);
        const std::string brackets = unit.empty() ? "" : " [" + unit + ']';
        expected.push_back({'p', "n", std::to_string(value) + ".5" + brackets, 0});
    }
    void addAction() {
        const std::string action = 'a' + word();
        const std::string params = word();
        const auto add = [&] { builder.addAction(' ' + action, params); };
        if (depth != 0) return requireRefusal(add);
        add();
        expected.push_back({'a', '>' + action + ' ' + params, "", 0});
    }
    void addBuiltAction() {
        kiv::ActionBuilder action("go");
        action.addParam("n", word() + ',');
        action.addParam("v");
        if (depth != 0) return requireRefusal([&] { builder.addAction(action); });
        builder.addAction(action);
        expected.push_back({'a', action.getKDX(), "", 0});
    }
    void moveThere() {
        kiv::KDXBuilder other(std::move(builder));
        builder = other;
    }

    template <typename Call>
    void requireRefusal(Call call) {
        kiv::KDXBuilder before = builder;
        bool refused = false;
        try {
            call();
        } catch (const kiv::internal::error&) {
            refused = true;
        }
        kiv::KDXBuilder after = builder;
        before.popAll();
        after.popAll();
        fuzz::require(refused && before.getKDX() == after.getKDX(),
                      "a refused call changes nothing");
    }

    void expectObject(const std::string& type, const std::string& name) {
        expected.push_back({'o', type, name, 0});
        ++depth;
    }
    void expectEnd() {
        expected.push_back({'e', "", "", 0});
        --depth;
    }

    void requireEvents() {
        const std::string& text = builder.getKDX();
        fuzz::Input lines(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        fuzz::Events walk(lines.lines());
        fuzz::require(walk.read(), "a builder writes KDX");
        for (auto& event : walk.list) event.line = 0;
        fuzz::require(walk.list == expected, "calls come back as events");
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
