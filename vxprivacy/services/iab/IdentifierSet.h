#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace vx::services::tcf {

/// A set of IAB identifiers from 1 to 65535, one bit each.
class IdentifierSet {
public:
    /// What 16 bits hold.
    static constexpr std::uint32_t kGreatest = 65535;

    IdentifierSet() = default;
    IdentifierSet(std::initializer_list<std::uint32_t> identifiers);

    void insert(std::uint32_t identifier) { insertRange(identifier, identifier); }
    /// 1 <= first <= last <= kGreatest.
    void insertRange(std::uint32_t first, std::uint32_t last);
    /// Takes away what is greater than `greatest`; true when there was something.
    bool truncate(std::uint32_t greatest);

    bool contains(std::uint32_t identifier) const;
    bool empty() const { return words_.empty(); }
    std::size_t size() const;
    /// 0 when it is empty.
    std::uint32_t greatest() const;

    /// Calls `action(first, last)` for each run of identifiers without a gap, in ascending order.
    template <class Action>
    void forEachRange(Action action) const {
        const std::size_t end = words_.size() * kBits;
        for (std::size_t first = find(true, 0); first < end;) {
            const std::size_t behind = find(false, first);
            action(static_cast<std::uint32_t>(first + 1), static_cast<std::uint32_t>(behind));
            first = find(true, behind);
        }
    }

    /// The identifiers from 64 * `index` + 1 on, the first in the highest bit.
    std::uint64_t word(std::size_t index) const {
        return index < words_.size() ? words_[index] : 0;
    }
    void insertWord(std::size_t index, std::uint64_t word);

    friend bool operator==(const IdentifierSet&, const IdentifierSet&) = default;

private:
    static constexpr std::size_t kBits = 64;

    // The position of the first bit from `from` on that is set, or not; the end when there is none.
    std::size_t find(bool set, std::size_t from) const;

    std::vector<std::uint64_t> words_; // the last one is not 0
};

/// A digit for each identifier from 1 to `count`, which is not less than the greatest: "1" where
/// the set has it, else "0".
std::string digits(const IdentifierSet& set, std::uint32_t count);

} // namespace vx::services::tcf
