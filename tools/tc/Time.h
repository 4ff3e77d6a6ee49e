#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx::tools::tc {

/// Tenths of a second since 1970, as "2026-01-31T09:30:00.5Z"; fewer than 2^36.
std::string asText(std::uint64_t tenths);
/// The same back; the tenths, with their point, may be left out. Nothing when it is no such time.
std::optional<std::uint64_t> timeIn(std::string_view text);

} // namespace vx::tools::tc
