#include "services/core/URLPolicy.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services {

namespace {

// What is taken for the host here has to be the host that the transfer goes to. So only addresses
// that everybody reads in the same way are read at all.
struct Address {
    bool isHTTPS;
    std::string_view host;
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isOfName(char c) {
    return isDigit(c) || (lowered(c) >= 'a' && lowered(c) <= 'z') || c == '-';
}

bool isVisible(char c) {
    return c > ' ' && c <= '~' && c != '\\';
}

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (!std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, lowered))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<in_addr> ipv4(std::string_view host) {
    in_addr address;
    return inet_pton(AF_INET, std::string(host).c_str(), &address) == 1 ? std::optional(address)
                                                                        : std::nullopt;
}

// In brackets.
std::optional<in6_addr> ipv6(std::string_view host) {
    in6_addr address;
    if (!host.starts_with('[') || !host.ends_with(']'))
        return {};
    const std::string number(host.substr(1, host.size() - 2));
    return inet_pton(AF_INET6, number.c_str(), &address) == 1 ? std::optional(address)
                                                              : std::nullopt;
}

// A name that ends like a number is read as one by some, in any base and with parts left out.
bool isName(std::string_view host) {
    const auto labels = split(host, '.');
    return std::ranges::all_of(labels,
                               [](std::string_view label) {
                                   return !label.empty() && std::ranges::all_of(label, isOfName);
                               }) &&
           !isDigit(labels.back().front());
}

bool isPort(std::string_view text) {
    return !text.empty() && text.size() <= 5 && std::ranges::all_of(text, isDigit) &&
           integerValue(text) <= 65535;
}

std::optional<Address> parse(std::string_view url) {
    const bool isHTTPS = takePrefix(url, "https://");
    if ((!isHTTPS && !takePrefix(url, "http://")) || !std::ranges::all_of(url, isVisible))
        return {};
    const std::string_view authority = url.substr(0, url.find_first_of("/?#"));
    const std::size_t colon = authority.find(':', authority.find(']') + 1); // npos + 1 is 0
    const std::string_view host = authority.substr(0, colon);
    if (colon != std::string_view::npos && !isPort(authority.substr(colon + 1)))
        return {};
    if (!isName(host) && !ipv4(host) && !ipv6(host))
        return {};
    return Address{isHTTPS, host};
}

bool isThisMachine(std::string_view host) {
    if (const std::optional<in_addr> address = ipv4(host))
        return ntohl(address->s_addr) >> 24 == 127;
    if (const std::optional<in6_addr> address = ipv6(host))
        return IN6_IS_ADDR_LOOPBACK(&*address);
    return host == "localhost";
}

bool isHTTPS(const std::string& url) {
    const std::optional<Address> address = parse(url);
    return address && address->isHTTPS;
}

bool isPlainLoopback(const std::string& url) {
    const std::optional<Address> address = parse(url);
    return address && !address->isHTTPS && isThisMachine(address->host);
}

} // namespace

bool isLoopback(const std::string& url) {
    const std::optional<Address> address = parse(url);
    return address && isThisMachine(address->host);
}

bool mayRequest(const std::string& url) {
    return isHTTPS(url) || isPlainLoopback(url);
}

bool mayRedirect(const std::string& from, const std::string& to) {
    return isHTTPS(to) || (isPlainLoopback(from) && isPlainLoopback(to));
}

} // namespace vx::services
