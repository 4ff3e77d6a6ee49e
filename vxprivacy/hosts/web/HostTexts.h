#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::web {

/// What the host itself says to the user, beside the texts of the screen. UTF-8. "%1$@" and "%2$@"
/// stand for numbers or for a text, as told.
struct VXPRIVACY_EXPORT HostTexts {
    /// Name of the page, where the settings give none.
    std::string title;
    /// After the title of a button that leads out of the page, for a screen reader.
    std::string leaves;
    /// How many of a parent's children are on: "%1$@" of "%2$@".
    std::string countOn;
    /// Why a button is not enabled yet, and what is said when it is.
    std::string notYet;
    std::string enabledNow;
    /// An event did not arrive; the button that sends it again.
    std::string connectionLost;
    std::string retry;
    /// The page belongs to a screen that was replaced; the button that shows the one there is.
    std::string outOfDate;
    std::string showCurrent;
    /// The page's script does not run.
    std::string noScript;
    /// Another screen, whose heading is "%1$@", was shown in this one's place.
    std::string newScreen;
    /// Label of the field that searches a list; how many rows match, "%1$@" of "%2$@"; none does.
    std::string search;
    std::string matches;
    std::string noMatch;
    /// While rows are hidden: the answers concern those too.
    std::string answersConcernAll;
};

/// The built-in texts of a language, a BCP 47 tag of which the first part counts: those of the
/// vendor list and its translations. English for every other one. Any thread.
VXPRIVACY_EXPORT const HostTexts& hostTexts(std::string_view language);

} // namespace vx::web
