// The IAB privacy center's screens: which is shown, how they follow each other, and the end.

#include <utility>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXPopUpContentView.h"
#include "vxprivacy/iab_center/VXPurposeContentView.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

void VXIABPrivacyCenterViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    savedConsent_ = retrieveSavedConsent();
    loadModel();
    createInterface();
    showFirstScreen();
    VXMobilePrivacy::sharedInstance().viewConsent();
    setHidesBackButton(true);
    if (navigationController())
        navigationController()->setToolbarHidden(true);
}

void VXIABPrivacyCenterViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    popupContentView_->setButtonsState();
}

void VXIABPrivacyCenterViewController::viewWillDisappear(bool animated) {
    VXCMPStorage::setDisclosedVendors(disclosedVendors(), JSONDictionary_);
    savePrivacy();
    ViewController::viewWillDisappear(animated);
}

void VXIABPrivacyCenterViewController::createInterface() {
    viewsDictionary_.set("view", view());
    const auto width = static_cast<float>(view()->width());
    // The names speak of a height; these are shares of the width, deliberately.
    metrics_.set("oneThirdH", 0.3 * width);
    metrics_.set("aboutHalfH", 0.4 * width);
    purposeContentView_ = std::make_shared<VXPurposeContentView>(*this);
    vendorContentView_ = std::make_shared<VXVendorContentView>(*this);
    popupContentView_ = std::make_shared<VXPopUpContentView>(*this);
}

void VXIABPrivacyCenterViewController::showFirstScreen() {
    if (firstScreen_ == 0)
        displayPopUpScreen();
    else if (firstScreen_ == 1)
        displayPurposeScreen();
    else if (firstScreen_ == 2)
        displayVendorList();
}

void VXIABPrivacyCenterViewController::displayPopUpScreen() {
    show(popupContentView_);
    popupContentView_->arrangeViews();
    reAttachConstraints();
}

void VXIABPrivacyCenterViewController::displayPurposeScreen() {
    show(purposeContentView_);
    reAttachConstraints();
}

void VXIABPrivacyCenterViewController::displayVendorList() {
    vendorContentView_ = std::make_shared<VXVendorContentView>(*this);
    show(vendorContentView_);
    reAttachConstraints();
}

void VXIABPrivacyCenterViewController::displayRelatedVendorsList(std::int32_t number) {
    setFilter(number);
    displayVendorList();
    filterCategoryType_ = 0;
    filterCategoryID_ = 0;
}

void VXIABPrivacyCenterViewController::displayVendorDetail() {
    const auto& detail = vendorContentView_->currentDetail();
    if (!detail || !detail->containerView())
        return;
    show(detail);
    reAttachConstraints();
}

void VXIABPrivacyCenterViewController::displayPurposeDetail() {
    const auto& detail = purposeContentView_->currentDetail();
    if (!detail || !detail->containerView())
        return;
    show(detail);
    reAttachConstraints();
}

void VXIABPrivacyCenterViewController::show(const std::shared_ptr<ContentView>& screen) {
    screen->scrollView()->setContentOffset({});
    if (currentScreen_)
        currentScreen_->containerView()->removeFromSuperview();
    currentScreen_ = screen;
    view()->addSubview(screen->containerView());
    viewsDictionary_.set("contentView", screen->containerView());
}

void VXIABPrivacyCenterViewController::reAttachConstraints() {
    attachConstraint("V:|[contentView(view)]|", *view());
    attachConstraint("H:|[contentView(view)]|", *view());
}

void VXIABPrivacyCenterViewController::attachConstraint(std::string_view format, View& view) const {
    view.addConstraints(constraintsWithVisualFormat(format, 0, metrics_, viewsDictionary_));
}

void VXIABPrivacyCenterViewController::attachFormattedConstraint(std::string_view format,
                                                                 View& view) const {
    attachConstraint(formatted(format, {numberOfViews_}), view);
}

std::shared_ptr<View> VXIABPrivacyCenterViewController::currentContentView() const {
    return currentScreen_ ? currentScreen_->containerView() : nullptr;
}

bool VXIABPrivacyCenterViewController::isModal() const {
    if (presentingViewController())
        return true;
    const NavigationController* navigation = navigationController();
    const ViewController* presenter = navigation ? navigation->presentingViewController() : nullptr;
    // Without a navigation controller nothing equals nothing, and the answer is yes, deliberately.
    if ((presenter ? presenter->presentedViewController() : nullptr) == navigation)
        return true;
    const TabBarController* tabBar = tabBarController();
    return tabBar && dynamic_cast<const TabBarController*>(tabBar->presentingViewController());
}

// The last thing of an action: who hears of it may end the center.
void VXIABPrivacyCenterViewController::close() {
    if (isModal())
        dismissViewController(true);
    else
        navigationController()->popViewController(true);
}

} // namespace vx
