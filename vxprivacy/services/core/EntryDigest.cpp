#include "vxprivacy/services/core/EntryDigest.h"

namespace vx::services {

namespace {

constexpr std::uint64_t kBasis = 0xcbf29ce484222325;
constexpr std::uint64_t kPrime = 0x100000001b3;

// FNV-1a, 64 bits: one step a byte.
std::uint64_t mixed(std::uint64_t hash, std::string_view text) {
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
    return hash;
}

// Found again in every user's store. Sums of plain FNV hashes of like texts could cancel out; the
// last steps (of MurmurHash3) spread every bit over all.
std::uint64_t spread(std::uint64_t hash) {
    hash = (hash ^ hash >> 33) * 0xff51afd7ed558ccd;
    hash = (hash ^ hash >> 33) * 0xc4ceb9fe1a85ec53;
    return hash ^ hash >> 33;
}

} // namespace

std::uint64_t EntryDigest::hash(std::string_view key, std::string_view value) {
    const std::uint64_t ofKey = mixed(kBasis, key);
    return spread(mixed((ofKey ^ key.size()) * kPrime, value));
}

std::string EntryDigest::text() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += digits[sum_ >> shift & 0xf];
    return text;
}

} // namespace vx::services
