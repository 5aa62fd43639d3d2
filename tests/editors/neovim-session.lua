-- Prints what a user of Neovim sees of the language server.
local function say(text) io.stdout:write(text, "\n") end

local function request(method, params)
    params = vim.tbl_extend("force", { textDocument = { uri = vim.uri_from_bufnr(0) } }, params)
    local _, answer = next(vim.lsp.buf_request_sync(0, method, params, 10000))
    return answer.result
end

vim.wait(10000, function() return #vim.diagnostic.get(0) > 0 end)
local codes = vim.tbl_map(function(d) return d.user_data.lsp.code end, vim.diagnostic.get(0))
say("diagnostics: " .. table.concat(codes, ", "))

local all = { start = { line = 0, character = 0 }, ["end"] = { line = 9, character = 0 } }
local context = { diagnostics = {}, only = { "source.fixAll" } }
local actions = request("textDocument/codeAction", { range = all, context = context })
vim.lsp.util.apply_workspace_edit(actions[1].edit, "utf-16")
vim.lsp.buf.formatting_sync(nil, 10000)
local gain = { line = 1, character = 3 }
vim.lsp.util.apply_workspace_edit(
    request("textDocument/rename", { position = gain, newName = "Level" }), "utf-16")
for _, line in ipairs(vim.api.nvim_buf_get_lines(0, 0, -1, true)) do say(line) end

local hover = request("textDocument/hover", { position = gain })
say("hover: " .. vim.split(hover.contents.value, "\n")[1])
local symbols = {}
local function collect(list)
    for _, symbol in ipairs(list) do
        table.insert(symbols, symbol.name)
        collect(symbol.children or {})
    end
end
collect(request("textDocument/documentSymbol", {}))
say("symbols: " .. table.concat(symbols, ", "))
vim.cmd("qall!")
