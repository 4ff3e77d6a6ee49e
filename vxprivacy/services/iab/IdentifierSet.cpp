#include "vxprivacy/services/iab/IdentifierSet.h"

#include <algorithm>

namespace vx::services::tcf {

namespace {

constexpr std::uint64_t kAll = ~std::uint64_t{0};

} // namespace

IdentifierSet::IdentifierSet(std::initializer_list<std::uint32_t> identifiers) {
    for (std::uint32_t identifier : identifiers)
        insert(identifier);
}

void IdentifierSet::insertRange(std::uint32_t first, std::uint32_t last) {
    const std::size_t begin = first - 1;
    const std::size_t end = last;
    if (words_.size() * kBits < end)
        words_.resize((end + kBits - 1) / kBits);
    for (std::size_t i = begin / kBits; i * kBits < end; ++i) {
        std::uint64_t bits = kAll;
        if (i == begin / kBits)
            bits &= kAll >> begin % kBits;
        if (end < (i + 1) * kBits)
            bits &= ~(kAll >> end % kBits);
        words_[i] |= bits;
    }
}

bool IdentifierSet::truncate(std::uint32_t greatest) {
    if (this->greatest() <= greatest)
        return false;
    words_.resize((greatest + kBits - 1) / kBits);
    if (greatest % kBits != 0)
        words_.back() &= ~(kAll >> greatest % kBits);
    while (!words_.empty() && words_.back() == 0)
        words_.pop_back();
    return true;
}

bool IdentifierSet::contains(std::uint32_t identifier) const {
    return identifier > 0 &&
           (word((identifier - 1) / kBits) << (identifier - 1) % kBits) >> (kBits - 1) != 0;
}

std::size_t IdentifierSet::size() const {
    std::size_t count = 0;
    for (std::uint64_t word : words_)
        count += static_cast<std::size_t>(std::popcount(word));
    return count;
}

std::uint32_t IdentifierSet::greatest() const {
    if (empty())
        return 0;
    const auto unset = static_cast<std::size_t>(std::countr_zero(words_.back()));
    return static_cast<std::uint32_t>(words_.size() * kBits - unset);
}

void IdentifierSet::insertWord(std::size_t index, std::uint64_t word) {
    if (word == 0)
        return;
    words_.resize(std::max(words_.size(), index + 1));
    words_[index] |= word;
}

std::size_t IdentifierSet::find(bool set, std::size_t from) const {
    std::uint64_t considered = kAll >> from % kBits;
    for (std::size_t i = from / kBits; i < words_.size(); ++i, considered = kAll)
        if (const std::uint64_t found = (set ? words_[i] : ~words_[i]) & considered)
            return i * kBits + static_cast<std::size_t>(std::countl_zero(found));
    return words_.size() * kBits;
}

std::string digits(const IdentifierSet& set, std::uint32_t count) {
    std::string text(count, '0');
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        text.replace(first - 1, last - first + 1, last - first + 1, '1');
    });
    return text;
}

} // namespace vx::services::tcf
