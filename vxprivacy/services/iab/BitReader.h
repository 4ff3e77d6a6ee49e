#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vx::services::tcf {

/// The place of the first character of `text` that is not of base64url; absent when there is none.
std::optional<std::size_t> findForeignCharacter(std::string_view text);

/// Reads the bits of a text of base64url characters, which must outlive it.
class BitReader {
public:
    explicit BitReader(std::string_view text) : text_(text) {}

    /// How many bits were read.
    std::size_t position() const { return next_ * 6 - waiting_; }
    std::size_t remaining() const { return (text_.size() - next_) * 6 + waiting_; }
    /// The next `width` bits, at most 64 and no more than remain.
    std::uint64_t read(unsigned width);

private:
    std::string_view text_;
    std::size_t next_ = 0;      // the character to be taken next
    std::uint64_t pending_ = 0; // its lowest bits were taken and not read
    unsigned waiting_ = 0;      // how many; fewer than 6 between two calls
};

} // namespace vx::services::tcf
