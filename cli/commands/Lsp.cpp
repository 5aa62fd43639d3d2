#include "Commands.h"
#include "lsp/Connection.h"
#include "lsp/Server.h"

namespace kdx {
namespace {

struct Options {};

/// Serves the client until it says good-bye, or is gone.
Status run(const Options&, const Settings& settings) {
    lsp::Connection connection;
    lsp::Server server(lsp::Connection::send, settings.maxDepth);
    while (!server.hasExited()) {
        if (connection.isQuiet()) server.reportProblems();
        const auto message = connection.next();
        if (!message) break;
        server.handle(*message, connection.isCancelled(*message));
    }
    return server.wasShutDown() ? Status::fine : Status::findings;
}

}  // namespace

void addLsp(Program& program) {
    Command command(program, "lsp", "Serve an editor: the language server protocol");
    command.onRun(run);
    command.footer(
        "Editors start this and talk to it over the standard input and output.\n\n"
        "Example:\n"
        "  :lua vim.lsp.start({name = 'kdx', cmd = {'kdx', 'lsp'}})  (in Neovim)");
}

}  // namespace kdx
