#pragma once

#include "OpenDocument.h"
#include "Protocol.h"

namespace kdx::lsp {

// What is answered to requests: each takes the open texts and the parameters of the request, and
// returns its result.
// @throws RequestError, Json::exception or kiv::Error where there is none.

Json formatting(const Documents& documents, const Json& params);
Json rangeFormatting(const Documents& documents, const Json& params);

/// One problem of a text.
Json diagnostic(const OpenDocument& document, const kiv::KDXCheck::Problem& problem);

/// The problems of a text, as the client is told without having asked.
Json diagnostics(const OpenDocument& document);

}  // namespace kdx::lsp
