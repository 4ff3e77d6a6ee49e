#pragma once

#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The door to the running application, as far as a screen needs it. Called on the user-interface
/// thread, from within a tap; it must not throw.
class VXPRIVACY_EXPORT Application {
public:
    virtual ~Application();

    /// Shows `address` outside the screen, in the browser for instance. It is a URL by its letters,
    /// but it comes from a document and is not to be trusted: open http, https and mailto and
    /// ignore all else. Nobody is told whether it was opened.
    virtual void openURL(std::string_view address) = 0;
};

/// Whether `text` is a URL as far as RFC 3986, section 2, tells by its characters: not empty, none
/// but those allowed there, and two hexadecimal digits after each "%". It need not have a scheme.
///
///     isURL("https://example.com/a?b=1");   // true
///     isURL("javascript:alert(1)");         // true: whom to trust is the application's question
///     isURL("a b");                         // false
VXPRIVACY_EXPORT bool isURL(std::string_view text);

/// Hands `address` to the application behind the door; does nothing when it is no URL, or when no
/// application is there.
VXPRIVACY_EXPORT void openURL(std::string_view address);

} // namespace vx
