#include "tools/studio/server/EventChannel.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

namespace {

constexpr int kMostStreams = 16; // each keeps a thread
constexpr std::chrono::seconds kHeartbeat{5};

std::string eventMessage(const char* event, const std::string& data) {
    return std::string("event: ") + event + "\ndata: " + data + "\n\n";
}

std::string eventMessages(const EventStream::News& news) {
    std::string text;
    for (const auto& entry : news.entries)
        text += "id: " + std::to_string(entry->id) + "\n" + eventMessage("entry", entry->text);
    if (!news.state.is_null())
        text += eventMessage("state", dumped(news.state));
    return text.empty() ? ":\n\n" : text; // a comment, so that a reader who left is noticed
}

} // namespace

void EventChannel::serve(const httplib::Request& request, httplib::Response& response) {
    if (++open_ > kMostStreams) {
        --open_;
        return answerError(response, 503, {"too many open pages"});
    }
    auto position = std::make_shared<EventStream::Position>();
    const std::string seen = request.has_header("Last-Event-ID")
                                 ? request.get_header_value("Last-Event-ID")
                                 : request.get_param_value("after");
    position->entry = std::strtoull(seen.c_str(), nullptr, 10);
    response.set_chunked_content_provider(
        "text/event-stream",
        [this, position](std::size_t, httplib::DataSink& sink) {
            const EventStream::News news = events_.waitAfter(*position, kHeartbeat);
            *position = news.position;
            const std::string text = eventMessages(news);
            if (!sink.write(text.data(), text.size()))
                return false;
            if (news.closed)
                sink.done();
            return true;
        },
        [this](bool) { --open_; });
}

} // namespace vx::tools::studio
