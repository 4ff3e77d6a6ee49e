#pragma once

#include <string_view>

namespace vx {

/// The IAB library's doors. Installed when the library is present; its presence is what turns the
/// IAB mode on.
class IABLibrary {
public:
    virtual ~IABLibrary();

    /// Records this module's CMP identity for the consent string.
    virtual void setCMPSDKID() = 0;
    /// Stores `consent` as the current consent string; the empty text means that there is none.
    virtual void saveConsentString(std::string_view consent) = 0;
    /// Forgets all stored TC data.
    virtual void resetTCData() = 0;
};

} // namespace vx
