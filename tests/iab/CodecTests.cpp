#include <algorithm>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

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
