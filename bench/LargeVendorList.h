#pragma once

#include <string>

namespace vx::bench {

/// A vendor list as large as the one that is published.
struct LargeVendorList {
    std::string text;
    /// Which one it is, for the reader of a table.
    std::string name;
};

/// The published list, gvl/vendor-list.json in the folder that the environment variable
/// VXPRIVACY_DATA names; where there is none, a generated one of its size.
const LargeVendorList& largeVendorList();

/// The published list of format 3, gvl3/vendor-list.json in that folder; empty where there is none.
std::string listOfFormat3();

/// The large list with each vendor in it ten times, under IDs and names of their own.
std::string tenfoldVendorList();

} // namespace vx::bench
