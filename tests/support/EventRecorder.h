#pragma once

#include <kiv/MiniKDXParser.h>

#include <functional>
#include <string>
#include <vector>

#include "support/Failure.h"

/// Writes what a parser reports as text, one line an event: "0 newObject Sample|s1\n".
class EventRecorder : public kiv::MiniKDXParser {
public:
    using MiniKDXParser::getLineNumber;
    using MiniKDXParser::MiniKDXParser;

    std::string events;
    /// Called at each event, once it is written.
    std::function<void(EventRecorder&)> reaction = [](EventRecorder&) {};

    /// The open objects, outermost first: "Sample|s1 Channel|A".
    std::string openObjects() const {
        std::string text;
        for (const auto& [type, name] : objectStack)
            text.append(text.empty() ? "" : " ").append(type + '|' + name);
        return text;
    }

    /// Where the parser stands: the line, and the open objects.
    std::string state() const { return std::to_string(getLineNumber()) + ' ' + openObjects(); }

private:
    void newObject(const std::string& type, const std::string& name) override {
        record("newObject " + type + '|' + name);
    }
    void newParameter(const std::string& name, const std::string& value) override {
        record("newParameter " + name + '|' + value);
    }
    void endObject() override { record("endObject"); }
    void newAction(const std::string& action) override { record("newAction " + action); }

    void record(const std::string& event) {
        events += std::to_string(getLineNumber()) + ' ' + event + '\n';
        reaction(*this);
    }
};

/// The events of the lines, and behind them the message of what ends the walk early.
inline std::string eventsOf(const std::vector<std::string>& lines) {
    EventRecorder recorder(lines);
    const std::string message = messageOf([&] { recorder.parse(); });
    return recorder.events + message;
}
