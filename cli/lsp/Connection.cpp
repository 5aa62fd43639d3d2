#include "Connection.h"

#include <array>
#include <charconv>
#include <chrono>
#include <utility>

#include "io/Input.h"
#include "io/Output.h"

namespace kdx::lsp {
namespace {

// Longer than the pause between two messages of a burst, shorter than anyone notices.
constexpr std::chrono::milliseconds kPauseOfBurst{4};

// So many messages are looked at ahead of their turn.
constexpr std::size_t kMaxWaiting = 1000;

// The six bits that the first and the second half of a UTF-16 pair begin with.
constexpr unsigned kFirstHalf = 0xD800U >> 10U;
constexpr unsigned kSecondHalf = 0xDC00U >> 10U;

/// What the UTF-16 unit begins with that is escaped at a place; 0 for none.
unsigned halfAt(std::string_view json, std::size_t at) {
    unsigned unit = 0;
    if (json.substr(at, 2) == "\\u" && json.size() >= at + 6)
        std::from_chars(json.data() + at + 2, json.data() + at + 6, unit, 16);
    return unit >> 10U;
}

/// Puts a replacement character in the place of half a UTF-16 pair, which stands alone where an
/// editor has cut a character in two, and is no JSON. It is as long: all places stay what they are.
void replaceHalves(std::string& json) {
    for (std::size_t at = json.find('\\'); at < json.size(); at = json.find('\\', at)) {
        const unsigned half = halfAt(json, at);
        const bool isPair = half == kFirstHalf && halfAt(json, at + 6) == kSecondHalf;
        if (!isPair && (half == kFirstHalf || half == kSecondHalf)) json.replace(at, 6, "\\uFFFD");
        at += isPair ? 12 : 2;
    }
}

}  // namespace

std::optional<Json> Connection::next() {
    while (waiting.empty() && read()) continue;
    if (waiting.empty()) return std::nullopt;
    Json message = std::move(waiting.front());
    waiting.pop_front();
    return message;
}

bool Connection::isQuiet() {
    while (waiting.empty() && !ended && inputArrives(kPauseOfBurst)) read();
    return waiting.empty();
}

bool Connection::isCancelled(const Json& message) {
    while (waiting.size() < kMaxWaiting && !ended && inputArrives(std::chrono::milliseconds(0)))
        read();
    const auto id = message.is_object() ? message.find("id") : message.end();
    if (id == message.end() || !id->is_primitive()) return false;
    const bool found = cancelled.erase(id->dump()) != 0;
    // What is cancelled was asked before: with nothing waiting, all of it has been answered.
    if (waiting.empty()) cancelled.clear();
    return found;
}

/// @return false at the end of the input.
bool Connection::read() {
    std::array<char, std::size_t{64} * 1024> buffer{};
    const std::size_t count = readInput(buffer.data(), buffer.size());
    ended = count == 0;
    frames.append({buffer.data(), count});
    while (std::optional<std::string> message = frames.next()) {
        replaceHalves(*message);
        sort(Json::parse(*message, nullptr, false));
    }
    return !ended;
}

void Connection::sort(Json message) {
    static const Json::json_pointer method("/method");
    static const Json::json_pointer id("/params/id");
    if (!message.contains(method) || message[method] != "$/cancelRequest")
        return waiting.push_back(std::move(message));
    if (message.contains(id) && message[id].is_primitive()) cancelled.insert(message[id].dump());
}

void Connection::send(std::string_view message) {
    writeOutput(headerOf(message));
    writeOutput(message);
    finishOutput();
}

}  // namespace kdx::lsp
