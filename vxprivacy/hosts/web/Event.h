#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/ui/ScrollView.h"

namespace vx::web {

/// What a page says of its user.
struct Event {
    enum class Kind {
        None, ///< nothing was done; the page asks for what changed
        Tap,
        Set,   ///< a switch shall stand as `on` says
        Scroll ///< the content of a scroll view stands at `offset`, and is measured
    };

    std::string page;         ///< the page's id
    std::string run;          ///< which of the runs of the page's script says it; empty: not said
    std::uint64_t number = 0; ///< higher than that of the page's events before; 0: not said
    Kind kind = Kind::None;
    std::string element;
    std::optional<std::size_t> character; ///< which of a label's was tapped
    bool on = false;
    ScrollView::Offset offset;
    // Points; 0: not said.
    double frameHeight = 0;
    double contentHeight = 0;
};

/// The event that `text` is; what is missing or makes no sense is absent.
Event eventIn(std::string_view text);

} // namespace vx::web
