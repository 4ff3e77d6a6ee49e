#include <algorithm>
#include <chrono>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/studio/StudioProcess.h"
#include "tools/studio/shared/OriginCheck.h"

namespace vx::tests {

namespace {

struct Case {
    const char* method;
    httplib::Headers headers;
    int status;
};

// As a browser sends them with each request.
httplib::Headers sent(const std::string& host, const char* site, const char* mode = "no-cors",
                      const char* destination = "empty") {
    return {{"Host", host},
            {"Sec-Fetch-Site", site},
            {"Sec-Fetch-Mode", mode},
            {"Sec-Fetch-Dest", destination}};
}

// What is the same for the page's server and the development backend.
std::vector<Case> strangers(const std::string& own) {
    const std::string port = own.substr(own.find(':'));
    return {
        {"GET", {{"Host", own}}, 200},
        {"GET", {{"Host", "localhost" + port}}, 200},
        {"GET", {{"Host", own}, {"Origin", "http://" + own}}, 200},
        {"GET", sent(own, "same-origin"), 200},
        {"GET", sent(own, "none", "navigate", "document"), 200},
        {"GET", {{"Host", "evil.example" + port}}, 421},
        {"GET", {{"Host", "127.0.0.1"}}, 421},
        {"GET", {{"Host", own}, {"Host", "evil.example"}}, 421},
        {"GET", {{"Host", own}, {"Origin", "https://evil.example"}}, 403},
        {"GET", {{"Host", own}, {"Origin", "null"}}, 403},
        {"GET", {{"Host", own}, {"Origin", "https://" + own}}, 403},
        {"GET", sent(own, "cross-site"), 403},
        {"GET", sent(own, "same-site"), 403}, // another port
        {"GET", sent(own, "cross-site", "navigate", "document"), 403},
        {"POST", {{"Host", own}, {"Origin", "http://evil.example"}}, 403},
        {"POST", {{"Host", "evil.example"}}, 421},
        {"POST", sent(own, "cross-site", "navigate", "document"), 403}, // a form
    };
}

void expectStatuses(httplib::Client client, const char* get, const char* post,
                    const std::vector<Case>& cases) {
    for (const auto& [method, headers, status] : cases) {
        SCOPED_TRACE(std::string(method) + " " + std::to_string(status));
        for (const auto& [name, value] : headers)
            SCOPED_TRACE(name + ": " + value);
        const bool gets = std::string(method) == "GET";
        const auto result =
            gets ? client.Get(get, headers) : client.Post(post, headers, "{}", "application/json");
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status, status);
        if (status >= 400) {
            EXPECT_TRUE(Json::parse(result->body).contains("error"));
        }
    }
}

httplib::Client patientClient(const std::string& authority) {
    httplib::Client client("http://" + authority);
    client.set_read_timeout(std::chrono::seconds(30));
    return client;
}

} // namespace

TEST(StudioGuard, StrangersAreRefused) {
    StudioProcess studio;
    const std::string own = studio.authority("page");
    const std::string token = studio.valueOf("token");
    std::vector<Case> cases = strangers(own);
    cases.insert(
        cases.end(),
        {{"POST", {{"Host", own}}, 403},
         {"POST", {{"Host", own}, {"X-Studio-Token", token + "0"}}, 403},
         {"POST", {{"Host", own}, {"X-Studio-Token", token}, {"Origin", "http://evil"}}, 403},
         {"POST", {{"Host", "evil.example"}, {"X-Studio-Token", token}}, 421},
         {"POST", {{"Host", own}, {"X-Studio-Token", token}}, 200}});
    expectStatuses(studio.client(), "/api/state", "/api/hit", cases);
    EXPECT_EQ(studio.titles("hit", 0).size(), 1u); // of the last case alone
    const Case links[] = {{"GET", sent(own, "cross-site", "navigate", "document"), 200},
                          {"GET", sent(own, "cross-site", "navigate", "iframe"), 403},
                          {"GET", sent(own, "cross-site", "no-cors", "image"), 403}};
    expectStatuses(studio.client(), "/", "/", {std::begin(links), std::end(links)});
}

TEST(StudioGuard, StrangersAreRefusedByTheBackendAndLeaveNoTrace) {
    StudioProcess studio;
    const std::string own = studio.authority("backend");
    const std::uint64_t before = studio.now();
    std::vector<Case> cases = strangers(own);
    std::erase_if(cases, [](const Case& each) { return each.status == 200; });
    const auto send = [&] {
        expectStatuses(patientClient(own), "/mobile/12/5/privacy.json", "/privacy-consent/", cases);
    };
    send();
    EXPECT_EQ(studio.now(), before);
    cases = {{"GET", {{"Host", own}}, 200}, {"POST", {{"Host", own}}, 200}};
    send();
    EXPECT_EQ(studio.titles("beacon", before).size(), 1u);
    EXPECT_EQ(studio.titles("request", before).size(), 2u);
}

TEST(StudioGuard, WhereThePortIsBrowsersOwnTheyLeaveItOut) {
    const auto statusAt = [](int port, const char* host, const char* origin) {
        httplib::Request request;
        request.headers = {{"Host", host}, {"Origin", origin}};
        const auto refusal = tools::studio::checkOrigin(request, port);
        return refusal ? refusal->status : 200;
    };
    EXPECT_EQ(statusAt(80, "127.0.0.1", "http://127.0.0.1"), 200);
    EXPECT_EQ(statusAt(80, "localhost:80", "http://localhost:80"), 200);
    EXPECT_EQ(statusAt(80, "localhost:8480", "http://localhost"), 421);
    EXPECT_EQ(statusAt(80, "localhost", "https://localhost"), 403);
    EXPECT_EQ(statusAt(8480, "localhost:8480", "http://localhost"), 403);
}

TEST(StudioGuard, ABodyIsBoundedHoweverItIsPacked) {
    StudioProcess studio;
    const std::string bomb(64u << 20, ' '); // 64 KiB packed
    const httplib::Headers token{{"X-Studio-Token", studio.valueOf("token")}};
    const auto statusOf = [&](httplib::Client client, const char* path, const std::string& body) {
        client.set_compress(true);
        const auto result = client.Post(path, token, body, "application/json");
        return result ? result->status : 0;
    };
    const auto backend = [&] { return patientClient(studio.authority("backend")); };
    for (const char* path : {"/api/configuration", "/api/center/event", "/api/hit", "/api/lint"})
        EXPECT_EQ(statusOf(studio.client(), path, bomb), 413) << path;
    EXPECT_EQ(statusOf(backend(), "/privacy-consent/", bomb), 413);
    for (const char* method : {"POST", "PUT", "PATCH", "DELETE", "PRI"}) { // nobody takes these
        httplib::Request request;
        request.method = method;
        request.path = "/anything";
        request.headers = token;
        request.headers.emplace("Content-Encoding", "gzip");
        httplib::Client client = backend();
        client.set_compress(true);
        request.body = bomb;
        const auto result = client.send(request);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status, std::string(method) == "PRI" ? 400 : 404) << method;
    }
    const std::uint64_t before = studio.now();
    EXPECT_EQ(statusOf(studio.client(), "/api/hit", R"({"name": "packed"})"), 200);
    EXPECT_EQ(statusOf(backend(), "/privacy-consent/", std::string(900'000, '7')), 200);
    EXPECT_FALSE(studio.await("hit", "packed", before).is_null());
    const Json beacon = studio.await("beacon", "", before);
    EXPECT_GT(beacon["cut"], 900'000);
    EXPECT_LT(beacon["body"].get<std::string>().size(), 5000u);
}

TEST(StudioGuard, WhatCannotBeAnsweredSaysWhatIsWrong) {
    StudioProcess studio;
    const httplib::Headers token{{"X-Studio-Token", studio.valueOf("token")}};
    const auto expectError = [](const httplib::Result& result, int status, const char* reason) {
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status, status);
        EXPECT_EQ(Json::parse(result->body).value("error", ""), reason);
    };
    httplib::Client client = studio.client();
    expectError(client.Get("/nowhere"), 404, "nothing answers GET /nowhere");
    expectError(client.Post("/api/nothing", token), 404, "nothing answers POST /api/nothing");
    expectError(client.Get("/api/accept"), 405, "/api/accept takes POST, not GET");
    expectError(client.Post("/api/state", token), 405, "/api/state takes GET, not POST");
    expectError(client.Put("/api/state", token, "{}", "application/json"), 404,
                "nothing answers PUT /api/state");
    expectError(client.Get("/" + std::string(9000, 'a')), 414, "the address is too long");
    httplib::Client backend = patientClient(studio.authority("backend"));
    expectError(backend.Get("/mobile/9/9/privacy.json"), 404,
                "nothing answers GET /mobile/9/9/privacy.json");
    expectError(backend.Get("/v2/vendor-list.jsn"), 404, "nothing answers GET /v2/vendor-list.jsn");
}

TEST(StudioGuard, OnlyTheEmbeddedFilesAreServedAndThePageHasNoInlineCode) {
    StudioProcess studio;
    httplib::Client client = studio.client();
    const auto page = client.Get("/");
    ASSERT_TRUE(page);
    const std::string policy = page->get_header_value("Content-Security-Policy");
    EXPECT_NE(policy.find("default-src 'none'; script-src 'self';"), std::string::npos);
    EXPECT_EQ(policy.find("unsafe"), std::string::npos);
    EXPECT_EQ(page->get_header_value("X-Content-Type-Options"), "nosniff");
    EXPECT_FALSE(std::regex_search(page->body, std::regex(R"(\s(on\w+|style)=|<style|<script>)")));

    const std::regex reference(R"((?:src|href|from) ?=?"(?:\.?/)([\w.]+)\")");
    std::vector<std::string> files = {""};
    for (std::size_t next = 0; next < files.size(); ++next) {
        const auto file = client.Get("/" + files[next]);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->status, 200) << files[next];
        for (std::sregex_iterator match(file->body.begin(), file->body.end(), reference), end;
             match != end; ++match)
            if (std::find(files.begin(), files.end(), (*match)[1]) == files.end())
                files.push_back((*match)[1]);
    }
    EXPECT_GT(files.size(), 15u); // the modules were followed
    for (const char* path : {"/category.json", "/../category.json", "/api", "/etc/passwd"})
        EXPECT_EQ(client.Get(path)->status, 404) << path;
}

TEST(StudioGuard, ABodyThatIsTooLargeOrAFormIsRefused) {
    StudioProcess studio;
    const httplib::Headers headers{{"X-Studio-Token", studio.valueOf("token")}};
    const std::string body(9u << 20, ' ');
    const auto announced =
        studio.client().Post("/api/configuration", headers, body, "application/json");
    const auto inPieces = studio.client().Post(
        "/api/configuration", headers,
        [&](std::size_t, httplib::DataSink& sink) {
            sink.write(body.data(), body.size());
            sink.done();
            return true;
        },
        "application/json");
    for (const auto* result : {&announced, &inPieces}) // who still writes may not hear the answer
        EXPECT_TRUE(!*result || (*result)->status == 413);
    const auto form = studio.client().Post("/api/configuration", headers,
                                           httplib::MultipartFormDataItems{{"a", "{}", "", ""}});
    ASSERT_TRUE(form);
    EXPECT_EQ(form->status, 415);
    EXPECT_EQ(studio.get("state")["published"]["version"], 1);
}

} // namespace vx::tests
