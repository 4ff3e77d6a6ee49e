#include "services/core/URLPolicy.h"

#include "services/core/CurlHandles.h"

#include <arpa/inet.h>

namespace vx::services {

namespace {

// Read by the parser that the transfer will use, so that the two cannot disagree about the host.
std::string part(const std::string& url, CURLUPart which) {
    const URLHandle parsed(curl_url());
    char* text = nullptr;
    if (!parsed || curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), 0) != CURLUE_OK ||
        curl_url_get(parsed.get(), which, &text, 0) != CURLUE_OK)
        return {};
    std::string copy(text);
    curl_free(text);
    return copy;
}

bool isHTTPS(const std::string& url) {
    return part(url, CURLUPART_SCHEME) == "https";
}

bool isPlainLoopback(const std::string& url) {
    return part(url, CURLUPART_SCHEME) == "http" && isLoopback(url);
}

} // namespace

bool isLoopback(const std::string& url) {
    const std::string host = part(url, CURLUPART_HOST);
    in_addr address;
    if (inet_pton(AF_INET, host.c_str(), &address) == 1)
        return ntohl(address.s_addr) >> 24 == 127;
    return host == "localhost" || host == "[::1]";
}

bool mayRequest(const std::string& url) {
    return isHTTPS(url) || isPlainLoopback(url);
}

bool mayRedirect(const std::string& from, const std::string& to) {
    return isHTTPS(to) || (isPlainLoopback(from) && isPlainLoopback(to));
}

} // namespace vx::services
