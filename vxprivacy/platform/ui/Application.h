#pragma once

#include <string_view>

namespace vx {

/// The running application, as far as a screen needs it.
class Application {
public:
    virtual ~Application();

    /// Shows `address` outside the screen, in the browser for instance. The address is untrusted:
    /// a host opens http, https and mailto and ignores all else.
    virtual void openURL(std::string_view address) = 0;
};

/// Whether `text` is a URL as RFC 3986 has it: not empty, none but the characters allowed there.
bool isURL(std::string_view text);

/// Hands `address` to the application of the platform; nothing when it is no URL.
void openURL(std::string_view address);

} // namespace vx
