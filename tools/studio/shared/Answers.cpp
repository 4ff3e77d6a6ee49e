#include "tools/studio/shared/Answers.h"

#include <memory>
#include <utility>

namespace vx::tools::studio {

// The library compresses whatever it is given whole, and asks for ever for a text that is empty.
void answerText(httplib::Response& response, std::string text, const std::string& type) {
    if (text.empty())
        return response.set_content(text, type);
    const auto kept = std::make_shared<const std::string>(std::move(text));
    response.set_content_provider(
        kept->size(), type, [kept](std::size_t begin, std::size_t size, httplib::DataSink& sink) {
            return sink.write(kept->data() + begin, size);
        });
}

void answer(httplib::Response& response, const Json& body, int status) {
    response.status = status;
    answerText(response, body.dump(2, ' ', false, Json::error_handler_t::replace) + "\n",
               "application/json");
}

void answerError(httplib::Response& response, int status, const Problem& problem) {
    answer(response, {{"error", problem.text}}, status);
}

} // namespace vx::tools::studio
