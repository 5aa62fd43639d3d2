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
    const bool takesBack = message.is_object() && message.contains("method") &&
                           message["method"] == "$/cancelRequest" && message.contains("params") &&
                           message["params"].is_object() && message["params"].contains("id");
    if (!takesBack) {
        waiting.push_back(std::move(message));
        return;
    }
    const Json& id = message["params"]["id"];
    if (id.is_primitive()) cancelled.insert(id.dump());
}

void Connection::send(const Json& message) {
    // Texts of a client are UTF-8, but a message may quote a part of a character.
    writeOutput(framed(message.dump(-1, ' ', false, Json::error_handler_t::replace)));
    finishOutput();
}

}  // namespace kdx::lsp
