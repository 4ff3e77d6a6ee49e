#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/iab/CoreStringBuilder.h"
#include "vxprivacy/services/iab/CMPStorage.h"
#include "vxprivacy/services/iab/FieldFitter.h"
#include "vxprivacy/services/iab/PublisherRules.h"
#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// Fits what it is given into the fields of a TC string. What does not fit is left out, and logged
/// once for each call: a number becomes 0, two letters "AA", and a greatest vendor that of the
/// section's vendors.
class TCStringBuilder : public CoreStringBuilder {
public:
    /// All must outlive it. The restrictions are those that `rules` has when a string is built.
    TCStringBuilder(CMPStorage storage, const PublisherRules& rules,
                    std::optional<std::string> additionalConsent, Logger& logger)
        : storage_(storage), rules_(rules), additionalConsent_(std::move(additionalConsent)),
          fitter_(logger) {}

    void setVendorListVersion(std::int32_t version) override;
    void setConsentRecordCreated(std::int64_t time) override;
    void setConsentRecordLastUpdated(std::int64_t time) override;
    void setVendorConsentSectionMaxVendorId(std::int32_t vendor) override;
    void setVendorLegitimateInterestSectionMaxVendorId(std::int32_t vendor) override;
    void setPurposesConsent(Identifiers purposes) override;
    void setPurposesLITransparency(Identifiers purposes) override;
    void setVendorConsentSectionBitField(Identifiers vendors) override;
    void setVendorLegitimateInterestSectionBitField(Identifiers vendors) override;
    void setSpecialFeatureOptInts(Identifiers features) override;
    void setCmpID(std::int32_t cmp) override;
    void setIsServiceSpecific(bool serviceSpecific) override;
    void setTcfPolicyVersion(std::int32_t version) override;
    void setCmpVersion(std::int32_t version) override;
    void setConsentLanguage(std::string_view language) override;
    void setPublisherCC(std::string_view country) override;

    std::string buildConsentString(bool withPublisherTC) override;
    void writeTCData() override;

private:
    IdentifierSet identifiers(std::string_view field, std::uint32_t greatest,
                              Identifiers values) const;
    std::optional<std::uint32_t> maxVendorId(std::string_view field, std::int32_t value) const;
    VendorSection section(std::string_view field, std::optional<std::uint32_t> maxVendorId,
                          const IdentifierSet& vendors) const;

    CMPStorage storage_;
    const PublisherRules& rules_;
    std::optional<std::string> additionalConsent_;
    FieldFitter fitter_;
    TCModel model_; // its vendor sections are filled when a string is built
    struct Vendors {
        std::optional<std::uint32_t> greatest = 0; // absent: that of the vendors
        IdentifierSet vendors{};
    };
    Vendors consent_;
    Vendors legitimateInterest_;
    std::optional<TCData> built_;
};

} // namespace vx::services::tcf
