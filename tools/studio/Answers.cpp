#include "tools/studio/Answers.h"

namespace vx::tools::studio {

void answer(httplib::Response& response, const Json& body, int status) {
    response.status = status;
    response.set_content(body.dump(2, ' ', false, Json::error_handler_t::replace) + "\n",
                         "application/json");
}

void answerError(httplib::Response& response, int status, const std::string& error) {
    answer(response, {{"error", error}}, status);
}

} // namespace vx::tools::studio
