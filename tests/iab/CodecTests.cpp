#include <algorithm>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "vxprivacy/services/iab/BitReader.h"
#include "vxprivacy/services/iab/BitWriter.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace {

using namespace vx::services::tcf;

// Writes bits as a test lists them.
struct Bits {
    struct Field {
        std::uint64_t value;
        unsigned width;
    };

    Bits& operator<<(Field field) {
        writer.write(field.value, field.width);
        return *this;
    }
    std::string text() { return std::move(writer).finish(); }

    BitWriter writer{0};
};

// A core segment up to its vendors.
Bits core() {
    Bits bits;
    bits << Bits::Field{2, 6};
    for (int i = 0; i < 207; ++i)
        bits << Bits::Field{0, 1};
    return bits;
}

constexpr Bits::Field kNoVendors{0, 17};

const TCError& errorOf(const std::variant<TCModel, TCError>& result) {
    static const TCError none{"no error", 0, ""};
    const auto* error = std::get_if<TCError>(&result);
    return error ? *error : none;
}

IdentifierSet every(std::uint32_t step, std::uint32_t greatest) {
    IdentifierSet set;
    for (std::uint32_t identifier = step; identifier <= greatest; identifier += step)
        set.insert(identifier);
    return set;
}

} // namespace

TEST(Codec, NamesTheFieldAndTheBitOfABadString) {
    const std::string good = encode({});
    struct Case {
        std::string text, field;
        std::size_t bit;
    };
    const std::vector<Case> cases = {
        {"", "Core.Version", 0},
        {"BOEFEAyOEFEAyAHABDENAI4AAAB9vABAASA", "Core.Version", 0}, // of version 1
        {"C", "Core.Created", 6},
        {good.substr(0, 20), "Core.VendorListVersion", 120},
        {good.substr(0, 10) + "=" + good.substr(11), "Core", 60},
        {good + ".", "Segment 2.SegmentType", 0},
        {good + ".IAAA.IAAA", "Segment 3.SegmentType", 0}, // twice
        {good + ".AAAA", "Segment 2.SegmentType", 0},      // another core segment
        {good + ".gAAA", "Segment 2.SegmentType", 0},      // of no known type
        {good + ".I", "DisclosedVendors.Vendors.MaxVendorId", 3},
        {good + ".f_", "PublisherTC.PubPurposesConsent", 3},
        {good + ".IAAAAAAB", "DisclosedVendors.Padding", 20},
        {std::string(kLongestString + 1, 'A'), "Core", 0},
    };
    for (const auto& [text, field, bit] : cases) {
        SCOPED_TRACE(text.substr(0, 100));
        EXPECT_EQ(errorOf(decode(text)).field, field);
        EXPECT_EQ(errorOf(decode(text)).bit, bit);
    }
    EXPECT_TRUE(std::holds_alternative<TCModel>(decode(good + ".eAAAAAAAAAA.QAAA.IAAA")));
}

TEST(Codec, RefusesRangesThatCannotBe) {
    struct Case {
        std::uint64_t maxVendorId, first, last;
        const char* field;
    };
    for (const auto& [maxVendorId, first, last, field] : std::vector<Case>{
             {100, 1, 100, "no error"},
             {100, 7, 7, "no error"},
             {100, 0, 7, "Core.VendorConsent.StartOrOnlyVendorId"},
             {100, 101, 101, "Core.VendorConsent.StartOrOnlyVendorId"},
             {100, 7, 6, "Core.VendorConsent.EndVendorId"},
             {100, 7, 101, "Core.VendorConsent.EndVendorId"},
             {65535, 1, 65535, "no error"},
         }) {
        SCOPED_TRACE(std::to_string(first) + "-" + std::to_string(last));
        Bits bits = core();
        bits << Bits::Field{maxVendorId, 16} << Bits::Field{1, 1} << Bits::Field{1, 12}
             << Bits::Field{1, 1} << Bits::Field{first, 16} << Bits::Field{last, 16} << kNoVendors
             << Bits::Field{0, 12};
        EXPECT_EQ(errorOf(decode(bits.text())).field, field);
    }
}

TEST(Codec, RefusesRestrictionsWithoutMeaning) {
    struct Case {
        std::uint64_t purpose, type, vendor;
        const char* field;
    };
    for (const auto& [purpose, type, vendor, field] : std::vector<Case>{
             {63, 2, 65535, "no error"},
             {0, 0, 1, "Core.PubRestrictions.PurposeId"},
             {1, 3, 1, "Core.PubRestrictions.RestrictionType"},
             {1, 0, 0, "Core.PubRestrictions.StartOrOnlyVendorId"},
         }) {
        SCOPED_TRACE(field);
        Bits bits = core();
        bits << kNoVendors << kNoVendors << Bits::Field{1, 12} << Bits::Field{purpose, 6}
             << Bits::Field{type, 2} << Bits::Field{1, 12} << Bits::Field{0, 1}
             << Bits::Field{vendor, 16};
        EXPECT_EQ(errorOf(decode(bits.text())).field, field);
    }
}

// In ranges, no vendor takes 12 bits, one 17 more, and a run of several 33 more.
TEST(Codec, ChoosesRangesOnlyWhereTheyAreShorter) {
    const auto isRange = [](const IdentifierSet& vendors, std::uint32_t maxVendorId) {
        TCModel model;
        model.disclosedVendors = {maxVendorId, vendors};
        const std::string text = encode(model);
        BitReader bits(std::string_view(text).substr(text.find('.') + 1));
        bits.read(3 + 16);
        return bits.read(1) == 1;
    };
    EXPECT_FALSE(isRange({29}, 29));
    EXPECT_TRUE(isRange({29}, 30));
    EXPECT_FALSE(isRange({1, 2}, 45));
    EXPECT_TRUE(isRange({1, 2}, 46));
    EXPECT_FALSE(isRange({}, 12));
    EXPECT_TRUE(isRange({}, 13));
}

TEST(Codec, CountsMoreRangesThanTheFieldHolds) {
    const IdentifierSet odd = every(2, 65534);
    TCModel model;
    model.vendorConsent = {65535, odd};
    model.publisherRestrictions[{1, Restriction::NotAllowed}] = odd;
    EXPECT_EQ(std::get<TCModel>(decode(encode(model))), model);
}

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
        RC_ASSERT(errorOf(result).bit <= text.size() * 6);
}
