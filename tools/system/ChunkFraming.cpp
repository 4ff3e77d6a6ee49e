#include "tools/system/ChunkFraming.h"

#include <algorithm>
#include <string_view>

namespace vx::tools::system {

namespace {

constexpr std::size_t kLongestSize = 8; // digits
constexpr std::size_t kLongestLine = 256;

} // namespace

bool ChunkFraming::take(std::string_view bytes) {
    while (!bytes.empty() && !wrong_) {
        std::size_t taken = 1;
        if (place_ == Place::Rest) // the library reads the rest rightly
            return true;
        if (place_ == Place::Data) {
            taken = std::min(size_, bytes.size());
            size_ -= taken;
            if (size_ == 0)
                place_ = Place::DataEnd;
        } else {
            wrong_ = !take(bytes.front());
        }
        bytes.remove_prefix(taken);
    }
    return !wrong_;
}

bool ChunkFraming::take(char byte) {
    switch (place_) {
    case Place::Size:
        return takeOfSize(byte);
    case Place::Extension:
        if (byte == '\r')
            place_ = Place::LineFeed;
        return ++length_ <= kLongestLine;
    case Place::LineFeed:
        place_ = size_ == 0 ? Place::Rest : Place::Data;
        return byte == '\n';
    case Place::DataEnd:
        place_ = Place::DataLineFeed;
        return byte == '\r';
    case Place::DataLineFeed:
        place_ = Place::Size;
        length_ = 0;
        return byte == '\n';
    default:
        return true;
    }
}

bool ChunkFraming::takeOfSize(char byte) {
    const std::string_view digits = "0123456789abcdef0123456789ABCDEF";
    const std::size_t digit = digits.find(byte);
    if (digit != std::string_view::npos) {
        size_ = size_ * 16 + digit % 16;
        return ++length_ <= kLongestSize;
    }
    place_ = byte == '\r' ? Place::LineFeed : Place::Extension;
    return length_ > 0 && (byte == '\r' || byte == ';' || byte == ' ');
}

} // namespace vx::tools::system
