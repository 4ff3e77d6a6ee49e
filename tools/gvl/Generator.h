#pragma once

#include <cstdint>

#include <nlohmann/json.hpp>

namespace vx::tools::gvl {

/// What 16 bits hold.
inline constexpr std::uint32_t kMostVendors = 65535;

/// How a vendor list is written, as its "gvlSpecificationVersion" says.
enum class Format { Two = 2, Three = 3 };

/// A vendor list with so many invented vendors, at most `kMostVendors`; all else is the sample's of
/// that format. About a sixth of them is deleted, and where there is room, IDs are left out. The
/// same for the same seed, on every machine.
nlohmann::ordered_json generate(std::uint32_t vendors, std::uint32_t seed, Format format);

} // namespace vx::tools::gvl
