#pragma once

#include <string>

#include "tools/studio/Json.h"

#include <httplib.h>

namespace vx::tools::studio {

void answer(httplib::Response& response, const Json& body, int status = 200);
/// {"error": TEXT}
void answerError(httplib::Response& response, int status, const std::string& error);

} // namespace vx::tools::studio
