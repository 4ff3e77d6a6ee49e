// Peers that are slow, many, endless or wrong.

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/studio/RawConnection.h"
#include "tests/studio/StudioProcess.h"

namespace vx::tests {

namespace {

// A request to the page's server, as far as it goes without a body.
std::string head(const StudioProcess& studio, const std::string& line, const std::string& more) {
    return line + " HTTP/1.1\r\nHost: " + studio.authority("page") +
           "\r\nX-Studio-Token: " + studio.valueOf("token") + "\r\n" + more;
}

std::string answerTo(const StudioProcess& studio, const std::string& request) {
    RawConnection connection(studio.authority("page"));
    connection.send(request);
    connection.endSending();
    return connection.receive();
}

// "400 WHY"
std::string errorIn(const std::string& answer) {
    const std::size_t body = answer.find("\r\n\r\n");
    if (body == std::string::npos)
        return answer;
    return answer.substr(9, 3) + " " +
           Json::parse(answer.substr(body), nullptr, false).value("error", "");
}

// An answer that is late fails here.
void expectService(StudioProcess& studio, int launches) {
    httplib::Client client = studio.client();
    const auto page = client.Get("/");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    const std::uint64_t before = studio.now();
    EXPECT_EQ(studio.post("relaunch")["process"]["launches"], launches);
    EXPECT_FALSE(studio.await("request", "privacy.json", before).is_null());
}

} // namespace

TEST(StudioConnections, ACrowdThatIsSlowKeepsNobodyWaitingWithFewDescriptors) {
    StudioProcess studio({}, {"prlimit", "--nofile=40"});
    std::deque<RawConnection> crowd;
    while (crowd.size() < 100)
        EXPECT_TRUE(crowd.emplace_back(studio.authority("page")).send("GET / HTTP/1.1"));
    expectService(studio, 2);
}

TEST(StudioConnections, ACrowdThatIsSlowKeepsNobodyWaiting) {
    StudioProcess studio;
    const std::vector<std::pair<const char*, std::string>> crowds = {
        {"page", ""},
        {"page", "GET / HTTP/1.1\r\nHost: "},
        {"page", head(studio, "POST /api/lint", "Content-Length: 9000\r\n\r\n{")},
        {"backend", "POST /privacy-consent/ HTTP/1.1\r\nHost: " + studio.authority("backend") +
                        "\r\nContent-Length: 9000\r\n\r\n{"},
    };
    std::deque<RawConnection> crowd;
    const auto come = [&](std::size_t count) {
        for (const auto& [server, beginning] : crowds)
            for (std::size_t each = 0; each < count; ++each)
                EXPECT_TRUE(crowd.emplace_back(studio.authority(server)).send(beginning));
    };
    come(125);
    expectService(studio, 2);
    for (RawConnection& each : crowd)
        each.send(" ");
    expectService(studio, 3);
    crowd.erase(crowd.begin(), crowd.begin() + 250);
    come(60);
    expectService(studio, 4);
}

TEST(StudioConnections, AHeadIsBoundedInLengthAndTime) {
    StudioProcess studio;
    const std::string begin = head(studio, "GET /api/state", "");
    std::string many;
    while (many.size() < 1u << 20)
        many += "Name" + std::to_string(many.size()) + ": " + std::string(1000, 'v') + "\r\n";
    EXPECT_EQ(errorIn(answerTo(studio, begin + many + "\r\n")),
              "431 the head of a request has 64 KiB at most");
    EXPECT_EQ(errorIn(answerTo(studio, begin + "Cookie: " + std::string(9000, 'c') + "\r\n\r\n")),
              "400 this is no request that HTTP/1.1 knows, or a line of its head has more than 8 "
              "KiB");
    EXPECT_EQ(answerTo(studio, begin + many.substr(0, 50'000) + "\r\n\r\n").substr(9, 3), "200");
    RawConnection slow(studio.authority("page"));
    slow.send(begin);
    EXPECT_EQ(errorIn(slow.receive()), "408 the head of a request has 10 seconds to arrive");
}

TEST(StudioConnections, ABodyThatIsFramedWronglyIsRefusedWithTheReason) {
    StudioProcess studio;
    const std::string chunked =
        head(studio, "POST /api/lint", "Transfer-Encoding: Chunked\r\n\r\n");
    const auto statusOf = [&](const std::string& body) {
        return answerTo(studio, chunked + body).substr(9, 3);
    };
    EXPECT_EQ(statusOf("2\r\n{}\r\n0\r\n\r\n"), "200");
    EXPECT_EQ(statusOf("1;a=b\r\n{\r\n00001\r\n}\r\n0\r\n\r\n"), "200");
    const std::string reason =
        "400 the body is cut short, or not chunked or packed as its headers say";
    for (const char* body :
         {"", "2\r\n{}", "2\r\n{}\r\n", "2\r\n{}0\r\n\r\n", "2\r\n{}\n0\r\n\r\n", "\r\n{}\r\n",
          "-1\r\n{}\r\n0\r\n\r\n", "zz\r\n{}\r\n0\r\n\r\n", "200000000\r\n{}", "2\r\n{}\r\n0\r\n"})
        EXPECT_EQ(errorIn(answerTo(studio, chunked + body)), reason) << body;
    RawConnection endless(studio.authority("page"));
    endless.send(chunked + "2;" + std::string(100'000, 'x')); // a line without an end
    EXPECT_EQ(errorIn(endless.receive()), reason);
    EXPECT_EQ(
        errorIn(answerTo(studio, head(studio, "POST /api/lint", "Content-Length: 3\r\n\r\n{}"))),
        reason);
}

TEST(StudioConnections, LargeBodiesComeAndGoWhole) {
    StudioProcess studio;
    Json document = studio.get("sample");
    document["information"]["content"] = std::string(4'000'000, 'x');
    const std::string text = document.dump();
    EXPECT_EQ(studio.post("configuration", text)["version"], 2);
    const auto published = studio.client().Get("/api/configuration");
    ASSERT_TRUE(published);
    EXPECT_EQ(Json::parse(published->body)["information"]["content"],
              document["information"]["content"]);
    const std::uint64_t before = studio.now();
    studio.post("relaunch");
    EXPECT_FALSE(studio.await("log", "downloaded, version 2", before).is_null());
    const Json state = studio.post("hit")["application"]["configuration"];
    EXPECT_EQ(state["content"].get<std::string>().size(), 4096u); // every page gets it

    RawConnection asking(studio.authority("page")); // as curl does with a large body
    asking.send(head(studio, "POST /api/lint",
                     "Expect: 100-continue\r\nContent-Length: " + std::to_string(text.size()) +
                         "\r\n\r\n"));
    const std::string go = "HTTP/1.1 100 Continue\r\n\r\n";
    EXPECT_EQ(asking.receive(go.size()), go);
    EXPECT_TRUE(asking.send(text));
    EXPECT_EQ(asking.receive(12), "HTTP/1.1 200");

    const std::string parts = "Range: bytes=0-,0-,0-,0-\r\n\r\n";
    const std::string whole = answerTo(studio, head(studio, "GET /api/sample", parts));
    EXPECT_EQ(whole.substr(9, 3), "200");
    EXPECT_EQ(whole.substr(whole.find("\r\n\r\n") + 4), studio.client().Get("/api/sample")->body);
}

TEST(StudioConnections, APostWithoutABodyNeedsNoLength) {
    StudioProcess studio;
    RawConnection connection(studio.authority("page"));
    EXPECT_TRUE(connection.send(head(studio, "POST /api/refuse", "\r\n")));
    EXPECT_EQ(connection.receive(12), "HTTP/1.1 200");
    EXPECT_EQ(studio.get("state")["application"]["engine"]["privacyState"], 2);
}

} // namespace vx::tests
