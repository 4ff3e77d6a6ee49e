#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// The fields of one TC string in the making, after the IAB's Transparency and Consent Framework,
/// version 2 ("Consent string and vendor list formats", which says what each field means).
///
/// The engine takes a fresh builder for every save, sets all fields, builds and writes once. A
/// fresh builder's fields are zero, empty or false. Operations keep a copy of what they are given;
/// setting a field again replaces it. The values come from documents and from the application and
/// may be anything: what a field cannot hold is for the library to leave out. Application's thread.
class VXPRIVACY_EXPORT CoreStringBuilder {
public:
    /// IAB identifiers, in any order; one may occur twice.
    using Identifiers = std::span<const std::int32_t>;

    virtual ~CoreStringBuilder();

    /// Of the vendor list that the user was asked by.
    virtual void setVendorListVersion(std::int32_t version) = 0;
    /// Seconds since 1970, as both times. When consent was first saved; later saves keep it.
    virtual void setConsentRecordCreated(std::int64_t time) = 0;
    virtual void setConsentRecordLastUpdated(std::int64_t time) = 0;

    // Of each of the two sections of vendors, the greatest identifier that it speaks of. Vendors of
    // the section above it are not encoded.
    virtual void setVendorConsentSectionMaxVendorId(std::int32_t vendor) = 0;
    virtual void setVendorLegitimateInterestSectionMaxVendorId(std::int32_t vendor) = 0;

    // What the user accepted. What is not named is refused.
    virtual void setPurposesConsent(Identifiers purposes) = 0;
    virtual void setPurposesLITransparency(Identifiers purposes) = 0;
    virtual void setVendorConsentSectionBitField(Identifiers vendors) = 0;
    virtual void setVendorLegitimateInterestSectionBitField(Identifiers vendors) = 0;
    virtual void setSpecialFeatureOptInts(Identifiers features) = 0;

    // Who asked the user, and by which rules.
    virtual void setCmpID(std::int32_t cmp) = 0;
    virtual void setIsServiceSpecific(bool serviceSpecific) = 0;
    virtual void setTcfPolicyVersion(std::int32_t version) = 0;
    virtual void setCmpVersion(std::int32_t version) = 0;

    /// Two letters in either case, "en" or "EN", as the country.
    virtual void setConsentLanguage(std::string_view language) = 0;
    virtual void setPublisherCC(std::string_view country) = 0;

    /// The consent dictionary of the save, refused entries included: what the fields above are made
    /// of. Called once, before the string is built. Optional: does nothing by default.
    virtual void setChoice(const OrderedDictionary<std::string>& consent);

    /// The TC string of the fields and of the publisher's restrictions, with a publisher TC segment
    /// where that is asked for. Stores nothing.
    virtual std::string buildConsentString(bool withPublisherTC) = 0;
    /// Stores what was built last where IAB-aware code reads it; nothing when nothing was built.
    virtual void writeTCData() = 0;
};

} // namespace vx
