// What libcurl is told about a request, and what is taken from its answer.

#include "vxprivacy/services/core/Transfer.h"

#include <algorithm>
#include <utility>

#include "vxprivacy/services/core/URLPolicy.h"

namespace vx::services {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kConnectLimit = 10s;
constexpr std::chrono::milliseconds kWholeLimit = 60s; // redirects included
constexpr int kMostRedirects = 3;
constexpr std::size_t kLongestTag = 1024; // it is sent back, and servers refuse long heads

} // namespace

Transfer::Transfer(const CurlLibrary& curl, HTTPRequest request, const std::string& userAgent,
                   Done done)
    : curl_(curl), request_(std::move(request)), done_(std::move(done)) {
    setRequest(userAgent);
    if (mayRequest(request_.url) && isReadAlike(curl_, request_.url))
        setAddress();
    else // without an address libcurl ends the transfer at once
        response_.error = "its address is not allowed: " + request_.url;
}

void Transfer::setRequest(const std::string& userAgent) {
    set(CURLOPT_PRIVATE, this);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L); // a name server that hangs must not hold up the end
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(kConnectLimit.count()));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kLargestAnswer));
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_USERAGENT, userAgent.c_str());
    set(CURLOPT_WRITEFUNCTION, &Transfer::receive);
    set(CURLOPT_WRITEDATA, this);
    if (request_.body) {
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body->size()));
        set(CURLOPT_POSTFIELDS, request_.body->c_str());
        addHeader("Content-Type: application/json");
        addHeader("Expect:"); // do not wait for a go-ahead
    }
    if (!request_.ifNoneMatch.empty())
        addHeader("If-None-Match: " + request_.ifNoneMatch);
    set(CURLOPT_HTTPHEADER, headers_.get());
}

void Transfer::addHeader(const std::string& line) {
    curl_slist* longer = curl_.slistAppend(headers_.get(), line.c_str());
    if (longer) {
        headers_.release(); // the longer list owns the nodes now
        headers_.reset(longer);
    }
}

void Transfer::setAddress() {
    const auto used = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - begun_);
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::max(kWholeLimit - used, 1ms).count()));
    set(CURLOPT_URL, request_.url.c_str());
    if (isLoopback(request_.url))
        set(CURLOPT_PROXY, ""); // no proxy of the environment stands before this machine
    else
        set(CURLOPT_PROXY, static_cast<const char*>(nullptr));
}

bool Transfer::finish(CURLcode outcome) {
    curl_.easyGetinfo(handle(), CURLINFO_RESPONSE_CODE, &response_.status);
    response_.etag = header("ETag");
    if (response_.etag.size() > kLongestTag)
        response_.etag.clear();
    curl_off_t seconds = 0;
    curl_.easyGetinfo(handle(), CURLINFO_RETRY_AFTER, &seconds);
    response_.retryAfter = std::chrono::seconds(seconds);
    if (outcome != CURLE_OK) {
        if (response_.error.empty())
            response_.error = curl_.easyStrerror(outcome);
        return false;
    }
    char* target = nullptr;
    curl_.easyGetinfo(handle(), CURLINFO_REDIRECT_URL, &target);
    return target && !request_.body && redirect(target);
}

bool Transfer::redirect(const char* target) {
    if (redirects_++ == kMostRedirects)
        response_.error = "too many redirects";
    else if (!mayRedirect(request_.url, target) || !isReadAlike(curl_, target))
        response_.error = "redirected to a place that is not allowed: " + std::string(target);
    if (!response_.error.empty())
        return false;
    request_.url = target;
    response_ = {};
    setAddress();
    return true;
}

std::string Transfer::header(const char* name) const {
    curl_header* found = nullptr;
    if (curl_.easyHeader(handle(), name, 0, CURLH_HEADER, -1, &found) != CURLHE_OK)
        return {};
    return found->value;
}

// What a server says to a post beside its status is of no interest.
std::size_t Transfer::receive(char* data, std::size_t, std::size_t size, void* transfer) {
    auto& self = *static_cast<Transfer*>(transfer);
    if (self.request_.body) {
        if (size > self.left_)
            return CURL_WRITEFUNC_ERROR;
        self.left_ -= size;
        return size;
    }
    if (size > kLargestAnswer - self.response_.body.size()) {
        self.response_.error = "it is larger than 8 MiB";
        return CURL_WRITEFUNC_ERROR;
    }
    self.response_.body.append(data, size);
    return size;
}

} // namespace vx::services
