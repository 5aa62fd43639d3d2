#include "Connection.h"

#include <array>
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
    while (std::optional<std::string> message = frames.next())
        sort(Json::parse(*message, nullptr, false));
    return !ended;
}

void Connection::sort(Json message) {
    static const Json::json_pointer method("/method");
    static const Json::json_pointer id("/params/id");
    const bool takesBack = message.contains(method) && message[method] == "$/cancelRequest";
    if (takesBack && message.contains(id) && message[id].is_primitive())
        cancelled.insert(message[id].dump());
    if (!takesBack) waiting.push_back(std::move(message));
}

void Connection::send(std::string_view message) {
    writeOutput(headerOf(message));
    writeOutput(message);
    finishOutput();
}

}  // namespace kdx::lsp
