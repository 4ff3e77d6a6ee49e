#include <algorithm>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

using namespace vx::services::tcf;

namespace {

rc::Gen<IdentifierSet> sets(std::uint32_t greatest) {
    return rc::gen::exec([greatest] {
        IdentifierSet set;
        if (greatest == 0)
            return set;
        const auto starts =
            *rc::gen::container<std::vector<std::uint32_t>>(rc::gen::inRange(1u, greatest + 1));
        for (std::uint32_t first : starts) {
            const std::uint32_t length = *rc::gen::element(0u, 0u, 1u, 5u, 70u, 1000u);
            set.insertRange(first, std::min(greatest, first + length));
        }
        return set;
    });
}

rc::Gen<VendorSection> sections() {
    return rc::gen::exec([] {
        const auto greatest = *rc::gen::element(0u, 1u, 28u, 63u, 64u, 65u, 900u, 65535u);
        return VendorSection{greatest, *sets(greatest)};
    });
}

std::string letters() {
    return *rc::gen::container<std::string>(2, rc::gen::inRange('A', static_cast<char>('Z' + 1)));
}

std::uint32_t number(unsigned width) {
    return *rc::gen::inRange(0u, 1u << width);
}

rc::Gen<Restrictions> restrictions() {
    return rc::gen::exec([] {
        Restrictions made;
        for (std::uint32_t purpose :
             *rc::gen::container<std::vector<std::uint32_t>>(rc::gen::inRange(1u, 64u)))
            if (const auto vendors = *sets(3000); !vendors.empty())
                made[{purpose, static_cast<Restriction::Type>(*rc::gen::inRange(0, 3))}] = vendors;
        return made;
    });
}

rc::Gen<PublisherTC> publishers() {
    return rc::gen::exec([] {
        const std::uint32_t custom = number(6);
        return PublisherTC{*sets(24), *sets(24), custom, *sets(custom), *sets(custom)};
    });
}

rc::Gen<TCModel> models() {
    return rc::gen::exec([] {
        TCModel model;
        model.created = *rc::gen::inRange<std::uint64_t>(0, 1ull << 36);
        model.lastUpdated = *rc::gen::inRange<std::uint64_t>(0, 1ull << 36);
        model.cmpId = number(12);
        model.cmpVersion = number(12);
        model.consentScreen = number(6);
        model.consentLanguage = letters();
        model.vendorListVersion = number(12);
        model.tcfPolicyVersion = number(6);
        model.isServiceSpecific = *rc::gen::arbitrary<bool>();
        model.useNonStandardStacks = *rc::gen::arbitrary<bool>();
        model.specialFeatureOptIns = *sets(12);
        model.purposesConsent = *sets(24);
        model.purposesLITransparency = *sets(24);
        model.purposeOneTreatment = *rc::gen::arbitrary<bool>();
        model.publisherCC = letters();
        model.vendorConsent = *sections();
        model.vendorLegitimateInterest = *sections();
        model.publisherRestrictions = *restrictions();
        if (*rc::gen::arbitrary<bool>())
            model.disclosedVendors = *sections();
        if (*rc::gen::arbitrary<bool>())
            model.allowedVendors = *sections();
        if (*rc::gen::arbitrary<bool>())
            model.publisherTC = *publishers();
        return model;
    });
}

} // namespace

RC_GTEST_PROP(Codec, ReadsWhatItWrote, ()) {
    const TCModel model = *models();
    RC_ASSERT(std::get<TCModel>(decode(encode(model))) == model);
}

// What was changed on its way is refused, or is a model that is written as any other.
RC_GTEST_PROP(Codec, SurvivesWhatWasChangedOnItsWay, ()) {
    std::string text = encode(*models());
    for (int i = *rc::gen::inRange(1, 4); i > 0; --i)
        text[*rc::gen::inRange<std::size_t>(0, text.size())] =
            *rc::gen::element('A', 'C', '_', '8', '.', '=', '\0');
    text.resize(*rc::gen::inRange<std::size_t>(0, text.size() + 1));
    const auto result = decode(text);
    if (const auto* model = std::get_if<TCModel>(&result))
        RC_ASSERT(std::get<TCModel>(decode(encode(*model))) == *model);
    else
        RC_ASSERT(std::get<TCError>(result).bit <= text.size() * 6);
}
