#include "vxprivacy/iab_center/VXPopUpContentView.h"

#include "vxprivacy/iab_center/ButtonBar.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

// A kind of item that is listed. The irregular spellings of names are deliberate.
struct VXPopUpContentView::Section {
    std::string_view key; // of the vendor list
    std::string_view container;
    std::string_view titlePath;
    std::string_view titleName;
    std::string_view itemName;
};

namespace {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

// So much of the page must have been seen.
constexpr double kNearlyAll = 0.93;

} // namespace

VXPopUpContentView::VXPopUpContentView(VXIABPrivacyCenterViewController& controller) {
    begin(controller);
    createContainer({}); // no colour of its own, deliberately
    createScrollView();
    scrollView()->setDelegate(this);
    createCategoryList();
    createExplanation();
    createButtons();
    customiseButtons();
    arrangeViews();
}

void VXPopUpContentView::createCategoryList() {
    constexpr Section kSections[] = {
        {"purposes", "purposeContainer", "popup/purposeTitle", "PUPurposeTitle%d",
         "PUPurposeName%d"},
        {"specialPurposes", "specialPurposeContainer", "popup/specialPurposeTitle",
         "PUSpePurposeTitle%d", "PUSpePurposeName%d"},
        {"features", "featureContainer", "popup/featureTitle", "PUfeatureTitle%d",
         "PUfeatureName%d"},
        {"specialFeatures", "specialFeatureContainer", "popup/specialFeatureTitle",
         "PUspeFeatureTitle%d", "PUspeFeatureName%d"},
    };
    for (const Section& section : kSections)
        build(section);
}

void VXPopUpContentView::build(const Section& section) {
    const auto keys = viewController()->keysToDisplay(section.key);
    if (!keys)
        return;
    View& container = *generateContainerForName(section.container);
    const std::string titleName = numbered(section.titleName);
    const auto title =
        addLabel(LabelType::Title, viewController()->getTranslation(section.titlePath), titleName,
                 container);
    title->setHeadingLevel(2);
    linkPartners(*title);
    attach(formatted("H:|-[%@(<=%@)]-|", {titleName, section.container}), container);
    std::string vertical = formatted("V:|-[%@]", {titleName});
    for (const std::string& key : *keys) {
        const std::string name = numbered(section.itemName);
        const auto text =
            viewController()->getIABTranslation(formatted("%@/%@/name", {section.key, key}));
        const auto item = addLabel(LabelType::Text, formatted("- %@", {text}), name, container);
        makeItem(*item, item, title);
        attach(formatted("H:|-(20)-[%@(<=%@)]-|", {name, section.container}), container);
        vertical += formatted("-2-[%@]", {name});
        viewController()->setNumberOfViews(viewController()->numberOfViews() + 1);
    }
    attach(formatted("H:|-[%@]-|", {section.container}), *scrollContainerView());
    attach(vertical + "-|", container);
}

void VXPopUpContentView::linkPartners(Label& label) {
    viewController()->addOurPartnersLinkToLabel(label);
    label.addTapRecogniser(
        [this, &label](std::size_t character) { openVendorView(label, character); });
}

void VXPopUpContentView::createExplanation() {
    const auto title = addLabel(LabelType::Title, viewController()->getTranslation("popup/title"),
                                "title", *scrollContainerView());
    title->setFont({"TrebuchetMS-Bold", 18});
    title->setHeadingLevel(1);
    const auto description =
        addLabel(LabelType::Text, viewController()->getTranslation("popup/content"), "description",
                 *scrollContainerView());
    linkPartners(*description);
    description->setAlignment(Label::Alignment::Justified);
}

void VXPopUpContentView::createButtons() {
    btnContainer_ = std::make_shared<View>();
    const ButtonBar bar(configuration(), {"firstLayerButton-Detail", "displayDetails"},
                        {"firstLayerButton-AcceptAll", "acceptAll"},
                        {"firstLayerButton-RefuseAll", "refuseAll"});
    barFormat_ = bar.format();
    if (bar.hasAcceptAll())
        acceptAllBtn_ = addBarButton("generic/acceptAllButton", "acceptAll", *btnContainer_,
                                     [this] { actionAcceptAll(); });
    if (bar.hasRefuseAll())
        refuseAllBtn_ = addBarButton("generic/refuseAllButton", "refuseAll", *btnContainer_,
                                     [this] { actionRefuseAll(); });
    for (const auto& button : {acceptAllBtn_, refuseAllBtn_})
        if (button)
            button->setEnabled(false);
    displayDetailsBtn_ = addBarButton("generic/detailButton", "displayDetails", *btnContainer_,
                                      [this] { actionDisplayDetails(); });
    containerView()->addSubview(btnContainer_);
    enter("btnContainer", btnContainer_);
}

void VXPopUpContentView::customiseButtons() {
    for (const auto& button : {displayDetailsBtn_, acceptAllBtn_, refuseAllBtn_}) {
        if (!button)
            continue;
        customise(*button);
        if (const Colour* disabled = colour("button_disabledBackground");
            disabled && !button->enabled())
            button->setBackgroundColor(*disabled);
    }
}

void VXPopUpContentView::arrangeViews() {
    attach("V:|[displayDetails]|", *btnContainer_);
    if (refuseAllBtn_)
        attach("V:|[refuseAll]|", *btnContainer_);
    if (acceptAllBtn_)
        attach("V:|[acceptAll]|", *btnContainer_);
    attach("V:[btnContainer(displayDetails)]", *containerView());
    attach("H:|[scrollView]|", *containerView());
    attach("V:|-[scrollView]-[btnContainer]-|", *containerView());
    attach("H:|[btnContainer]|", *containerView());
    attach(barFormat_, *btnContainer_);
    attach("H:|[scrollContainerView(container)]|", *containerView());
    attach("V:|[scrollContainerView]|", *scrollView());
    std::string vertical = "V:|-[title]";
    for (const std::string& name : UIObjects())
        vertical += formatted("-[%@]", {name});
    attach(vertical + "-[description]-|", *scrollContainerView(), kAlignAllCentreX);
    attach("H:|-[description]-|", *scrollContainerView());
    attach("H:|-[title]-|", *scrollContainerView());
}

void VXPopUpContentView::setButtonsState() {
    if (scrollView()->frameHeight() / scrollView()->contentHeight() >= kNearlyAll)
        enableButtons();
}

void VXPopUpContentView::scrollViewDidScroll(ScrollView& scrolled) {
    if (scrolled.contentHeight() == 0) { // not measured yet: a nudge has it measured
        scrolled.setContentOffset({0, 1});
        return;
    }
    const auto height = static_cast<float>(scrolled.frameHeight());
    if ((height + scrolled.contentOffset().y) / scrolled.contentHeight() >= kNearlyAll)
        enableButtons();
}

void VXPopUpContentView::enableButtons() {
    for (const auto& button : {acceptAllBtn_, refuseAllBtn_}) {
        if (!button || button->enabled())
            continue;
        button->setEnabled(true);
        if (const Colour* ground = colour("button_backgroundcolor"))
            button->setBackgroundColor(*ground);
    }
}

void VXPopUpContentView::actionDisplayDetails() {
    viewController()->displayPurposeScreen();
}

void VXPopUpContentView::actionAcceptAll() {
    viewController()->actionAcceptAll();
}

void VXPopUpContentView::actionRefuseAll() {
    viewController()->actionRefuseAll();
}

void VXPopUpContentView::openVendorView(const Label& label, std::size_t character) {
    if (label.link() && label.link()->range.contains(character))
        viewController()->displayVendorList();
}

} // namespace vx
