#pragma once

#include "OpenDocument.h"
#include "Protocol.h"

namespace kdx::lsp {

/// What is answered to a request: takes the open texts and the parameters of the request, and
/// returns its result.
/// @throws RequestError, Json::exception or kiv::Error where there is none.
using Answer = Json(const Documents& documents, const Json& params);

Answer codeActions, completion, definition, foldingRanges, formatting, highlight, hover,
    prepareRename, rangeFormatting, references, rename, selectionRanges, workspaceSymbols;

/// The same as JSON text, for a result that may be long.
using WrittenAnswer = std::string(const Documents& documents, const Json& params);

WrittenAnswer documentSymbols, semanticTokens;

/// What the client has to know to ask for tokens.
Json semanticTokensOptions();

/// The problems of a text, as the client is told without having asked.
Json diagnostics(const OpenDocument& document);

}  // namespace kdx::lsp
