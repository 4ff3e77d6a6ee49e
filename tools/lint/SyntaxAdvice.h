#pragma once

#include <string_view>

#include "tools/lint/Finding.h"
#include "tools/lint/Findings.h"
#include "tools/lint/Node.h"

namespace vx::tools::lint {

/// What becomes of a document that is refused.
inline constexpr std::string_view kNotInstalled =
    "Devices do not install it and stay with the document they have.";

/// What to say of a text that is no JSON: the usual mistakes by their names, all else by the
/// reader's reason.
struct SyntaxFinding {
    Place place;
    Advice advice;
};

SyntaxFinding explain(std::string_view text, const Fault& fault);

} // namespace vx::tools::lint
