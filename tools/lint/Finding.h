#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vx::tools::lint {

enum class Severity {
    Warning, ///< something in the document does nothing, or is rarely meant
    Error,   ///< users see or get something else than the document seems to mean
};

/// What is wrong, what a user sees because of it, and how to mend it: sentences in English.
struct Advice {
    std::string problem;
    std::string effect;
    std::string remedy;
};

/// One thing to mend in a privacy configuration.
struct Finding {
    Severity severity;
    std::string path;   ///< JSON pointer; of a missing member, where it should be
    std::size_t line;   ///< from 1
    std::size_t column; ///< from 1, in code points
    Advice advice;
};

/// A document that is all wrong has more; they are not worth gathering.
inline constexpr std::size_t kMostFindings = 1000;

} // namespace vx::tools::lint
