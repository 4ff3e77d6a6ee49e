#pragma once

#include <cstdint>

#include <nlohmann/json.hpp>

namespace vx::tools::gvl {

/// What 16 bits hold.
inline constexpr std::uint32_t kMostVendors = 65535;

/// A vendor list of version 2 with so many invented vendors, at most `kMostVendors`; all else is
/// the sample's. About a sixth of them is deleted, and where there is room, IDs are left out. The
/// same for the same seed, on every machine.
nlohmann::ordered_json generate(std::uint32_t vendors, std::uint32_t seed);

} // namespace vx::tools::gvl
