#include "vxprivacy/services/iab/BitWriter.h"

#include <string_view>
#include <utility>

namespace vx::services::tcf {

namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

} // namespace

void BitWriter::write(std::uint64_t value, unsigned width) {
    if (width > 32) {
        write(value >> 32, width - 32);
        width = 32;
    }
    pending_ = pending_ << width | (value & ((std::uint64_t{1} << width) - 1));
    for (waiting_ += width; waiting_ >= 6;) {
        waiting_ -= 6;
        text_.push_back(kDigits[pending_ >> waiting_ & 63]);
    }
}

std::string BitWriter::finish() && {
    const std::size_t bits = text_.size() * 6 + waiting_;
    write(0, static_cast<unsigned>((8 - bits % 8) % 8));
    write(0, (6 - waiting_) % 6);
    return std::move(text_);
}

} // namespace vx::services::tcf
