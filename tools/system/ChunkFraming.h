#pragma once

#include <cstddef>
#include <string_view>

namespace vx::tools::system {

/// Follows a body that comes in chunks and says whether it is framed as HTTP/1.1 wants it: the
/// library takes one whose chunk has no line end for whole, and lines of any length.
class ChunkFraming {
public:
    /// Takes what comes next; false from the first byte on that does not belong there.
    bool take(std::string_view bytes);

private:
    enum class Place { Size, Extension, LineFeed, Data, DataEnd, DataLineFeed, Rest };

    bool take(char byte);
    bool takeOfSize(char byte);

    Place place_ = Place::Size;
    std::size_t size_ = 0;   // of the chunk, or what is left of it
    std::size_t length_ = 0; // of the line that says it
    bool wrong_ = false;
};

} // namespace vx::tools::system
