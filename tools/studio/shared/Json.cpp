#include "tools/studio/shared/Json.h"

#include <exception>
#include <stdexcept>

namespace vx::tools::studio {

namespace {

constexpr int kDeepest = 200;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // which the library would skip

bool refuseDepth(int depth, Json::parse_event_t, Json&) {
    if (depth > kDeepest)
        throw std::length_error("the document is nested too deeply");
    return true;
}

// "[json.exception.parse_error.101] parse error at line 3, column 5: ..." without the bracket.
std::string withoutCode(const std::string& message) {
    const std::size_t end = message.find("] ");
    return end == std::string::npos ? message : message.substr(end + 2);
}

} // namespace

std::string dumped(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Result<Json> parsed(std::string_view text) {
    if (text.starts_with(kByteOrderMark))
        return Problem{"line 1, column 1: the text begins with a byte order mark, with which no "
                       "application takes it; save it in UTF-8 without one"};
    try {
        return Json::parse(text, refuseDepth);
    } catch (const std::exception& error) {
        return Problem{withoutCode(error.what())};
    }
}

} // namespace vx::tools::studio
