// Reads the host out of an address, and decides whether anything may be sent to it.

#include "vxprivacy/services/core/URLPolicy.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "vxprivacy/services/core/CurlHandles.h"
#include "vxprivacy/services/system/System.h"

namespace vx::services {

namespace {

struct Address {
    bool isHTTPS;
    std::string_view host; // an IPv6 address in its brackets
};

// `scheme` in lower case.
bool hasScheme(std::string_view url, std::string_view scheme) {
    return std::ranges::equal(url.substr(0, scheme.size()), scheme, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

bool isHTTPS(const std::string& url) {
    return hasScheme(url, "https://");
}

bool isVisible(char c) {
    return c > ' ' && c <= '~';
}

// Read in the simplest way: odd spellings come out wrong here, and `isReadAlike` then refuses them.
std::optional<Address> addressOf(const std::string& url) {
    if ((!isHTTPS(url) && !hasScheme(url, "http://")) || !std::ranges::all_of(url, isVisible))
        return {};
    const std::size_t start = url.find("//") + 2;
    const auto authority =
        std::string_view(url).substr(start, url.find_first_of("/?#", start) - start);
    const auto host =
        authority.substr(0, authority.find(':', authority.find(']') + 1)); // npos + 1 is 0
    if (host.empty() || authority.find('@') != std::string_view::npos)
        return {};
    return Address{isHTTPS(url), host};
}

bool isThisMachine(std::string_view host) {
    const auto address = system::ipv4Address(std::string(host));
    return host == "localhost" || host == "[::1]" || (address && *address >> 24 == 127);
}

} // namespace

bool isLoopback(const std::string& url) {
    const std::optional<Address> address = addressOf(url);
    return address && isThisMachine(address->host);
}

bool mayRequest(const std::string& url) {
    const std::optional<Address> address = addressOf(url);
    return address && (address->isHTTPS || isThisMachine(address->host));
}

bool namesNoHost(const std::string& url) {
    return url.starts_with('/');
}

bool mayRedirect(const std::string& from, const std::string& to) {
    return mayRequest(to) && (isHTTPS(to) || !isHTTPS(from));
}

bool isReadAlike(const CurlLibrary& curl, const std::string& url) {
    const URLHandle handle(curl.url(), curl.urlCleanup);
    char* host = nullptr;
    if (curl.urlSet(handle.get(), CURLUPART_URL, url.c_str(), CURLU_DISALLOW_USER) != CURLUE_OK ||
        curl.urlGet(handle.get(), CURLUPART_HOST, &host, 0) != CURLUE_OK)
        return false;
    const std::unique_ptr<char, decltype(&curl_free)> owner(host, curl.free);
    const std::optional<Address> address = addressOf(url);
    return address && address->host == host;
}

} // namespace vx::services
