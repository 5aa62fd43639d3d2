#include "Run.h"

#include "Connection.h"
#include "Server.h"

namespace kdx::lsp {

Status run(std::size_t maxDepth) {
    Connection connection;
    Server server(Connection::send, maxDepth);
    while (!server.hasExited()) {
        if (server.hasNews() && connection.isQuiet()) server.reportProblems();
        const std::optional<Json> message = connection.next();
        if (!message) break;
        server.handle(*message, connection.isCancelled(*message));
    }
    return server.wasShutDown() ? Status::fine : Status::findings;
}

}  // namespace kdx::lsp
