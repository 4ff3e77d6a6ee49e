#pragma once

#include <string>

#include <httplib.h>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// `text` as it is: uncompressed, for compressing a page takes the server longer than the browser
/// needs for all the rest.
void answerText(httplib::Response& response, std::string text, const std::string& type);
void answer(httplib::Response& response, const Json& body, int status = 200);
/// {"error": TEXT}
void answerError(httplib::Response& response, int status, const Problem& problem);

} // namespace vx::tools::studio
