#include "vxprivacy/iab_center/VXPurposeContentView.h"

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/iab_center/ConsentNumbers.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

// A kind of item that is listed.
struct VXPurposeContentView::Section {
    enum class Choice { None, Purpose, SpecialFeature };

    std::string_view key; // of the vendor list
    std::string_view box;
    std::string_view headerPath;
    std::string_view headerName;
    std::string_view itemName;
    std::int32_t offset;
    Choice choice;
};

// An item: its views stand in `view` when it is done.
struct VXPurposeContentView::Item {
    std::int32_t id;
    std::string viewName;
    std::string nameName;
    std::string footerName;
    std::shared_ptr<View> view;
    std::shared_ptr<Label> name;
    std::shared_ptr<Label> description;
    std::shared_ptr<View> footer;
};

namespace {

constexpr std::string_view kPurposes = "purposes";

} // namespace

VXPurposeContentView::VXPurposeContentView(VXIABPrivacyCenterViewController& controller) {
    begin(controller);
    createContainer(kWhite);
    createScrollView();
    stackTitle("purposes/title", "purposeScreenTitle");
    createButtons();
    vendorBtn_ = createNavigationButton("generic/vendorButton", "vendorBtn",
                                        [this] { displayVendorList(); });
    addCategories();
    customiseButtons();
    arrangeViews();
}

void VXPurposeContentView::addCategories() {
    using Choice = Section::Choice;
    constexpr Section kSections[] = {
        {kPurposes, "purposeContainer", "generic/purposeDef", "purposeTitle", "nameL%d",
         kVXPurposeOffset, Choice::Purpose},
        {"specialPurposes", "specialPurposeContainer", "generic/specialPurposeDef",
         "PSpePurposeTitle%d", "PSpePurposeName%d", kVXSpePurposeOffset, Choice::None},
        {"features", "featureContainer", "generic/featureDef", "PFeatureTitle%d", "PFeatureName%d",
         kVXFeatureOffset, Choice::None},
        // The popup calls this box otherwise, deliberately.
        {"specialFeatures", "speFeatureContainer", "generic/specialFeatureDef",
         "PSpeFeatureTitle%d", "PSpeFeatureName%d", kVXSpeFeatureOffset, Choice::SpecialFeature},
    };
    for (const Section& section : kSections)
        build(section);
}

// The purposes have no box without a list; the others have theirs, if empty, deliberately.
void VXPurposeContentView::build(const Section& section) {
    const auto keys = viewController()->keysToDisplay(section.key);
    if (!keys && section.key == kPurposes)
        return;
    View& box = *generateContainerForName(section.box);
    attach(formatted("H:|-[%@]-|", {section.box}), *scrollContainerView());
    if (keys)
        buildItems(section, *keys, box);
}

void VXPurposeContentView::buildItems(const Section& section, const std::vector<std::string>& keys,
                                      View& box) {
    const std::string headerName = numbered(section.headerName);
    const auto header = addLabel(
        LabelType::Title, viewController()->getTranslation(section.headerPath), headerName, box);
    header->setHeadingLevel(2);
    attach(formatted("H:|-[%@(<=%@)]-|", {headerName, section.box}), box);
    std::string vertical = formatted("V:|-[%@]", {headerName});
    for (const std::string& key : keys) {
        const Item item = buildItem(section, key, box);
        makeItem(*item.view, item.name, header);
        vertical += formatted("-[%@]", {item.viewName});
        viewController()->setNumberOfViews(viewController()->numberOfViews() + 1);
    }
    attach(vertical + "-|", box);
}

VXPurposeContentView::Item VXPurposeContentView::buildItem(const Section& section,
                                                           const std::string& key, View& box) {
    const auto text = [&](std::string_view which) {
        return viewController()->getIABTranslation(
            formatted("%@/%@/%@", {section.key, key, which}));
    };
    Item item{};
    item.id = viewController()->JSONDictionary()[section.key][key]["id"].integerValue();
    item.view = viewController()->createStackView(item.id);
    item.name = viewController()->createLabel(LabelType::Title, text("name"));
    item.name->setHeadingLevel(3);
    item.description = viewController()->createLabel(LabelType::Text, text("description"));
    item.description->setAlignment(Label::Alignment::Justified);
    item.nameName = numbered(section.itemName);
    item.viewName = numbered("stackView%d");
    enter(item.nameName, item.name);
    enter(numbered("descL%d"), item.description);
    enter(item.viewName, item.view);
    box.addSubview(item.view);
    addLinks(item, section, key);
    if (section.choice == Section::Choice::Purpose)
        addPurpose(item);
    else if (section.choice == Section::Choice::SpecialFeature)
        addSpecialFeature(item);
    else
        addInformation(item);
    attach(formatted("H:|-[%@]-|", {item.viewName}), box);
    return item;
}

void VXPurposeContentView::addPurpose(const Item& item) {
    const auto consent = createConsentContainer(item.id);
    for (const auto& view : std::initializer_list<std::shared_ptr<View>>{
             item.name, consent, item.footer, item.description})
        item.view->addSubview(view);
    attach(formatted("H:|[%@]|", {item.footerName}), *item.view);
    attach(numbered("H:|-[nameL%d]-|"), *item.view, kAlignAllCentreY);
    attach(numbered("H:|-[descL%d]-|"), *item.view);
    attach(numbered("H:|-[consentContainer%d]|"), *item.view, kAlignAllCentreY);
    attach(formatted(numbered("V:|-[nameL%d]-[consentContainer%d]") + "[%@][%@]-|",
                     {numbered("descL%d"), item.footerName}),
           *item.view);
}

void VXPurposeContentView::addInformation(const Item& item) {
    for (const auto& view :
         std::initializer_list<std::shared_ptr<View>>{item.name, item.description, item.footer})
        item.view->addSubview(view);
    attach(numbered("H:|-[descL%d]-|"), *item.view);
    attach(formatted("H:|[%@]|", {item.footerName}), *item.view);
    attach(formatted("H:|-[%@]-|", {item.nameName}), *item.view);
    attach(formatted("V:|-[%@]-[%@]-[%@]|", {item.nameName, numbered("descL%d"), item.footerName}),
           *item.view);
}

void VXPurposeContentView::addSpecialFeature(const Item& item) {
    const auto consentSwitch = viewController()->createSwitchBtn(
        legitimateInterestNumber(kVXSpeFeatureOffset, item.id), kVXFeaturePrefix);
    consentSwitch->addTouchUpInside(
        [this, sender = consentSwitch.get()] { selectSpecialFeature(*sender); });
    enter(numbered("consentSwitch%d"), consentSwitch);
    item.name->setCompressionResistance(250); // it wraps rather than squeeze the switch
    for (const auto& view : std::initializer_list<std::shared_ptr<View>>{
             consentSwitch, item.name, item.description, item.footer})
        item.view->addSubview(view);
    attach(formatted(numbered("H:|[consentSwitch%d]") + "-[%@]-|", {item.nameName}), *item.view);
    attach(formatted("H:|[%@]|", {item.footerName}), *item.view);
    attach(numbered("H:|-[descL%d]-|"), *item.view);
    attach(formatted("V:|-[%@]-[%@]-[%@]|", {item.nameName, numbered("descL%d"), item.footerName}),
           *item.view);
    attach(numbered("V:|-[consentSwitch%d]"), *item.view);
}

std::shared_ptr<View> VXPurposeContentView::createConsentContainer(std::int32_t purpose) {
    const auto [row, consentSwitch] =
        createConsentRow(numbered("consentContainer%d"), consentNumber(kVXPurposeOffset, purpose),
                         kVXCategoryPrefix);
    consentSwitch->addTouchUpInside(
        [this, sender = consentSwitch.get()] { selectCategory(*sender); });
    // The vendor screen has it the other way round, deliberately.
    attach(numbered("V:|[consentSwitch%d]|"), *row);
    attach(numbered("V:|[consentL%d(consentSwitch%d)]|"), *row);
    return row;
}

void VXPurposeContentView::addLinks(Item& item, const Section& section, const std::string& key) {
    const auto legal = createLink("generic/legalButton");
    legal->addTouchUpInside([this, sender = legal.get()] { displayDescription(*sender); });
    const auto related = createLink("generic/relatedVendorsButton");
    related->addTouchUpInside([this, sender = related.get()] { displayRelatedVendors(*sender); });
    item.footer = std::make_shared<View>();
    item.footerName = numbered("footerView%d");
    for (const auto& link : {legal, related}) {
        link->setNumberOfLines(0);
        if (section.choice != Section::Choice::None)
            link->setTag(item.id);
        item.footer->addSubview(link);
    }
    enter(item.footerName, item.footer);
    enter(numbered("legals%d"), legal);
    enter(numbered("related%d"), related);
    attach(numbered("H:|-[related%d(aboutHalfH)]-[legals%d]-|"), *item.footer);
    attach(numbered("V:|[related%d]-4-|"), *item.footer);
    attach(numbered("V:|[legals%d]-4-|"), *item.footer);
    auto detail = std::make_shared<VXPurposeLegalContentView>();
    detail->setTextDescription(viewController()->getIABTranslation(
        formatted("%@/%@/descriptionLegal", {section.key, key})));
    detail->setOriginalBtn(legal);
    detail->setRelatedButton(related);
    detail->setHashID(wrappedSum(section.offset, item.id));
    detailList_.push_back(std::move(detail));
}

void VXPurposeContentView::selectCategory(const Switch& sender) {
    viewController()->choose(kVXCategoryPrefix, sender.tag(), sender.on());
    viewController()->choose(kVXCategoryPrefix, wrappedSum(sender.tag(), 1), sender.on());
}

void VXPurposeContentView::selectSpecialFeature(const Switch& sender) {
    viewController()->choose(kVXFeaturePrefix, sender.tag(), sender.on());
}

void VXPurposeContentView::displayDescription(const Button& sender) {
    for (const auto& detail : detailList_)
        if (detail->originalBtn().get() == &sender) {
            currentDetail_ = detail;
            detail->displayWithController(*viewController());
            viewController()->displayPurposeDetail();
        }
}

void VXPurposeContentView::displayRelatedVendors(const Button& sender) {
    for (const auto& detail : detailList_)
        if (detail->relatedButton().get() == &sender)
            viewController()->displayRelatedVendorsList(detail->hashID());
}

void VXPurposeContentView::displayVendorList() {
    viewController()->displayVendorList();
}

} // namespace vx
