#pragma once

#include <cstdint>

namespace vx {

// The numbers behind an item's prefix in consent keys, from the offset of its kind. They wrap where
// the vendor list has an absurd identifier.

/// The sum of two numbers of the vendor list.
constexpr std::int32_t wrappedSum(std::int32_t left, std::int32_t right) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) +
                                     static_cast<std::uint32_t>(right));
}

/// Of item `n`'s legitimate interest, or of the opt-in to special feature `n`.
constexpr std::int32_t legitimateInterestNumber(std::int32_t offset, std::int32_t n) {
    return wrappedSum(offset, wrappedSum(n, n));
}

/// Of item `n`'s consent: the one before.
constexpr std::int32_t consentNumber(std::int32_t offset, std::int32_t n) {
    return wrappedSum(legitimateInterestNumber(offset, n), -1);
}

} // namespace vx
