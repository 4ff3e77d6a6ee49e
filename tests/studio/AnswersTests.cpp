#include <string>

#include <gtest/gtest.h>

#include "tools/studio/shared/Answers.h"
#include "tools/system/LoopbackServer.h"

namespace vx::tools::studio {

namespace {

TEST(StudioAnswers, ATextArrivesAsItIsEvenIfThereIsNone) {
    const std::string texts[] = {"", "a", std::string(300'000, 'b')};
    system::LoopbackServer server([&texts](httplib::Server& routes) {
        routes.Get("/([012])",
                   [&texts](const httplib::Request& request, httplib::Response& response) {
                       answerText(response, texts[std::stoul(request.matches[1])], "text/plain");
                   });
    });
    ASSERT_TRUE(server.start(0));
    httplib::Client client("127.0.0.1", server.port());
    for (const char* path : {"/0", "/1", "/2"}) {
        const auto result = client.Get(path, {{"Accept-Encoding", "gzip, deflate, br"}});
        ASSERT_TRUE(result) << path;
        EXPECT_EQ(result->body, texts[path[1] - '0']) << path;
        EXPECT_FALSE(result->has_header("Content-Encoding")) << path;
    }
}

} // namespace

} // namespace vx::tools::studio
