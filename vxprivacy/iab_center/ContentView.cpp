#include "vxprivacy/iab_center/ContentView.h"

#include <utility>

#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

// The views call the screen.
ContentView::~ContentView() {
    if (containerView_)
        containerView_->forgetActions();
}

void ContentView::enter(std::string_view name, std::shared_ptr<View> view) {
    viewsDictionary_.set(name, std::move(view));
}

void ContentView::attach(std::string_view format, View& view, int options) const {
    view.addConstraints(
        constraintsWithVisualFormat(format, options, viewController_->metrics(), viewsDictionary_));
}

std::string ContentView::numbered(std::string_view format) const {
    const std::int32_t number = viewController_->numberOfViews();
    return formatted(format, {number, number});
}

std::shared_ptr<Label> ContentView::addLabel(VXIABPrivacyCenterViewController::LabelType type,
                                             const std::optional<std::string>& text,
                                             std::string_view name, View& parent) {
    auto label = viewController_->createLabel(type, text);
    enter(name, label);
    parent.addSubview(label);
    return label;
}

void ContentView::makeItem(View& view, const std::shared_ptr<Label>& title,
                           const std::shared_ptr<Label>& section) {
    view.setRow(std::make_shared<Row>(Row{title, section}));
}

const Colour* ContentView::colour(std::string_view name) const {
    return configuration().customisation().find(name);
}

void ContentView::createContainer(const std::optional<Colour>& ground) {
    containerView_ = std::make_shared<View>();
    if (const Colour* configured = colour("content_backgroundcolor"))
        containerView_->setBackgroundColor(*configured);
    else if (ground)
        containerView_->setBackgroundColor(*ground);
    enter("container", containerView_);
}

void ContentView::createScrollView() {
    scrollContainerView_ = std::make_shared<View>();
    scrollView_ = std::make_shared<ScrollView>();
    scrollView_->setBackgroundColor(kWhite);
    if (const Colour* ground = colour("content_backgroundcolor"))
        for (View* each : {scrollContainerView_.get(), static_cast<View*>(scrollView_.get())})
            each->setBackgroundColor(*ground);
    enter("scrollContainerView", scrollContainerView_);
    enter("scrollView", scrollView_);
    scrollView_->addSubview(scrollContainerView_);
    containerView_->addSubview(scrollView_);
}

std::shared_ptr<View> ContentView::generateContainerForName(std::string_view name) {
    auto box = viewController_->createStackView(0);
    if (const Colour* ground = colour("content_backgroundcolor"))
        box->setBackgroundColor(*ground);
    scrollContainerView_->addSubview(box);
    enter(name, box);
    stack(std::string(name));
    return box;
}

std::shared_ptr<Label> ContentView::stackLabel(VXIABPrivacyCenterViewController::LabelType type,
                                               const std::optional<std::string>& text,
                                               const std::string& name) {
    auto label = addLabel(type, text, name, *scrollContainerView_);
    stack(name);
    attach(formatted("H:|-[%@(<=scrollContainerView)]-|", {name}), *scrollContainerView_);
    return label;
}

std::shared_ptr<Label> ContentView::stackTitle(std::string_view textPath, const std::string& name) {
    auto title = stackLabel(VXIABPrivacyCenterViewController::LabelType::Title,
                            viewController_->getTranslation(textPath), name);
    title->setHeadingLevel(1);
    return title;
}

std::shared_ptr<Button> ContentView::addBarButton(std::string_view textPath, std::string_view name,
                                                  View& bar, std::function<void()> action) {
    auto button = std::make_shared<Button>();
    button->setTitle(viewController()->getTranslation(textPath).value_or(""));
    button->addTouchUpInside(std::move(action));
    bar.addSubview(button);
    enter(name, button);
    return button;
}

void ContentView::customise(Button& button) const {
    const Colour* configured = colour("button_fontcolor");
    button.setTitleColor(configured ? *configured : kLinkColour);
    if (const Colour* ground = colour("button_backgroundcolor"))
        button.setBackgroundColor(*ground);
    button.setFont({"system", 13});
}

void ContentView::arrangeVertically() const {
    std::string format = "V:|";
    format.reserve(UIObjects_.size() * 20); // a name and what stands around it
    for (const std::string& name : UIObjects_)
        format.append("-[").append(name).append("]");
    attach(format + "-10-|", *scrollContainerView_);
}

std::optional<std::string> ContentView::textOfOptionalButton(std::string_view path) const {
    auto text = viewController_->getTranslation(path);
    if (!text)
        VXLogger::sharedInstance().logMessage(
            formatted("No text for \"%@\": the screen goes without that button", {path}),
            kLogProblem);
    return text;
}

} // namespace vx
