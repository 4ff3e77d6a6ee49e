#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::services {

/// A number that tells whether a set of entries is the one that it was made of, whatever their
/// order. It finds damage, such as a bit that turned over on its way; it is no protection against
/// somebody who forges entries.
class EntryDigest {
public:
    void add(std::string_view key, std::string_view value) { sum_ += hash(key, value); }
    void remove(std::string_view key, std::string_view value) { sum_ -= hash(key, value); }

    /// 16 hexadecimal digits.
    std::string text() const;

    friend bool operator==(const EntryDigest&, const EntryDigest&) = default;

private:
    static std::uint64_t hash(std::string_view key, std::string_view value);

    std::uint64_t sum_ = 0;
};

} // namespace vx::services
