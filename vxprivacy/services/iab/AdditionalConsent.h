#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vx::services::tcf {

/// Google's Additional Consent, version 2: "2~1.35~dv.9.21". The format is public but not the
/// IAB's: support.google.com/admanager, answer 9681920. The numbers are of providers in Google's
/// list, not of the IAB's vendors; each stands once, in ascending order, among the disclosed only
/// where it is not accepted. Those below 1 are left out.
std::string additionalConsentOf(std::span<const std::int32_t> accepted,
                                std::span<const std::int32_t> disclosed);

} // namespace vx::services::tcf
