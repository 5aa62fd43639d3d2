#include "Commands.h"
#include "lsp/Run.h"

namespace kdx {
namespace {

struct Options {};

Status run(const Options&, const Settings& settings) {
    return lsp::run(settings.maxDepth);
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
