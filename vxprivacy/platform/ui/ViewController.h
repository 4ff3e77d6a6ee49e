#pragma once

#include "vxprivacy/platform/ui/View.h"

#include <memory>

namespace vx {

/// Fills a view and hears of its life on the display.
///
/// Who presents a controller sets the size of its view, calls `viewDidLoad` once, `viewDidAppear`
/// when the view is shown and `viewWillDisappear` when it is about to go. The views call back into
/// the controller: it must live while a host shows them.
class ViewController {
public:
    virtual ~ViewController();

    /// Never null.
    const std::shared_ptr<View>& view() const { return view_; }

    // As told above; these do nothing.
    virtual void viewDidLoad();
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    /// The platform is short of memory; a controller may drop what it can make again.
    virtual void didReceiveMemoryWarning();

private:
    std::shared_ptr<View> view_ = std::make_shared<View>();
};

} // namespace vx
