#include "vxprivacy/iab_center/SecondLayerContentView.h"

#include <utility>

#include "vxprivacy/iab_center/ButtonBar.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

void SecondLayerContentView::createButtons() {
    btnContainer_ = std::make_shared<View>();
    const ButtonBar bar(configuration(), {"secondLayerButton-Save", "saveExitBtn"},
                        {"secondLayerButton-AcceptAll", "acceptAll"},
                        {"secondLayerButton-RefuseAll", "refuseAll"});
    barFormat_ = bar.format();
    if (bar.hasAcceptAll())
        acceptAllBtn_ = addBarButton("generic/acceptAllButton", "acceptAll", *btnContainer_,
                                     [this] { actionAcceptAll(); });
    if (bar.hasRefuseAll())
        refuseAllBtn_ = addBarButton("generic/refuseAllButton", "refuseAll", *btnContainer_,
                                     [this] { actionRefuseAll(); });
    saveExitBtn_ = addBarButton("generic/saveButton", "saveExitBtn", *btnContainer_,
                                [this] { actionSaveExit(); });
    containerView()->addSubview(btnContainer_);
    enter("btnContainer", btnContainer_);
}

std::shared_ptr<Button>
SecondLayerContentView::createNavigationButton(std::string_view textPath, std::string_view name,
                                               std::function<void()> action) {
    auto title = textOfOptionalButton(textPath);
    if (!title)
        return nullptr;
    navigationName_ = name;
    navigationBtn_ = std::make_shared<Button>();
    navigationBtn_->setTitle(std::move(*title));
    navigationBtn_->addTouchUpInside(std::move(action));
    enter(name, navigationBtn_);
    containerView()->addSubview(navigationBtn_);
    return navigationBtn_;
}

void SecondLayerContentView::customiseButtons() {
    for (const auto& button : {acceptAllBtn_, refuseAllBtn_, navigationBtn_, saveExitBtn_})
        if (button)
            customise(*button);
}

void SecondLayerContentView::arrangeViews() {
    attach("V:|[saveExitBtn]|", *btnContainer_);
    if (acceptAllBtn_)
        attach("V:|[acceptAll]|", *btnContainer_);
    if (refuseAllBtn_)
        attach("V:|[refuseAll]|", *btnContainer_);
    attach("H:|[scrollView]|", *containerView());
    attach("V:[btnContainer(saveExitBtn)]", *containerView());
    if (navigationBtn_)
        attach(formatted("H:|-[%@]-|", {navigationName_}), *containerView());
    attach("H:|[btnContainer]|", *containerView());
    attach(barFormat_, *btnContainer_);
    const std::string navigation = navigationBtn_ ? formatted("-[%@]", {navigationName_}) : "";
    attach(formatted("V:|-[scrollView]%@-[btnContainer]-|", {navigation}), *containerView());
    attach("H:|[scrollContainerView(container)]|", *containerView());
    attach("V:|[scrollContainerView]|", *scrollView());
    arrangeVertically();
}

std::shared_ptr<Button> SecondLayerContentView::createLink(std::string_view textPath) const {
    auto button = std::make_shared<Button>();
    button->setTitle(viewController()->getTranslation(textPath).value_or(""));
    button->setTitleColor(kLinkColour);
    button->setFont({"system", 14});
    return button;
}

SecondLayerContentView::ConsentRow
SecondLayerContentView::createConsentRow(std::string_view rowName, std::int32_t number,
                                         std::string_view prefix) {
    ConsentRow made{std::make_shared<View>(), viewController()->createSwitchBtn(number, prefix)};
    enter(rowName, made.row);
    enter(numbered("consentSwitch%d"), made.consentSwitch);
    made.row->addSubview(made.consentSwitch);
    addLabel(LabelType::Text, viewController()->getTranslation("generic/consentDef"),
             numbered("consentL%d"), *made.row);
    attach(numbered("H:|-[consentSwitch%d]-[consentL%d]-|"), *made.row);
    return made;
}

void SecondLayerContentView::actionSaveExit() {
    viewController()->actionSaveExit();
}

void SecondLayerContentView::actionAcceptAll() {
    viewController()->actionAcceptAll();
}

void SecondLayerContentView::actionRefuseAll() {
    viewController()->actionRefuseAll();
}

} // namespace vx
