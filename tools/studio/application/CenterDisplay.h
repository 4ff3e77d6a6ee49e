#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/studio/shared/Json.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx::tools::studio {

/// The application's display as far as the privacy center takes it: a page that the studio shows.
/// Addresses open in the user's browser, through that page. Reports what the user does there.
class CenterDisplay : public vx::Application {
public:
    bool shows() const { return surface_ != nullptr; }
    /// Shows a new center, of the configuration as it is now, on a display `width` points wide.
    /// One that was shown must be dismissed before.
    void present(double width);

    // The rest needs a center that is shown.

    /// Takes the center off the display, which saves the choices.
    void dismiss();
    std::string page() { return surface_->render(); }
    std::string layoutCSS() const { return surface_->layoutCSS(); }
    /// The page's patch for an event of the user's.
    std::string dispatch(std::string_view event);

    /// Null while no center is shown; else "number", which is another for each center, "revision",
    /// which is another when its pages have something new to show, and "saveButton", what leaving
    /// it is called, or null.
    Json state() const;

    void openURL(std::string_view address) override;

private:
    void reportTaps();
    void reportSwitching(Switch& control);
    Json choices() const;

    std::unique_ptr<VXPrivacyCenterViewController> center_;
    std::unique_ptr<web::WebSurface> surface_;
    std::vector<std::string> opened_; // by the event under way
    std::uint64_t number_ = 0;
};

} // namespace vx::tools::studio
