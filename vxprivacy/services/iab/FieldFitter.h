#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/Doors.h"

namespace vx::services::tcf {

/// Fits single values into fields of a TC string. One that does not fit is logged, and becomes 0 or
/// "AA".
class FieldFitter {
public:
    /// `logger` must outlive it.
    explicit FieldFitter(Logger& logger) : logger_(logger) {}

    std::uint32_t number(std::string_view field, unsigned width, std::int32_t value) const;
    /// Of seconds tenths of a second.
    std::uint64_t time(std::string_view field, std::int64_t seconds) const;
    /// Two letters in either case, in upper case.
    std::string letters(std::string_view field, std::string_view value) const;
    /// The same of a country's code, of ISO 3166-1.
    std::string country(std::string_view field, std::string_view value) const;
    /// Logs that `field` cannot hold `what`.
    void leftOut(std::string_view field, const std::string& what) const;

private:
    Logger& logger_;
};

} // namespace vx::services::tcf
