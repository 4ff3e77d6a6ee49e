#include "vxprivacy/c/Texts.h"

#include <cstdlib>
#include <cstring>

#include <simdjson.h>

#include "vxprivacy/c/Guard.h"

namespace vx::c {

std::string_view textIn(const char* text, std::size_t length) {
    if (length == 0)
        return {};
    require(text && simdjson::validate_utf8(text, length), VX_INVALID_ARGUMENT);
    return {text, length};
}

void textOut(std::string_view text, char** copy, std::size_t* length) {
    char*& place = outOf(copy);
    std::size_t& size = outOf(length);
    auto* bytes = static_cast<char*>(std::malloc(text.size() + 1));
    require(bytes != nullptr, VX_NO_MEMORY);
    std::memcpy(bytes, text.data(), text.size());
    bytes[text.size()] = '\0';
    place = bytes;
    size = text.size();
}

} // namespace vx::c

void vx_free(void* text) {
    std::free(text);
}
