#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::web {

/// What the privacy center does, as the pages of an application's own web views hear of it: the
/// `eventStatus` of the IAB's "CMP API".
enum class TCFEvent {
    /// It is not shown. Pages hear of it where the TC data is another than they know.
    Loaded,
    /// It is shown, first or again, whatever was chosen before.
    CenterShown,
    /// The user's choice was saved, the same one as before or another.
    UserActionComplete
};

/// The script that makes `__tcfapi` in a page of the application's own: to be run by the web view
/// at the start of each document, in the page's own world and in the top frame; it does nothing in
/// other frames, which ask by messages. It needs no network and stores nothing. A page's content
/// security policy does not concern it.
///
/// `inAppTCData` is what `services::inAppTCData` gives, and `event` what the center did last; both
/// are part of the script, so a web view is given another when they change. docs/web-views.md has
/// the whole of it. A text that is no such data tells pages nothing. Any thread.
VXPRIVACY_EXPORT std::string tcfAPIScript(std::string_view inAppTCData,
                                          TCFEvent event = TCFEvent::Loaded);

/// The JavaScript expression that tells a page in which the script has run what is so from now on:
/// for the web view to evaluate at each change. Where the script has not run it does nothing.
/// Any thread.
VXPRIVACY_EXPORT std::string tcfAPIUpdate(std::string_view inAppTCData, TCFEvent event);

} // namespace vx::web
