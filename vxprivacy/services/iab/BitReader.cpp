#include "vxprivacy/services/iab/BitReader.h"

#include <array>

namespace vx::services::tcf {

namespace {

constexpr std::uint8_t kForeign = 64;

constexpr std::array<std::uint8_t, 256> makeValues() {
    std::array<std::uint8_t, 256> values{};
    values.fill(kForeign);
    std::uint8_t value = 0;
    for (char digit : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                       "0123456789-_"))
        values[static_cast<unsigned char>(digit)] = value++;
    return values;
}

constexpr std::array<std::uint8_t, 256> kValues = makeValues();

std::uint8_t valueOf(char digit) {
    return kValues[static_cast<unsigned char>(digit)];
}

} // namespace

std::optional<std::size_t> findForeignCharacter(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (valueOf(text[i]) == kForeign)
            return i;
    return {};
}

std::uint64_t BitReader::read(unsigned width) {
    if (width > 32) {
        const std::uint64_t high = read(width - 32);
        return high << 32 | read(32);
    }
    for (; waiting_ < width; waiting_ += 6)
        pending_ = pending_ << 6 | valueOf(text_[next_++]);
    waiting_ -= width;
    return pending_ >> waiting_ & ((std::uint64_t{1} << width) - 1);
}

} // namespace vx::services::tcf
