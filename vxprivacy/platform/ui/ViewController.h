#pragma once

#include <memory>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

class NavigationController;
class VXPRIVACY_EXPORT TabBarController;
class ViewController;

/// Hears that a controller took itself away: the application's.
class VXPRIVACY_EXPORT ViewControllerDelegate {
public:
    virtual ~ViewControllerDelegate();

    /// `controller` was presented and has dismissed itself, or was pushed and popped itself. It is
    /// nowhere any more. What whoever presents a controller does when it goes is to be done now or
    /// later; it may end here.
    virtual void viewControllerDismissed(ViewController& controller, bool animated) = 0;
    virtual void viewControllerPopped(ViewController& controller, bool animated) = 0;
};

/// Fills a view and hears when it is shown and when it goes. User-interface thread.
///
/// Whoever presents a controller makes these calls:
///
///     presenter.presentViewController(controller);   // or navigation.pushViewController
///     controller.setDelegate(this);           // hears when the controller wants to go
///     controller.view()->setSize(375, 667);   // points; layouts are computed from it, once
///     controller.viewDidLoad();               // once: fills the view
///     controller.viewDidAppear(true);         // each time it is shown
///     controller.viewWillDisappear(true);     // each time it is about to go: a center saves here
///
/// A display that turns or grows leaves the size as it was: what depends on it is a share of it.
///
/// The views call back into the controller while it lives; from then on they call nobody, so that a
/// host may still show them. What stands around a controller is plain state, kept by either side
/// and undone when one of them ends; it shows nothing by itself.
class VXPRIVACY_EXPORT ViewController {
public:
    ViewController() = default;
    virtual ~ViewController();
    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;

    /// The root of the screen; never null, and empty before `viewDidLoad`.
    const std::shared_ptr<View>& view() const { return view_; }

    // As told above; as they stand they do nothing. `animated` says whether the display moves
    // softly; no controller here minds it.
    virtual void viewDidLoad();
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    /// The platform is short of memory; a controller may drop what it can make again.
    virtual void didReceiveMemoryWarning();

    // What the controller wishes for while it is shown.

    /// No unless a controller says otherwise.
    virtual bool prefersStatusBarHidden() const;
    /// Whether the navigation bar's way back is not to be seen; it is, unless told otherwise.
    bool hidesBackButton() const { return hidesBackButton_; }
    void setHidesBackButton(bool hides) { hidesBackButton_ = hides; }

    // Where it stands.

    /// Puts `other` over this one. It must not be presented already.
    void presentViewController(ViewController& other);
    /// The controller over which this one was put, or else the navigation controller that it is in;
    /// null when there is none.
    ViewController* presentingViewController() const;
    /// The controller that was put over this one; null when there is none.
    ViewController* presentedViewController() const { return presented_; }
    /// Takes what was put there off the presenting controller, which is this one or the navigation
    /// controller that it is in, and tells the delegate. Nothing when none presents it.
    void dismissViewController(bool animated);
    /// Null while it is in none.
    NavigationController* navigationController() const { return navigation_; }
    /// To be told by whoever puts the controller into one, which must outlive it; null: none.
    TabBarController* tabBarController() const { return tabBar_; }
    void setTabBarController(TabBarController* controller) { tabBar_ = controller; }

    /// Must outlive the controller; null: none.
    void setDelegate(ViewControllerDelegate* delegate) { delegate_ = delegate; }

private:
    friend class NavigationController;

    std::shared_ptr<View> view_ = std::make_shared<View>();
    ViewController* presenting_ = nullptr;
    ViewController* presented_ = nullptr;
    NavigationController* navigation_ = nullptr;
    TabBarController* tabBar_ = nullptr;
    ViewControllerDelegate* delegate_ = nullptr;
    bool hidesBackButton_ = false;
};

/// A stack of controllers of which the last is shown.
///
///     NavigationController navigation;
///     navigation.pushViewController(home);
///     navigation.pushViewController(center);
///     navigation.popViewController(true);   // center is gone, its delegate heard of it
class VXPRIVACY_EXPORT NavigationController : public ViewController {
public:
    ~NavigationController() override;

    /// From the first to the one shown. None of them is owned.
    const std::vector<ViewController*>& viewControllers() const { return stack_; }
    /// It must be in no navigation controller, and takes itself off when it ends.
    void pushViewController(ViewController& controller);
    /// Takes the last one off and tells its delegate. The first one stays.
    void popViewController(bool animated);

    /// Whether the bar below the controllers is not to be seen. It is not unless told otherwise.
    bool toolbarHidden() const { return toolbarHidden_; }
    void setToolbarHidden(bool hidden) { toolbarHidden_ = hidden; }

private:
    friend class ViewController;

    std::vector<ViewController*> stack_;
    bool toolbarHidden_ = true;
};

/// Controllers side by side, of which a bar chooses one.
class VXPRIVACY_EXPORT TabBarController : public ViewController {};

} // namespace vx
