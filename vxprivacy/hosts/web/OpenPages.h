#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// A page in a browser, as far as the surface knows what it shows.
struct OpenPage {
    std::string id;       ///< of this page alone, also among those of other surfaces and processes
    std::string run = {}; ///< of its script, as its first event said; empty before that
    /// The number of its last event, and the answer, in case that is lost on its way; 0 and empty
    /// before the first.
    std::uint64_t number = 0;
    std::string answer = {};
    /// What changed on the screen and it was not told.
    std::vector<ViewChange> pending = {};
    /// How many rules of the generated style sheet it has.
    std::size_t rules = 0;
};

/// The pages that show one surface, in several tabs for instance. One that nobody heard of for long
/// is forgotten.
class OpenPages {
public:
    OpenPages();

    OpenPage& add();
    /// Null for a page that is forgotten or was never one of these, and for one that a browser
    /// shows again from its cache: its script runs anew, and what it shows is out of date.
    OpenPage* find(std::string_view id, std::string_view run);
    /// The screen changed; no page knows.
    void note(const std::vector<ViewChange>& changes);

private:
    std::string name_;
    std::uint64_t made_ = 0;
    std::list<OpenPage> pages_; // the one heard of last is the last
};

} // namespace vx::web
