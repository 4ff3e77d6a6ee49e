#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/PageSettings.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// Shows a screen in a browser or web view and brings the taps back. It has no transport: an
/// application carries the page, and then event texts in and patches out.
///
///     WebSurface surface(controller.view());
///     std::string page = surface.render();          // served as text/html
///     std::string css = surface.layoutCSS();        // beside surfaceCSS() and surfaceJS()
///     std::string patch = surface.dispatch(event);  // for each event that the page sends
///
/// The page runs under `contentSecurityPolicy`, which it also states itself, and takes no taps
/// before `surfaceJS` runs, so that none is lost. Thread: that of the views. The surface keeps the
/// views alive, not their controller.
class WebSurface {
public:
    explicit WebSurface(std::shared_ptr<View> root, PageSettings settings = {});
    ~WebSurface();
    WebSurface(const WebSurface&) = delete;
    WebSurface& operator=(const WebSurface&) = delete;

    /// The whole page, of the screen as it is now.
    std::string render();
    /// The generated style sheet of the last page; to be fetched after it.
    std::string layoutCSS() const;

    /// Does what the user did: {"tap":"v12"} or {"scroll":"v3","x":0,"y":120}. Gives the patch
    /// that brings the page up to date, "{}" where nothing changed. A text that is no event, or an
    /// element that is gone, changes nothing.
    std::string dispatch(std::string_view event);

    /// The next patch makes the page open `address` in a new one; ignored unless `mayOpen`. For an
    /// `Application` whose browser is the page's.
    void open(std::string_view address);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// The policy that a page needs: everything from its own origin, nothing inline.
std::string_view contentSecurityPolicy();

} // namespace vx::web
