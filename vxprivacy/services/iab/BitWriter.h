#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vx::services::tcf {

/// Writes bits as base64url (RFC 4648, section 5) without padding characters.
class BitWriter {
public:
    explicit BitWriter(std::size_t expectedBits) { text_.reserve(expectedBits / 6 + 4); }

    /// The `width` lowest bits of `value`, at most 64, the highest first.
    void write(std::uint64_t value, unsigned width);
    /// The text of whole bytes, filled up with zeros.
    std::string finish() &&;

private:
    std::string text_;
    std::uint64_t pending_ = 0; // its lowest bits are not in the text yet
    unsigned waiting_ = 0;      // how many; fewer than 6 between two calls
};

} // namespace vx::services::tcf
