#include <regex>
#include <string>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/studio/StudioProcess.h"
#include "tools/system/Descriptor.h"
#include "tools/system/Files.h"

namespace vx::tests {

TEST(StudioGuard, StrangersAreRefused) {
    StudioProcess studio;
    const std::string address = studio.valueOf("page");
    const std::string own = address.substr(7, address.size() - 8); // 127.0.0.1:PORT
    const std::string port = own.substr(own.find(':'));
    const std::string token = studio.valueOf("token");
    const struct {
        const char* method;
        httplib::Headers headers;
        int status;
    } cases[] = {
        {"GET", {{"Host", own}}, 200},
        {"GET", {{"Host", "localhost" + port}}, 200},
        {"GET", {{"Host", own}, {"Origin", "http://" + own}}, 200},
        {"GET", {{"Host", "evil.example" + port}}, 421},
        {"GET", {{"Host", "127.0.0.1"}}, 421},
        {"GET", {{"Host", own}, {"Host", "evil.example"}}, 421},
        {"GET", {{"Host", own}, {"Origin", "https://evil.example"}}, 403},
        {"GET", {{"Host", own}, {"Origin", "null"}}, 403},
        {"GET", {{"Host", own}, {"Origin", "https://" + own}}, 403},
        {"POST", {{"Host", own}}, 403},
        {"POST", {{"Host", own}, {"X-Studio-Token", token + "0"}}, 403},
        {"POST", {{"Host", own}, {"X-Studio-Token", token}, {"Origin", "http://evil"}}, 403},
        {"POST", {{"Host", "evil.example"}, {"X-Studio-Token", token}}, 421},
        {"POST", {{"Host", own}, {"X-Studio-Token", token}}, 200},
    };
    httplib::Client client = studio.client();
    for (const auto& [method, headers, status] : cases) {
        SCOPED_TRACE(std::string(method) + " " + headers.begin()->second + " " +
                     std::to_string(status));
        const bool get = std::string(method) == "GET";
        const auto result = get ? client.Get("/api/state", headers)
                                : client.Post("/api/hit", headers, "{}", "application/json");
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status, status);
    }
    EXPECT_EQ(studio.titles("hit", 0).size(), 1u); // of the last case alone
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
    EXPECT_EQ(files.size(), 20u); // the page, its style, its icon, seventeen modules
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

TEST(StudioGuard, APostWithoutABodyNeedsNoLength) {
    StudioProcess studio;
    const std::string page = studio.valueOf("page"); // http://127.0.0.1:PORT/
    const int port = std::stoi(page.substr(page.rfind(':') + 1));
    const tools::system::Descriptor connection(socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(connect(connection.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    const std::string request =
        "POST /api/refuse HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
        "\r\nX-Studio-Token: " + studio.valueOf("token") + "\r\n\r\n";
    ASSERT_TRUE(tools::system::writeAll(connection.get(), request));
    std::string status(12, ' ');
    EXPECT_EQ(read(connection.get(), status.data(), status.size()), ssize_t(status.size()));
    EXPECT_EQ(status, "HTTP/1.1 200");
    EXPECT_EQ(studio.get("state")["application"]["engine"]["privacyState"], 2);
}

} // namespace vx::tests
