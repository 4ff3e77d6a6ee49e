#pragma once

#include <memory>

#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// Fills a view and hears when it is shown and when it goes. User-interface thread.
///
/// Whoever presents a controller makes these calls:
///
///     controller.view()->setSize(375, 667);   // points; layouts are computed from it
///     controller.viewDidLoad();               // once: fills the view
///     controller.viewDidAppear(true);         // each time it is shown
///     controller.viewWillDisappear(true);     // each time it is about to go: a center saves here
///
/// The views call back into the controller while it lives; from then on they call nobody, so that a
/// host may still show them.
class ViewController {
public:
    virtual ~ViewController();

    /// The root of the screen; never null, and empty before `viewDidLoad`.
    const std::shared_ptr<View>& view() const { return view_; }

    // As told above; as they stand they do nothing. `animated` says whether the display moves
    // softly; no controller here minds it.
    virtual void viewDidLoad();
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    /// The platform is short of memory; a controller may drop what it can make again.
    virtual void didReceiveMemoryWarning();

private:
    std::shared_ptr<View> view_ = std::make_shared<View>();
};

} // namespace vx
