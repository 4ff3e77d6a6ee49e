#include "vxprivacy/iab_center/VendorInformation.h"

#include <utility>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

// A kind of item. The irregular spellings of names are deliberate.
struct VendorInformation::List {
    std::string_view titlePath;
    std::string_view titleName;
    std::string_view section; // of the vendor list
    std::string_view itemName;
};

namespace {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

} // namespace

void VendorInformation::addPolicy(const std::string& address,
                                  std::function<void(const Button&)> open) {
    const std::string titleName = screen_.numbered("policyTitle%d");
    const std::string buttonName = screen_.numbered("privacyPolicyBTN%d");
    const auto title = screen_.viewController()->createLabel(
        LabelType::Title, screen_.viewController()->getTranslation("vendors/privacyPolicyText"));
    title->setHeadingLevel(headingLevel());
    const auto button = std::make_shared<Button>();
    button->setTitle(address);
    button->setTitleColor(kLinkColour);
    button->setNumberOfLines(1);
    button->setMinimumScaleFactor(0.5);
    button->setLeavesApplication(true);
    button->addTouchUpInside([open = std::move(open), sender = button.get()] { open(*sender); });
    screen_.enter(titleName, title);
    screen_.enter(buttonName, button);
    const bool inPanel = place_ == Place::Panel;
    parent_.addSubview(inPanel ? std::shared_ptr<View>(button) : title);
    parent_.addSubview(inPanel ? std::shared_ptr<View>(title) : button);
    // The title's end is held to the panel's, and to nothing on a screen, deliberately.
    screen_.attach(
        formatted(inPanel ? "H:|-[%@(<=%@)]|" : "H:|-[%@(<=%@)]", {titleName, parentName_}),
        parent_);
    screen_.attach(formatted("H:|-[%@(<=%@)]-|", {buttonName, parentName_}), parent_);
    note(titleName);
    note(buttonName);
}

// Purposes of legitimate interest are purposes, and have their names.
void VendorInformation::addLists(const VendorRecord& record) {
    addList({"generic/purposeDef", "VDPurposeTitle%d", "purposes", "VDPurposeName%d%d"},
            record.purposes());
    addList({"generic/legIntPurposeDef", "VDLegIntTitle%d", "purposes", "VDLegIntName%d%d"},
            record.legIntPurposes());
    addList(
        {"generic/specialPurposeDef", "VDSpePurpTitle%d", "specialPurposes", "VDSpePurpName%d%d"},
        record.specialPurposes());
    addList({"generic/featureDef", "VDfeatureTitle%d", "features", "VDfeatureName%d%d"},
            record.features());
    addList({"generic/specialFeatureDef", "VDSpeFeatureTitle%d", "specialFeatures",
             "VDSpeFeatureName%d%d"},
            record.specialFeatures());
}

void VendorInformation::addList(const List& list, const std::vector<std::int32_t>& ids) {
    if (ids.empty())
        return;
    auto& controller = *screen_.viewController();
    const std::string titleName = screen_.numbered(list.titleName);
    const auto title = screen_.addLabel(LabelType::Title, controller.getTranslation(list.titlePath),
                                        titleName, parent_);
    title->setHeadingLevel(headingLevel());
    screen_.attach(formatted("H:|-[%@(<=%@)]-|", {titleName, parentName_}), parent_);
    note(titleName);
    for (const std::int32_t id : ids) {
        const std::string name = formatted(list.itemName, {id, controller.numberOfViews()});
        const auto text = controller.getIABTranslation(formatted("%@/%d/name", {list.section, id}));
        const auto item =
            screen_.addLabel(LabelType::Text, formatted("- %@", {text}), name, parent_);
        item->setAlignment(Label::Alignment::Justified);
        ContentView::makeItem(*item, item, title);
        screen_.attach(formatted("H:|-(20)-[%@(<=%@)]-|", {name, parentName_}), parent_);
        note(name);
    }
}

void VendorInformation::note(const std::string& name) {
    screen_.stack(name);
    names_.push_back(name);
}

} // namespace vx
