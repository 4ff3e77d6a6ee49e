#pragma once

#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/iab/CoreStringBuilder.h"

#include <memory>
#include <string>
#include <string_view>

namespace vx {

/// By purpose ID the restriction types of vendors 1, 2, 3 and so on, a character each: "0" not
/// allowed, "1" consent required or nothing said, "2" legitimate interest required.
using PublisherRestrictions = OrderedDictionary<std::string>;

/// The IAB library's doors. Installed when the library is present; its presence is what turns the
/// IAB mode on.
class IABLibrary {
public:
    virtual ~IABLibrary();

    /// Records this module's CMP identity for the consent string.
    virtual void setCMPSDKID() = 0;
    /// When the stored consent record was created, seconds since 1970 as decimal text; empty when
    /// there is none.
    virtual std::string getCreatedDate() const = 0;
    /// The publisher's restrictions from now on, in place of earlier ones.
    virtual void setPublisherRestrictions(const PublisherRestrictions& restrictions) = 0;
    /// Stores `consent` as the current consent string; the empty text means that there is none.
    virtual void saveConsentString(std::string_view consent) = 0;
    /// Forgets all stored TC data.
    virtual void resetTCData() = 0;

    /// A fresh builder; the library outlives it.
    virtual std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() = 0;
};

} // namespace vx
