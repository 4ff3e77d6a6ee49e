#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vx {

/// The fields of one TC string in the making, after the IAB's Transparency and Consent Framework,
/// version 2. A fresh builder's fields are zero, empty or false. Operations keep what they are
/// given; setting a field again replaces it. Times are seconds since 1970.
class CoreStringBuilder {
public:
    /// IAB identifiers, in any order; one may occur twice.
    using Identifiers = std::span<const std::int32_t>;

    virtual ~CoreStringBuilder();

    virtual void setVendorListVersion(std::int32_t version) = 0;
    virtual void setConsentRecordCreated(std::int64_t time) = 0;
    virtual void setConsentRecordLastUpdated(std::int64_t time) = 0;
    virtual void setVendorConsentSectionMaxVendorId(std::int32_t vendor) = 0;
    virtual void setVendorLegitimateInterestSectionMaxVendorId(std::int32_t vendor) = 0;
    virtual void setPurposesConsent(Identifiers purposes) = 0;
    virtual void setPurposesLITransparency(Identifiers purposes) = 0;
    virtual void setVendorConsentSectionBitField(Identifiers vendors) = 0;
    virtual void setVendorLegitimateInterestSectionBitField(Identifiers vendors) = 0;
    virtual void setSpecialFeatureOptInts(Identifiers features) = 0;
    virtual void setCmpID(std::int32_t cmp) = 0;
    virtual void setIsServiceSpecific(bool serviceSpecific) = 0;
    virtual void setTcfPolicyVersion(std::int32_t version) = 0;
    virtual void setCmpVersion(std::int32_t version) = 0;
    /// Two letters.
    virtual void setConsentLanguage(std::string_view language) = 0;
    virtual void setPublisherCC(std::string_view country) = 0;

    /// The TC string of the fields, with a publisher TC segment where that is asked for.
    virtual std::string buildConsentString(bool withPublisherTC) = 0;
    /// Stores what was built last where IAB-aware code reads it.
    virtual void writeTCData() = 0;
};

} // namespace vx
