#include "Server.h"

#include <kiv/Error.h>

#include <array>
#include <utility>

#include "Features.h"
#include "Version.h"
#include "base/Status.h"

namespace kdx::lsp {
namespace {

constexpr const char* kNoJson = "the message is no JSON";
constexpr const char* kNoRequest = "the message is no request";
constexpr const char* kNotInitialized = "the first request must be initialize";
constexpr const char* kInitializedTwice = "the server is initialized already";
constexpr const char* kShutDown = "the server is shut down";
constexpr const char* kBadParams = "a parameter is missing or of the wrong type";
constexpr const char* kCancelled = "the request was cancelled";

constexpr const char* kOfTexts = "textDocument/did";  // begins what tells of open texts

constexpr int kIncremental = 2;   // of TextDocumentSyncKind
constexpr int kErrorMessage = 1;  // of MessageType

struct Feature {
    const char* method;
    const char* capability;  // by which the client learns of it
    WrittenAnswer* answer;
};

template <Answer answer>
std::string text(const Documents& documents, const Json& params) {
    return written(answer(documents, params));
}

constexpr std::array<Feature, 16> kFeatures = {{
    {"textDocument/codeAction", "codeActionProvider", text<codeActions>},
    {"textDocument/completion", "completionProvider", text<completion>},
    {"textDocument/definition", "definitionProvider", text<definition>},
    {"textDocument/documentHighlight", "documentHighlightProvider", text<highlight>},
    {"textDocument/documentSymbol", "documentSymbolProvider", documentSymbols},
    {"textDocument/foldingRange", "foldingRangeProvider", text<foldingRanges>},
    {"textDocument/formatting", "documentFormattingProvider", text<formatting>},
    {"textDocument/hover", "hoverProvider", text<hover>},
    {"textDocument/prepareRename", "renameProvider", text<prepareRename>},
    {"textDocument/rangeFormatting", "documentRangeFormattingProvider", text<rangeFormatting>},
    {"textDocument/references", "referencesProvider", text<references>},
    {"textDocument/rename", "renameProvider", text<rename>},
    {"textDocument/selectionRange", "selectionRangeProvider", text<selectionRanges>},
    {"textDocument/semanticTokens/full", "semanticTokensProvider", semanticTokens},
    {"textDocument/semanticTokens/range", "semanticTokensProvider", semanticTokens},
    {"workspace/symbol", "workspaceSymbolProvider", text<workspaceSymbols>},
}};

Json capabilities() {
    Json json = {{"positionEncoding", "utf-16"},
                 {"textDocumentSync", {{"openClose", true}, {"change", kIncremental}}}};
    for (const Feature& feature : kFeatures) json[feature.capability] = true;
    json["completionProvider"] = Json::object();
    json["renameProvider"] = {{"prepareProvider", true}};
    json["semanticTokensProvider"] = semanticTokensOptions();
    return json;
}

Json greeting() {
    return {{"capabilities", capabilities()},
            {"serverInfo", {{"name", "kdx"}, {"version", kVersion}}}};
}

/// Numbers and texts; all else is neither shown nor sent back.
bool isId(const Json& id) {
    return id.is_number() || id.is_string();
}

/// Calls `work` and hands what it throws to `fail`, as the protocol names it.
template <typename Work, typename Fail>
void guarded(Work work, Fail fail) {
    try {
        work();
    } catch (const RequestError& error) {
        fail(error.code(), error.what());
    } catch (const Json::exception&) {
        fail(ErrorCode::invalidParams, kBadParams);
    } catch (const kiv::Error& error) {
        fail(ErrorCode::requestFailed, error.message());
    } catch (const Trouble& trouble) {
        fail(ErrorCode::requestFailed, trouble.what());
    } catch (const std::exception& error) {
        fail(ErrorCode::internalError, error.what());
    }
}

}  // namespace

Server::Server(Send givenSend, std::size_t maxDepth)
    : send(std::move(givenSend)), depthLimit(maxDepth) {}

void Server::handle(const Json& message, bool isCancelled) {
    static const Json none;
    if (message.is_discarded()) return refuse(none, ErrorCode::parseError, kNoJson);
    if (!message.is_object()) return refuse(none, ErrorCode::invalidRequest, kNoRequest);
    const auto id = message.find("id");
    const bool hasId = id != message.end() && isId(*id);
    const auto method = message.find("method");
    if (method == message.end() && (hasId || message.contains("error"))) return;  // a response
    if (method == message.end() || !method->is_string() || (id != message.end() && !hasId))
        return refuse(hasId ? *id : none, ErrorCode::invalidRequest, kNoRequest);
    const auto params = message.find("params");
    const Json& given = params == message.end() ? none : *params;
    if (hasId) return answer(*id, *method, given, isCancelled);
    take(*method, given);
}

void Server::answer(const Json& id, const std::string& method, const Json& params,
                    bool isCancelled) {
    guarded(
        [&] {
            std::string message = resultOf(method, params, isCancelled);
            message.insert(0, R"({"jsonrpc":"2.0","id":)" + written(id) + R"(,"result":)");
            send(message += '}');
        },
        [&](ErrorCode code, const std::string& message) { refuse(id, code, message); });
}

std::string Server::resultOf(const std::string& method, const Json& params, bool isCancelled) {
    if (isCancelled) throw RequestError(ErrorCode::requestCancelled, kCancelled);
    if (state == State::shutDown) throw RequestError(ErrorCode::invalidRequest, kShutDown);
    if (method == "initialize") {
        if (state != State::fresh) throw RequestError(ErrorCode::invalidRequest, kInitializedTwice);
        state = State::running;
        return written(greeting());
    }
    if (state == State::fresh) throw RequestError(ErrorCode::serverNotInitialized, kNotInitialized);
    if (method == "shutdown") {
        state = State::shutDown;
        return "null";
    }
    for (const Feature& feature : kFeatures)
        if (method == feature.method) return feature.answer(open, params);
    throw RequestError(ErrorCode::methodNotFound, "there is no method " + method);
}

/// A notification; nobody waits for an answer, but a text that is out of step is worth a word.
void Server::take(const std::string& method, const Json& params) {
    if (method == "exit") exited = true;
    if (state != State::running || method.rfind(kOfTexts, 0) != 0) return;
    guarded([&] { synchronise(method, params); },
            [&](ErrorCode, const std::string& message) {
                notify("window/logMessage",
                       {{"type", kErrorMessage}, {"message", method + ": " + message}});
            });
}

void Server::synchronise(const std::string& method, const Json& params) {
    const Json& text = params.at("textDocument");
    const std::string& uri = textAt(text, "uri");
    if (method == "textDocument/didOpen")
        open.insert_or_assign(uri, OpenDocument(uri, text, depthLimit));
    if (method == "textDocument/didChange")
        documentOf(open, params).change(params.at("contentChanges"), text.at("version"));
    if (method == "textDocument/didClose" && open.erase(uri) != 0)
        publish(uri, nullptr, Json::array());
}

void Server::reportProblems() {
    for (auto& [uri, document] : open) {
        if (!document.isUnreported()) continue;
        document.setReported();
        publish(uri, document.version(), diagnostics(document));
    }
}

void Server::publish(const std::string& uri, const Json& version, Json problems) {
    Json params = {{"uri", uri}, {"diagnostics", std::move(problems)}};
    if (!version.is_null()) params["version"] = version;
    notify("textDocument/publishDiagnostics", std::move(params));
}

void Server::refuse(const Json& id, ErrorCode code, const std::string& message) {
    send(written({{"jsonrpc", "2.0"},
                  {"id", id},
                  {"error", {{"code", static_cast<int>(code)}, {"message", message}}}}));
}

void Server::notify(const char* method, Json params) {
    send(written({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}}));
}

}  // namespace kdx::lsp
