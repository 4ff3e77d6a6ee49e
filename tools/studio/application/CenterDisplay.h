#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/studio/application/SessionSteps.h"
#include "tools/studio/application/ShownCenter.h"
#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Protocol.h"
#include "vxprivacy/hosts/web/Event.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/platform/ui/Application.h"
#include "vxprivacy/platform/ui/Controls.h"

namespace vx::tools::studio {

/// The application's display as far as the privacy center takes it: a page that the studio shows.
/// Addresses open in the user's browser, through that page. Reports what the user does there.
class CenterDisplay : public vx::Application, private ViewControllerDelegate {
public:
    /// Tells `steps`, which must outlive it, what is done to the center.
    explicit CenterDisplay(SessionSteps& steps);

    bool shows() const { return surface_ != nullptr; }
    /// Shows a new center, of the configuration as it is now. One that was shown must be dismissed
    /// before.
    void present(Mode mode, const Presentation& presentation);
    /// The same as a step of a session that is played, which waits for no page to be laid out.
    void presentUnseen(Mode mode, const Presentation& presentation);

    // The rest needs a center that is shown.

    /// Takes the center off the display, which saves the choices. One that closes itself goes in
    /// the same way, at the end of the event that made it.
    void dismiss();
    std::string page() { return surface_->render(); }
    std::string layoutCSS() const { return surface_->layoutCSS(); }
    /// The page's patch for an event of the user's.
    std::string dispatch(std::string_view event);

    // Steps of a session that is played; false when the screen shown now has no such view.

    /// The view of this layout name is tapped, at this character where one is said.
    bool tap(const std::string& name, std::optional<std::size_t> character);
    /// The popup's content stands at `y`; frame and content are as high as said.
    bool scroll(double y, double frameHeight, double contentHeight);

    /// Null while no center is shown; else "number", which is another for each center, "revision",
    /// which is another when its pages have something new to show, "saveButton", what leaving it is
    /// called, or null, and "closesItself", whether it has buttons of its own for that.
    Json state() const;

    void openURL(std::string_view address) override;

private:
    void viewControllerDismissed(ViewController& controller, bool animated) override;
    void viewControllerPopped(ViewController& controller, bool animated) override;
    void show(Mode mode, const Presentation& presentation);
    void leave();
    void endEvent();
    bool isOldNews(const web::Event& event) const;
    void touched(View& view);
    void tellTouch(View& view);
    void tellScrolling();
    void reportSwitching();

    SessionSteps& steps_;
    // The application's own screens, over which a center is put or onto which it is pushed.
    ViewController application_;
    NavigationController navigation_;
    std::unique_ptr<ShownCenter> center_;
    std::unique_ptr<web::WebSurface> surface_;
    // By the event under way.
    web::Event event_;
    bool closed_ = false; // itself
    bool isPlayed_ = false;
    bool tapped_ = false;
    std::vector<std::string> opened_;
    std::shared_ptr<Switch> switched_;
    ShownCenter::Choices before_; // that was switched
    std::uint64_t number_ = 0;
    // How far the popup's reader has come, and of how much.
    struct Reading {
        double y = 0;
        double frameHeight = 0;
        double contentHeight = 0;
        bool operator==(const Reading&) const = default;
    } reading_;
};

} // namespace vx::tools::studio
