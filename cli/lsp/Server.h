#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "OpenDocument.h"
#include "Protocol.h"

namespace kdx::lsp {

/// A language server, apart from how messages come and go: it is handed each message of the client
/// and sends its own, as JSON. Whatever a message says is answered as the protocol asks; nothing is
/// thrown but what sending throws.
class Server {
public:
    using Send = std::function<void(std::string_view)>;

    /// @param maxDepth so many objects may be open at a time in a text.
    Server(Send givenSend, std::size_t maxDepth);

    /// Takes a message. One that is discarded() is answered as text that is no JSON.
    /// @param isCancelled whether the client no longer wants the answer to this request.
    void handle(const Json& message, bool isCancelled = false);

    /// Tells the client the problems of all texts that have changed since it was last told. This is
    /// for when no message is waiting, so that many changes cost one check.
    void reportProblems();

    /// Whether the client has asked for the end, and whether it has announced that before.
    bool hasExited() const { return exited; }
    bool wasShutDown() const { return state == State::shutDown; }

    const Documents& documents() const { return open; }

private:
    enum class State { fresh, running, shutDown };

    void answer(const Json& id, const std::string& method, const Json& params, bool isCancelled);
    void take(const std::string& method, const Json& params);
    std::string resultOf(const std::string& method, const Json& params, bool isCancelled);
    void refuse(const Json& id, ErrorCode code, const std::string& message);
    void notify(const char* method, Json params);
    void publish(const std::string& uri, const Json& version, Json problems);

    void synchronise(const std::string& method, const Json& params);

    Send send;
    std::size_t depthLimit;
    State state = State::fresh;
    bool exited = false;
    Documents open;
};

}  // namespace kdx::lsp
