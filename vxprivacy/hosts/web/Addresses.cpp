#include "vxprivacy/hosts/web/Addresses.h"

#include <algorithm>
#include <array>
#include <string>

#ifdef _WIN32
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

#include "vxprivacy/platform/ui/Application.h"

namespace vx::web {

namespace {

// `scheme` in lower case, with its colon.
bool hasScheme(std::string_view address, std::string_view scheme) {
    return std::ranges::equal(address.substr(0, scheme.size()), scheme, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isIPAddress(int family, std::string_view text) {
    std::array<unsigned char, sizeof(in6_addr)> address{};
    return ::inet_pton(family, std::string(text).c_str(), address.data()) == 1;
}

// What ends in a number is read as an address of four numbers, or not at all.
bool isHostName(std::string_view host) {
    const auto isAllowed = [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' ||
               c == '.' || c == '_';
    };
    if (host.empty() || !std::ranges::all_of(host, isAllowed))
        return false;
    const std::string_view last = host.substr(host.find_last_of('.') + 1);
    return !last.empty() && (!isDigit(last.front()) || isIPAddress(AF_INET, host));
}

bool isPort(std::string_view port) {
    return port.size() <= 5 && std::ranges::all_of(port, isDigit) &&
           (port.size() < 5 || port <= "65535");
}

// The host of RFC 3986, section 3.2, with or without a port. Whoever names a user there wants the
// reader to take that for the host.
bool isAuthority(std::string_view authority) {
    if (authority.starts_with('[')) {
        const auto end = authority.find(']');
        const auto rest = end == authority.npos ? "x" : authority.substr(end + 1);
        return isIPAddress(AF_INET6, authority.substr(1, end - 1)) &&
               (rest.empty() || (rest.front() == ':' && isPort(rest.substr(1))));
    }
    const auto colon = std::min(authority.find(':'), authority.size());
    return isHostName(authority.substr(0, colon)) &&
           isPort(authority.substr(std::min(colon + 1, authority.size())));
}

std::string_view authorityOf(std::string_view address) {
    const auto begin = address.find("//") + 2;
    return address.substr(begin,
                          std::min(address.find_first_of("/?#", begin), address.size()) - begin);
}

} // namespace

bool mayOpen(std::string_view address) {
    if (!isURL(address))
        return false;
    if (hasScheme(address, "mailto:"))
        return true;
    return (hasScheme(address, "https://") || hasScheme(address, "http://")) &&
           isAuthority(authorityOf(address));
}

} // namespace vx::web
