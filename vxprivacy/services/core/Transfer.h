#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "vxprivacy/services/core/CurlHandles.h"

namespace vx::services {

/// The largest answer that is taken in, in bytes after decompression.
inline constexpr std::size_t kLargestAnswer = 8 << 20;
/// Of an answer to a post no more is read; its status counts all the same.
inline constexpr std::size_t kLargestAnswerToPost = 64 << 10;

/// One request to be sent.
struct HTTPRequest {
    std::string url;
    /// Posted as JSON. Absent: the request is a GET, and redirects are followed.
    std::optional<std::string> body;
    /// Entity tag of the copy at hand; empty: none.
    std::string ifNoneMatch;
};

/// What came of a request.
struct HTTPResponse {
    /// Why there is no whole answer, in one line; empty when there is one.
    std::string error;
    /// 0 when no answer came.
    long status = 0;
    /// Of a GET only.
    std::string body;
    std::string etag; // empty, too, where it is longer than anybody needs
    /// How long the server wants to be left alone; not above 0: it did not say.
    std::chrono::seconds retryAfter{};
};

/// One request on its way. The worker's thread only.
class Transfer {
public:
    using Done = std::function<void(const HTTPResponse&)>;

    Transfer(const CurlLibrary& curl, HTTPRequest request, const std::string& userAgent, Done done);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    CURL* handle() const { return easy_.get(); }
    /// Takes in the answer. True: it points elsewhere, and the transfer must be run again.
    bool finish(CURLcode outcome);

    HTTPResponse& response() { return response_; }
    Done& done() { return done_; }

private:
    template <class Value>
    void set(CURLoption option, Value value) {
        curl_.easySetopt(easy_.get(), option, value);
    }
    void setRequest(const std::string& userAgent);
    void addHeader(const std::string& line);
    void setAddress();
    bool redirect(const char* target);
    std::string header(const char* name) const;
    static std::size_t receive(char* data, std::size_t, std::size_t size, void* transfer);

    const CurlLibrary& curl_;
    EasyHandle easy_{curl_.easyInit(), curl_.easyCleanup};
    HeaderList headers_{nullptr, curl_.slistFreeAll};
    HTTPRequest request_;
    HTTPResponse response_;
    Done done_;
    int redirects_ = 0;
    std::size_t left_ = kLargestAnswerToPost; // what the answer to a post may still have
    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
};

} // namespace vx::services
