#include "vxprivacy/iab_center/DetailContentView.h"

#include <utility>

namespace vx {

void DetailContentView::displayWithController(VXIABPrivacyCenterViewController& controller) {
    if (viewController())
        return;
    begin(controller);
    createContainer(kWhite);
    createScrollView();
    displayInformation();
    addBackButton();
    customiseButtons();
    arrangeViews();
    controller.setNumberOfViews(controller.numberOfViews() + 1);
}

void DetailContentView::addBackButton() {
    auto title = textOfOptionalButton("generic/backButton");
    if (!title)
        return;
    backBtn_ = std::make_shared<Button>();
    backBtn_->setTitle(std::move(*title));
    backBtn_->setTitleColor(kLinkColour);
    backBtn_->setLeadsBack(true);
    // The way back may replace the list that holds this screen, which must live through it.
    backBtn_->addTouchUpInside([kept = weak_from_this()] {
        if (const auto self = kept.lock())
            self->backSelector();
    });
    enter("backBtn", backBtn_);
    containerView()->addSubview(backBtn_);
}

void DetailContentView::customiseButtons() {
    if (!backBtn_)
        return;
    if (const Colour* title = colour("button_fontcolor"))
        backBtn_->setTitleColor(*title);
    if (const Colour* ground = colour("button_backgroundcolor"))
        backBtn_->setBackgroundColor(*ground);
}

void DetailContentView::arrangeViews() {
    attach("H:|[scrollView]|", *containerView());
    attach(backBtn_ ? "V:|-[scrollView]-[backBtn]-|" : "V:|-[scrollView]-|", *containerView());
    attach("H:|[scrollContainerView(container)]|", *containerView());
    attach("V:|[scrollContainerView]|", *scrollView());
    arrangeVertically();
    if (backBtn_)
        attach("H:|[backBtn]|", *containerView());
}

} // namespace vx
