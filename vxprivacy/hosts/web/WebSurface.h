#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/PageSettings.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// Shows a screen in a browser or web view and brings the taps back. It has no transport: an
/// application carries the page, and then event texts in and patches out.
///
///     WebSurface surface(controller.view());
///     std::string page = surface.render();          // served as text/html
///     std::string css = surface.layoutCSS();        // beside the `staticFiles`
///     std::string patch = surface.dispatch(event);  // for each event that the page sends
///
/// The page runs under `contentSecurityPolicy`, which it also states itself, and takes no taps
/// before its script runs, so that none is lost. When the subviews of the root are replaced, that
/// is another screen on the same page. Thread: that of the views. The surface keeps the views
/// alive, not their controller.
class VXPRIVACY_EXPORT WebSurface {
public:
    /// Shows the tree below `root`, whose changes it notes from now on.
    explicit WebSurface(std::shared_ptr<View> root, PageSettings settings = {});
    ~WebSurface();
    WebSurface(const WebSurface&) = delete;
    WebSurface& operator=(const WebSurface&) = delete;

    /// The whole page, of the screen as it is now. Each call makes a page of its own; several may
    /// show the surface at once.
    std::string render();
    /// The generated style sheet of the last page; to be fetched after it.
    std::string layoutCSS() const;

    /// Does what the user of a page did and gives the patch that brings that page up to date, "{}"
    /// where nothing changed. docs/web-host.md lists the events. One that names no page of this
    /// surface is answered {"gone":true}, which the page tells its user; an element that is gone
    /// changes nothing. The surface may end in it.
    std::string dispatch(std::string_view event);

    /// Another number whenever something changed that the pages are to show. The page that sent the
    /// event has it by the patch; others ask for it with an event in which nothing is done.
    std::uint64_t revision() const;

    /// `action` is called once, in `dispatch`, when a page has been laid out for the first time and
    /// its scroll views have their measures: the time for a controller's `viewDidAppear`. It may be
    /// the end of the surface.
    void whenLaidOut(std::function<void()> action);

    /// `listener` hears in `dispatch` of each view that the user taps or switches, before the view
    /// does anything about it. For an application that keeps a record; it must change nothing.
    void whenTouched(std::function<void(View& view)> listener);

    /// The next patch makes the page open `address` in a new one; ignored unless `mayOpen`. For an
    /// `Application` whose browser is the page's.
    void open(std::string_view address);

private:
    struct Parts;
    std::shared_ptr<Parts> parts_;
};

/// The policy that a page needs, for its header: everything from its own origin, nothing inline,
/// and no frames but those of its own origin.
VXPRIVACY_EXPORT std::string_view contentSecurityPolicy();

} // namespace vx::web
