#include "tools/tc/Time.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace vx::tools::tc {

namespace {

using Tenths = std::chrono::duration<std::int64_t, std::deci>;

constexpr std::string_view kPattern = "0000-00-00T00:00:00.0Z";
constexpr std::uint64_t kGreatestTime = (std::uint64_t{1} << 36) - 1;

bool matchesPattern(std::string_view text) {
    for (std::size_t i = 0; i < kPattern.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (kPattern[i] == '0' ? !isDigit : text[i] != kPattern[i])
            return false;
    }
    return true;
}

int numberAt(std::string_view text, std::size_t place, std::size_t digits) {
    int number = 0;
    for (char digit : text.substr(place, digits))
        number = number * 10 + (digit - '0');
    return number;
}

} // namespace

std::string asText(std::uint64_t tenths) {
    using namespace std::chrono;
    const sys_time<Tenths> time{Tenths{static_cast<std::int64_t>(tenths)}};
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    std::array<char, 64> text{};
    std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%dZ", int(date.year()),
        unsigned(date.month()), unsigned(date.day()), static_cast<int>(clock.hours().count()),
        static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()),
        static_cast<int>(clock.subseconds().count()));
    return text.data();
}

std::optional<std::uint64_t> timeIn(std::string_view given) {
    using namespace std::chrono;
    std::string text(given);
    if (text.size() == kPattern.size() - 2)
        text.insert(text.size() - 1, ".0");
    if (text.size() != kPattern.size() || !matchesPattern(text))
        return {};
    const year_month_day date(year(numberAt(text, 0, 4)),
                              month(static_cast<unsigned>(numberAt(text, 5, 2))),
                              day(static_cast<unsigned>(numberAt(text, 8, 2))));
    const int hour = numberAt(text, 11, 2);
    const int minute = numberAt(text, 14, 2);
    const int second = numberAt(text, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return {};
    const sys_time<Tenths> time = sys_days(date) + hours(hour) + minutes(minute) + seconds(second) +
                                  Tenths(numberAt(text, 20, 1));
    const std::int64_t tenths = time.time_since_epoch().count();
    if (tenths < 0 || static_cast<std::uint64_t>(tenths) > kGreatestTime)
        return {};
    return static_cast<std::uint64_t>(tenths);
}

} // namespace vx::tools::tc
