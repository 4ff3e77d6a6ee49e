// Reads a TC string segment by segment. The first field that cannot be right is the error.

#include "vxprivacy/services/iab/Decoder.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "vxprivacy/services/iab/BitReader.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::string_view kBitField = "BitField"; // a part of a section

// Visits the fields of a segment and reads them. After the first error nothing more is read, and
// the fields that follow keep what they have or become zero.
class Decoder {
public:
    Decoder(std::string_view segment, std::vector<FieldPlace>* places)
        : bits_(segment), places_(places) {}

    std::uint32_t take(std::string_view field, unsigned width);
    void number(std::string_view field, unsigned width, std::uint32_t& value) {
        value = take(field, width);
        place(field, width);
    }
    void time(std::string_view field, std::uint64_t& value);
    void flag(std::string_view field, bool& value) {
        value = take(field, 1) != 0;
        place(field, 1);
    }
    void letters(std::string_view field, std::string& value);
    void identifiers(std::string_view field, unsigned width, IdentifierSet& set);
    void vendors(std::string_view field, VendorSection& section);
    void restrictions(std::string_view field, Restrictions& restrictions);
    /// Nothing but zeros may follow.
    void finish();

    void enter(std::string_view name);
    void leave();
    void fail(std::string_view field, std::string why) { failAt(start_, field, std::move(why)); }
    const std::optional<TCError>& error() const { return error_; }

private:
    bool has(std::string_view field, std::size_t width);
    // Of the field that ends here.
    void place(std::string_view field, std::size_t width);
    void failAt(std::size_t bit, std::string_view field, std::string why);
    void restriction(Restrictions& restrictions);
    void entries(std::uint32_t greatest, IdentifierSet& set);
    void entry(std::uint32_t greatest, IdentifierSet& set);
    std::uint32_t takeVendor(std::string_view field, std::uint32_t least, std::uint32_t greatest);

    BitReader bits_;
    std::vector<FieldPlace>* places_; // may be null
    std::size_t start_ = 0;           // where the field that was read last begins
    std::string prefix_;              // of the field names
    std::optional<TCError> error_;
};

void Decoder::enter(std::string_view name) {
    prefix_.append(name).append(1, '.');
}

void Decoder::leave() {
    const std::size_t dot = prefix_.rfind('.', prefix_.size() - 2);
    prefix_.resize(dot == std::string::npos ? 0 : dot + 1);
}

void Decoder::failAt(std::size_t bit, std::string_view field, std::string why) {
    if (!error_)
        error_ = TCError{prefix_ + std::string(field), bit, std::move(why)};
}

bool Decoder::has(std::string_view field, std::size_t width) {
    if (error_)
        return false;
    start_ = bits_.position();
    if (bits_.remaining() >= width)
        return true;
    fail(field, "it needs " + std::to_string(width) + " bits, and " +
                    std::to_string(bits_.remaining()) + " are left");
    return false;
}

void Decoder::place(std::string_view field, std::size_t width) {
    if (places_ && !error_ && width > 0)
        places_->push_back(
            {prefix_ + std::string(field), bits_.position() - width, bits_.position() - 1});
}

std::uint32_t Decoder::take(std::string_view field, unsigned width) {
    return has(field, width) ? static_cast<std::uint32_t>(bits_.read(width)) : 0;
}

void Decoder::time(std::string_view field, std::uint64_t& value) {
    if (has(field, kTimeWidth))
        value = bits_.read(kTimeWidth);
    place(field, kTimeWidth);
}

void Decoder::letters(std::string_view field, std::string& value) {
    if (!has(field, 2 * std::size_t{kLetterWidth}))
        return;
    for (char& letter : value) {
        const auto number = bits_.read(kLetterWidth);
        if (number > 'Z' - 'A')
            fail(field, std::to_string(number) + " is no letter");
        letter = static_cast<char>('A' + number);
    }
    place(field, 2 * std::size_t{kLetterWidth});
}

void Decoder::identifiers(std::string_view field, unsigned width, IdentifierSet& set) {
    if (!has(field, width))
        return;
    unsigned left = width;
    for (std::size_t i = 0; left > 0; ++i) {
        const unsigned bits = std::min(left, 64u);
        set.insertWord(i, bits_.read(bits) << (64 - bits));
        left -= bits;
    }
    if (field != kBitField)
        place(field, width);
}

void Decoder::vendors(std::string_view field, VendorSection& section) {
    const std::size_t first = bits_.position();
    enter(field);
    section.maxVendorId = take("MaxVendorId", kVendorWidth);
    if (take("IsRangeEncoding", 1) != 0)
        entries(section.maxVendorId, section.vendors);
    else
        identifiers(kBitField, section.maxVendorId, section.vendors);
    leave();
    place(field, bits_.position() - first);
}

void Decoder::restrictions(std::string_view field, Restrictions& restrictions) {
    const std::size_t first = bits_.position();
    enter(field);
    const std::uint32_t count = take("NumPubRestrictions", kEntriesWidth);
    for (std::uint32_t i = 0; i < count && !error_; ++i)
        restriction(restrictions);
    leave();
    place(field, bits_.position() - first);
}

void Decoder::restriction(Restrictions& restrictions) {
    const std::uint32_t purpose = take("PurposeId", kPurposeWidth);
    if (purpose == 0)
        fail("PurposeId", "there is no purpose 0");
    const std::uint32_t type = take("RestrictionType", kRestrictionTypeWidth);
    if (type > Restriction::RequireLegitimateInterest)
        fail("RestrictionType", "3 has no meaning");
    IdentifierSet vendors;
    entries(IdentifierSet::kGreatest, vendors);
    if (error_ || vendors.empty())
        return;
    IdentifierSet& all = restrictions[{purpose, static_cast<Restriction::Type>(type)}];
    vendors.forEachRange(
        [&](std::uint32_t first, std::uint32_t last) { all.insertRange(first, last); });
}

void Decoder::entries(std::uint32_t greatest, IdentifierSet& set) {
    const std::uint32_t count = take("NumEntries", kEntriesWidth);
    for (std::uint32_t i = 0; i < count && !error_; ++i)
        entry(greatest, set);
}

void Decoder::entry(std::uint32_t greatest, IdentifierSet& set) {
    const bool isRange = take("IsARange", 1) != 0;
    const std::uint32_t first = takeVendor("StartOrOnlyVendorId", 1, greatest);
    const std::uint32_t last = isRange ? takeVendor("EndVendorId", first, greatest) : first;
    if (!error_)
        set.insertRange(first, last);
}

std::uint32_t Decoder::takeVendor(std::string_view field, std::uint32_t least,
                                  std::uint32_t greatest) {
    const std::uint32_t vendor = take(field, kVendorWidth);
    if (vendor < least || vendor > greatest)
        fail(field, std::to_string(vendor) + " is not from " + std::to_string(least) + " to " +
                        std::to_string(greatest));
    return vendor;
}

void Decoder::finish() {
    while (!error_ && bits_.remaining() > 0)
        if (take("Padding", static_cast<unsigned>(std::min<std::size_t>(bits_.remaining(), 32))))
            fail("Padding", "there are bits set behind the last field");
}

std::optional<TCError> readCore(std::string_view segment, TCModel& model,
                                std::vector<FieldPlace>* places) {
    Decoder decoder(segment, places);
    decoder.enter("Core");
    const std::uint32_t version = decoder.take("Version", kVersionWidth);
    if (version != kVersion)
        decoder.fail("Version", "it is " + std::to_string(version) + ", not 2");
    visitCore(decoder, model);
    decoder.finish();
    return decoder.error();
}

// A segment of which there may be one.
template <class Part, class Read>
void readOnce(Decoder& decoder, std::string_view name, std::optional<Part>& part, Read read) {
    if (part)
        decoder.fail("SegmentType", "there is another segment " + std::string(name));
    decoder.leave();
    decoder.enter(name);
    read(part.emplace());
    decoder.finish();
}

std::optional<TCError> readOther(std::string_view segment, const std::string& name, TCModel& model,
                                 std::vector<FieldPlace>* places) {
    Decoder decoder(segment, places);
    decoder.enter(name);
    const auto vendors = [&](VendorSection& section) { decoder.vendors("Vendors", section); };
    const std::uint32_t type = decoder.take("SegmentType", kSegmentTypeWidth);
    switch (static_cast<SegmentType>(type)) {
    case SegmentType::DisclosedVendors:
        readOnce(decoder, "DisclosedVendors", model.disclosedVendors, vendors);
        break;
    case SegmentType::AllowedVendors:
        readOnce(decoder, "AllowedVendors", model.allowedVendors, vendors);
        break;
    case SegmentType::PublisherTC:
        readOnce(decoder, "PublisherTC", model.publisherTC,
                 [&](PublisherTC& publisher) { visitPublisherTC(decoder, publisher); });
        break;
    default:
        decoder.fail("SegmentType", std::to_string(type) + " is not 1, 2 or 3");
    }
    return decoder.error();
}

// The segments behind the first one are called by their number until their type is known.
std::optional<TCError> readSegment(std::string_view segment, std::size_t number, TCModel& model,
                                   std::vector<FieldPlace>* places) {
    const std::string name = number == 1 ? "Core" : "Segment " + std::to_string(number);
    if (const auto foreign = findForeignCharacter(segment))
        return TCError{name, *foreign * 6, "a character is not of base64url"};
    return number == 1 ? readCore(segment, model, places) : readOther(segment, name, model, places);
}

} // namespace

std::variant<TCModel, TCError> decode(std::string_view text, std::vector<FieldPlace>* places) {
    if (text.size() > kLongestString)
        return TCError{"Core", 0,
                       "it is longer than " + std::to_string(kLongestString) + " characters"};
    TCModel model;
    std::size_t number = 0;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('.', begin), text.size());
        if (auto error = readSegment(text.substr(begin, end - begin), ++number, model, places))
            return *std::move(error);
        begin = end + 1;
    }
    return model;
}

} // namespace vx::services::tcf
