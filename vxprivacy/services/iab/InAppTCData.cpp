#include "vxprivacy/services/iab/InAppTCData.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "vxprivacy/services/iab/CMPStorage.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Layout.h"
#include "vxprivacy/services/iab/PublisherRules.h"

namespace vx::services {

namespace {

using tcf::TCModel;

// A JSON object in the making. Its texts have no character that JSON escapes.
class ObjectText {
public:
    ObjectText& put(std::string_view name, std::string_view text) {
        return putRaw(name, "\"" + std::string(text) + "\"");
    }
    ObjectText& put(std::string_view name, std::unsigned_integral auto number) {
        return putRaw(name, std::to_string(number));
    }
    ObjectText& put(std::string_view name, const ObjectText& object) {
        return putRaw(name, object.text());
    }

    std::string text() const { return "{" + members_ + "}"; }

private:
    ObjectText& putRaw(std::string_view name, const std::string& value) {
        members_.append(members_.empty() ? "\"" : ",\"").append(name).append("\":").append(value);
        return *this;
    }

    std::string members_;
};

ObjectText purposesOf(const TCModel& model) {
    return ObjectText()
        .put("consents", digits(model.purposesConsent, tcf::kPurposesWidth))
        .put("legitimateInterests", digits(model.purposesLITransparency, tcf::kPurposesWidth));
}

ObjectText vendorsOf(const TCModel& model) {
    ObjectText vendors;
    vendors.put("consents", digits(model.vendorConsent))
        .put("legitimateInterests", digits(model.vendorLegitimateInterest));
    if (model.disclosedVendors)
        vendors.put("disclosedVendors", digits(*model.disclosedVendors));
    return vendors;
}

ObjectText publisherOf(const TCModel& model) {
    ObjectText publisher;
    if (const auto& own = model.publisherTC) {
        const std::uint32_t custom = own->customPurposes;
        publisher.put("consents", digits(own->purposesConsent, tcf::kPurposesWidth))
            .put("legitimateInterests", digits(own->purposesLITransparency, tcf::kPurposesWidth))
            .put("customPurpose", ObjectText()
                                      .put("consents", digits(own->customPurposesConsent, custom))
                                      .put("legitimateInterests",
                                           digits(own->customPurposesLITransparency, custom)));
    }
    ObjectText restrictions;
    for (const auto& [purpose, types] : tcf::textsOf(model.publisherRestrictions))
        restrictions.put(std::to_string(purpose), types);
    return publisher.put("restrictions", restrictions);
}

void putString(ObjectText& data, std::string_view text, const TCModel& model) {
    data.put("tcString", text)
        .put("tcfPolicyVersion", model.tcfPolicyVersion)
        .put("cmpVersion", model.cmpVersion)
        .put("gvlVersion", model.vendorListVersion)
        .put("isServiceSpecific", std::uint32_t{model.isServiceSpecific})
        .put("useNonStandardTexts", std::uint32_t{model.useNonStandardStacks})
        .put("publisherCC", model.publisherCC)
        .put("purposeOneTreatment", std::uint32_t{model.purposeOneTreatment})
        .put("purpose", purposesOf(model))
        .put("vendor", vendorsOf(model))
        .put("specialFeatureOptins", digits(model.specialFeatureOptIns, tcf::kSpecialFeaturesWidth))
        .put("publisher", publisherOf(model));
}

bool isAdditionalConsent(std::string_view text) {
    return text.find_first_not_of("0123456789.~dv") == std::string_view::npos;
}

} // namespace

std::string inAppTCData(const KeyValueStore& store) {
    const tcf::StoredTCData stored = tcf::storedTCData(store);
    const std::string text = stored.tcString.value_or("");
    const auto decoded = tcf::decode(text);
    const auto* model = std::get_if<TCModel>(&decoded);
    ObjectText data;
    if (const auto cmp = model ? std::optional(model->cmpId) : stored.cmp)
        data.put("cmpId", *cmp);
    if (stored.gdprApplies)
        data.put("gdprApplies", std::uint32_t{*stored.gdprApplies});
    if (model)
        putString(data, text, *model);
    if (stored.additionalConsent && isAdditionalConsent(*stored.additionalConsent))
        data.put("addtlConsent", *stored.additionalConsent);
    return data.text();
}

} // namespace vx::services
