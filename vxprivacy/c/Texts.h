#pragma once

#include <cstddef>
#include <string_view>

namespace vx::c {

/// A caller's text; throws `Misuse` for a null pointer and for what is not UTF-8. The empty text
/// may be null.
std::string_view textIn(const char* text, std::size_t length);

/// Hands `text` out: a copy that is the caller's. Throws.
void textOut(std::string_view text, char** copy, std::size_t* length);

} // namespace vx::c
