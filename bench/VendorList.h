#pragma once

#include <string>

namespace vx::bench {

struct VendorList {
    std::string text;
    /// Which one it is, for the reader of a table.
    std::string name;
};

/// The published list where it lies beside the project, else a generated one of its size.
const VendorList& vendorList();

} // namespace vx::bench
