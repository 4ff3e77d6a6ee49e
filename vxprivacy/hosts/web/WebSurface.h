#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/HostTexts.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// What the page of a surface says and links beside the screen. Texts are UTF-8.
struct PageSettings {
    /// Name of the page; empty: `HostTexts::title`.
    std::string title = {};
    /// Whose page it is, the application's name for instance; empty: not told.
    std::string owner = {};
    /// BCP 47; also decides whether the page runs from right to left. Empty: the code that the
    /// engine was given, or "en".
    std::string language = {};
    /// What the host itself says; absent: the built-in texts of the language.
    std::optional<HostTexts> texts = {};
    /// Where the page finds `surfaceCSS`, `WebSurface::layoutCSS` and `surfaceJS`.
    std::string surfaceCSS = "surface.css";
    std::string layoutCSS = "layout.css";
    std::string surfaceJS = "surface.js";
    /// Where the page posts its events, unless it has a message channel of the application's.
    std::string events = "event";
};

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
