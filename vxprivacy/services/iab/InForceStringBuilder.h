#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/iab/CoreStringBuilder.h"
#include "vxprivacy/services/iab/CMPStorage.h"
#include "vxprivacy/services/iab/Choice.h"
#include "vxprivacy/services/iab/FieldFitter.h"
#include "vxprivacy/services/iab/PublisherRules.h"
#include "vxprivacy/services/iab/TCFSettings.h"
#include "vxprivacy/services/iab/VendorList.h"

namespace vx::services::tcf {

/// Makes strings of the framework in force: of the choice, the vendor list and the settings, and of
/// the engine's fields only the day and the language. Without a list that is in force, or with a
/// CMP number that is none, there is no string: the text is empty, which is logged, and writing
/// takes away what an earlier one left.
class InForceStringBuilder : public CoreStringBuilder {
public:
    /// What the user was shown, and by which list.
    struct Shown {
        IdentifierSet vendors;
        VendorList list;
    };

    /// References must outlive it. The restrictions are those that `rules` has when a string is
    /// built.
    InForceStringBuilder(CMPStorage storage, const PublisherRules& rules,
                         const TCFSettings& settings, Shown shown,
                         std::optional<std::string> additionalConsent, Logger& logger);

    void setConsentRecordLastUpdated(std::int64_t time) override;
    void setConsentLanguage(std::string_view language) override;
    void setChoice(const OrderedDictionary<std::string>& consent) override;

    // The choice, the list and the settings say these.
    void setVendorListVersion(std::int32_t) override {}
    void setConsentRecordCreated(std::int64_t) override {}
    void setVendorConsentSectionMaxVendorId(std::int32_t) override {}
    void setVendorLegitimateInterestSectionMaxVendorId(std::int32_t) override {}
    void setPurposesConsent(Identifiers) override {}
    void setPurposesLITransparency(Identifiers) override {}
    void setVendorConsentSectionBitField(Identifiers) override {}
    void setVendorLegitimateInterestSectionBitField(Identifiers) override {}
    void setSpecialFeatureOptInts(Identifiers) override {}
    void setCmpID(std::int32_t) override {}
    void setIsServiceSpecific(bool) override {}
    void setTcfPolicyVersion(std::int32_t) override {}
    void setCmpVersion(std::int32_t) override {}
    void setPublisherCC(std::string_view) override {}

    std::string buildConsentString(bool withPublisherTC) override;
    void writeTCData() override;

private:
    std::string obstacle() const;
    TCModel model(bool withPublisherTC) const;

    CMPStorage storage_;
    const PublisherRules& rules_;
    const TCFSettings& settings_;
    Shown shown_;
    std::optional<std::string> additionalConsent_;
    Logger& logger_;
    FieldFitter fitter_{logger_};
    std::uint64_t day_ = 0; // tenths of a second since 1970
    std::string language_ = "AA";
    Choice choice_;
    std::optional<TCData> built_;
};

/// The number under which the settings' CMP is stored; absent where that is none.
std::optional<std::uint32_t> cmpOf(const TCFSettings& settings);

} // namespace vx::services::tcf
