#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "tools/lint/Finding.h"

namespace vx::tools::lint {

/// Bytes; the services install no larger document.
inline constexpr std::size_t kLargestDocument = 8 << 20;

/// What is to be mended in the privacy configuration `text`, in the order of the text; empty when
/// all is well. A text that is no JSON or too large gives one finding. Any text is allowed; the
/// time grows with its length. A vendor list is checked as `lintVendorList` does. Any thread.
std::vector<Finding> lint(std::string_view text);

/// The same for a list of the IAB's vendors: purposes and features that have no name, which users
/// would read "- (null)" for.
std::vector<Finding> lintVendorList(std::string_view text);
/// The same for a translation of `vendorList`, whose IDs must all have a name in it.
std::vector<Finding> lintTranslation(std::string_view text, std::string_view vendorList);

} // namespace vx::tools::lint
