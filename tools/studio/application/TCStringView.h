#pragma once

#include <string>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// The stored TC string as the page shows it, decoded, beside the one that it took the place of.
class TCStringView {
public:
    /// `before` is that one, as far as an earlier process knew it; empty: none.
    explicit TCStringView(const std::string& before);

    /// How things stand when the store holds these entries (pairs of key and value): null where it
    /// holds no string, else "text" with "model", its fields, and "findings", which rules in
    /// force it breaks by the vendor list at hand, or with "problem", why it cannot be decoded; and
    /// "before", the string before it, without findings, or null. Decodes a string once.
    const Json& state(const Json& entries);

private:
    Json now_;
    Json before_;
    Json state_;
};

} // namespace vx::tools::studio
