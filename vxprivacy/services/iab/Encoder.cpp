// Writes the segments of a TC string, each section of vendors in the shorter of its two forms.

#include "vxprivacy/services/iab/Encoder.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "vxprivacy/services/iab/BitWriter.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::size_t kMostEntries = (1u << kEntriesWidth) - 1;

struct Range {
    std::uint32_t first, last;
    bool isSingle() const { return first == last; }
};

std::vector<Range> rangesOf(const IdentifierSet& set) {
    std::vector<Range> ranges;
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        ranges.push_back({first, last});
    });
    return ranges;
}

std::size_t widthOf(const std::vector<Range>& ranges) {
    std::size_t width = kEntriesWidth;
    for (const Range& range : ranges)
        width += 1 + (range.isSingle() ? kVendorWidth : 2 * kVendorWidth);
    return width;
}

std::size_t expectedWidth(const TCModel& model) {
    return 320 + model.vendorConsent.maxVendorId + model.vendorLegitimateInterest.maxVendorId;
}

// Visits the fields of a segment and writes them.
class Encoder {
public:
    explicit Encoder(std::size_t expectedBits) : bits_(expectedBits) {}
    std::string finish() && { return std::move(bits_).finish(); }

    void begin(std::uint32_t value, unsigned width) { bits_.write(value, width); }
    void number(std::string_view, unsigned width, std::uint32_t value) {
        bits_.write(value, width);
    }
    void time(std::string_view, std::uint64_t value) { bits_.write(value, kTimeWidth); }
    void flag(std::string_view, bool value) { bits_.write(value, 1); }
    void letters(std::string_view, const std::string& value) {
        for (char letter : value)
            bits_.write(static_cast<unsigned char>(letter - 'A'), kLetterWidth);
    }
    void identifiers(std::string_view, unsigned width, const IdentifierSet& set);
    void vendors(std::string_view, const VendorSection& section);
    void restrictions(std::string_view, const Restrictions& restrictions);

private:
    void entries(std::span<const Range> ranges);

    BitWriter bits_;
};

void Encoder::identifiers(std::string_view, unsigned width, const IdentifierSet& set) {
    for (std::size_t i = 0; width > 0; ++i) {
        const unsigned bits = std::min(width, 64u);
        bits_.write(set.word(i) >> (64 - bits), bits);
        width -= bits;
    }
}

// More ranges than can be counted take more bits than any bit field.
void Encoder::vendors(std::string_view name, const VendorSection& section) {
    const std::vector<Range> ranges = rangesOf(section.vendors);
    const bool isRange = widthOf(ranges) < section.maxVendorId;
    bits_.write(section.maxVendorId, kVendorWidth);
    bits_.write(isRange, 1);
    if (isRange)
        entries(ranges);
    else
        identifiers(name, section.maxVendorId, section.vendors);
}

// A restriction with more ranges than can be counted is written in several parts.
void Encoder::restrictions(std::string_view, const Restrictions& restrictions) {
    std::vector<std::pair<Restriction, std::vector<Range>>> parts;
    for (const auto& [restriction, vendors] : restrictions) {
        const std::vector<Range> ranges = rangesOf(vendors);
        for (auto part = ranges.begin(); part != ranges.end();) {
            const auto end = part + std::min<std::ptrdiff_t>(kMostEntries, ranges.end() - part);
            parts.emplace_back(restriction, std::vector<Range>(part, end));
            part = end;
        }
    }
    bits_.write(parts.size(), kEntriesWidth);
    for (const auto& [restriction, ranges] : parts) {
        bits_.write(restriction.purpose, kPurposeWidth);
        bits_.write(restriction.type, kRestrictionTypeWidth);
        entries(ranges);
    }
}

void Encoder::entries(std::span<const Range> ranges) {
    bits_.write(ranges.size(), kEntriesWidth);
    for (const Range& range : ranges) {
        bits_.write(!range.isSingle(), 1);
        bits_.write(range.first, kVendorWidth);
        if (!range.isSingle())
            bits_.write(range.last, kVendorWidth);
    }
}

Encoder segment(SegmentType type, std::size_t expectedBits) {
    Encoder encoder(expectedBits);
    encoder.begin(static_cast<std::uint32_t>(type), kSegmentTypeWidth);
    return encoder;
}

std::string encodeVendors(SegmentType type, const VendorSection& section) {
    Encoder encoder = segment(type, 40 + section.maxVendorId);
    encoder.vendors("", section);
    return std::move(encoder).finish();
}

} // namespace

std::string encodeCore(const TCModel& model) {
    Encoder encoder(expectedWidth(model));
    encoder.begin(kVersion, kVersionWidth);
    visitCore(encoder, model);
    return std::move(encoder).finish();
}

std::string encodePublisherTC(const PublisherTC& publisher) {
    Encoder encoder = segment(SegmentType::PublisherTC, 200);
    visitPublisherTC(encoder, publisher);
    return std::move(encoder).finish();
}

std::string encode(const TCModel& model) {
    std::string text = encodeCore(model);
    if (model.disclosedVendors)
        text += '.' + encodeVendors(SegmentType::DisclosedVendors, *model.disclosedVendors);
    if (model.allowedVendors)
        text += '.' + encodeVendors(SegmentType::AllowedVendors, *model.allowedVendors);
    if (model.publisherTC)
        text += '.' + encodePublisherTC(*model.publisherTC);
    return text;
}

} // namespace vx::services::tcf
