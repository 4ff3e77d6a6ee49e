#include "vxprivacy/iab_center/VendorInformation.h"

#include <utility>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx {

// An address under its title.
struct VendorInformation::Link {
    std::string_view titlePath;
    std::string_view titleName;
    std::string_view buttonName;
};

// A kind of item. The irregular spellings of names are deliberate.
struct VendorInformation::List {
    std::string_view titlePath;
    std::string_view titleName;
    std::string_view section; // of the vendor list
    std::string_view itemName;
};

namespace {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

void openTitle(const Button& sender) {
    openURL(sender.title());
}

} // namespace

void VendorInformation::add(const VendorRecord& record, std::function<void(const Button&)> open) {
    const std::string language = VXMobilePrivacy::sharedInstance().languageCode().value_or("en");
    addLink({"vendors/privacyPolicyText", "policyTitle%d", "privacyPolicyBTN%d"},
            record.privacyPolicy(language), std::move(open));
    addLists(record);
    if (VXCMPStorage::tellsDataUse())
        addDataUse(record, language);
}

void VendorInformation::addLink(const Link& link, std::optional<std::string_view> address,
                                std::function<void(const Button&)> open) {
    if (!address)
        return;
    const std::string titleName = screen_.numbered(link.titleName);
    const std::string buttonName = screen_.numbered(link.buttonName);
    const auto title = screen_.viewController()->createLabel(
        LabelType::Title, screen_.viewController()->getTranslation(link.titlePath));
    title->setHeadingLevel(headingLevel());
    const auto button = std::make_shared<Button>();
    button->setTitle(std::string(*address));
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
    const auto& controller = *screen_.viewController();
    const auto title = addTitle(list.titlePath, list.titleName);
    for (const std::int32_t id : ids) {
        const auto text = controller.getIABTranslation(formatted("%@/%d/name", {list.section, id}));
        addItem(formatted("- %@", {text}),
                formatted(list.itemName, {id, controller.numberOfViews()}), title);
    }
}

// Vendors of the published list name categories that it does not have; they are left out.
void VendorInformation::addDataUse(const VendorRecord& record, std::string_view language) {
    std::vector<std::int32_t> categories = record.dataDeclaration();
    std::erase_if(categories, [this](std::int32_t id) {
        return !screen_.viewController()->getIABTranslation(
            formatted("dataCategories/%d/name", {id}));
    });
    addList({"generic/dataDeclarationDef", "VDDataTitle%d", "dataCategories", "VDDataName%d%d"},
            categories);
    addRetention(record.dataRetention());
    addLink({"vendors/legIntClaimText", "claimTitle%d", "legIntClaimBTN%d"},
            record.legIntClaim(language), openTitle);
    addLink({"vendors/deviceStorageText", "storageTitle%d", "deviceStorageBTN%d"},
            record.deviceStorageDisclosure(), openTitle);
}

void VendorInformation::addRetention(const VendorRecord::Retention& retention) {
    if (!retention.standard && retention.purposes.empty() && retention.specialPurposes.empty())
        return;
    const auto& controller = *screen_.viewController();
    const auto title = addTitle("generic/dataRetentionDef", "VDRetentionTitle%d");
    if (retention.standard) {
        const auto text = controller.getTranslation("generic/stdRetentionDef");
        addItem("- " + (text ? *text + ": " : "") + std::to_string(*retention.standard),
                screen_.numbered("VDStdRetentionName%d"), title);
    }
    const auto addEach = [&](std::string_view section, std::string_view itemName, const auto& all) {
        for (const auto& [id, days] : all) {
            const auto text = controller.getIABTranslation(formatted("%@/%d/name", {section, id}));
            addItem(formatted("- %@: %d", {text, days}),
                    formatted(itemName, {id, controller.numberOfViews()}), title);
        }
    };
    addEach("purposes", "VDRetentionName%d%d", retention.purposes);
    addEach("specialPurposes", "VDSpeRetentionName%d%d", retention.specialPurposes);
}

std::shared_ptr<Label> VendorInformation::addTitle(std::string_view textPath,
                                                   std::string_view name) {
    const std::string titleName = screen_.numbered(name);
    const auto title = screen_.addLabel(
        LabelType::Title, screen_.viewController()->getTranslation(textPath), titleName, parent_);
    title->setHeadingLevel(headingLevel());
    screen_.attach(formatted("H:|-[%@(<=%@)]-|", {titleName, parentName_}), parent_);
    note(titleName);
    return title;
}

void VendorInformation::addItem(const std::string& text, const std::string& name,
                                const std::shared_ptr<Label>& title) {
    const auto item = screen_.addLabel(LabelType::Text, text, name, parent_);
    item->setAlignment(Label::Alignment::Justified);
    ContentView::makeItem(*item, item, title);
    screen_.attach(formatted("H:|-(20)-[%@(<=%@)]-|", {name, parentName_}), parent_);
    note(name);
}

void VendorInformation::note(const std::string& name) {
    screen_.stack(name);
    names_.push_back(name);
}

} // namespace vx
