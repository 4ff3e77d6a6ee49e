// Model and actions of the category privacy center.

#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"

#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/Application.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx {

VXPrivacyCenterViewController::VXPrivacyCenterViewController() {
    if (const auto file = configurationFile(kPrivacyConfiguration))
        JSONDictionary_ = file->getJSONDictionary();
}

void VXPrivacyCenterViewController::viewWillDisappear(bool animated) {
    savePrivacy();
    ViewController::viewWillDisappear(animated);
}

ConsentDictionary VXPrivacyCenterViewController::retrieveSavedConsent() {
    ConsentDictionary saved;
    if (!VXUserDefaults::retrieveInfoFromUserDefaults(kVXPrivacyConsent))
        return saved;
    const std::string list =
        VXUserDefaults::retrieveInfoFromUserDefaults(kVXSavedCategories).value_or("");
    for (std::string_view key : split(list, ';'))
        if (!key.empty())
            if (auto value = VXUserDefaults::retrieveInfoFromUserDefaults(key))
                saved.set(key, std::move(*value));
    return saved;
}

template <class Action>
void VXPrivacyCenterViewController::forEachSwitch(Action action) const {
    for (const auto& each : switches_)
        action(*each);
}

// All but the global one, which has tag 0.
template <class Action>
void VXPrivacyCenterViewController::forEachCategorySwitch(Action action) const {
    forEachSwitch([&](Switch& each) {
        if (each.tag() != 0)
            action(each);
    });
}

// The row container is found before the switch inside it, which has the same tag.
template <class Action>
void VXPrivacyCenterViewController::forEachSwitchOfRow(std::int32_t categoryID,
                                                       Action action) const {
    if (const auto row = contentView_->viewWithTag(categoryID))
        for (const auto& view : row->subviews())
            if (auto* found = viewAs<Switch>(*view))
                action(*found);
}

const std::vector<std::int32_t>*
VXPrivacyCenterViewController::linkedTo(const Switch& sender) const {
    return categoryLinks_.find(std::to_string(sender.tag()));
}

void VXPrivacyCenterViewController::checkGlobalConsent() {
    countSwitches();
    if (!globalConsent_)
        return;
    bool allOn = true;
    forEachCategorySwitch([&](const Switch& each) { allOn = allOn && each.on(); });
    globalConsent_->setOn(allOn);
}

void VXPrivacyCenterViewController::countSwitches() const {
    for (const auto& [title, first, last] : headings_) {
        std::size_t on = 0;
        for (std::size_t i = first; i < last; ++i)
            on += switches_[i]->on() ? 1 : 0;
        if (first < last)
            title->setCount({on, last - first});
    }
}

void VXPrivacyCenterViewController::selectGlobalCategory(const Switch& sender) {
    forEachSwitch([on = sender.on()](Switch& each) { each.setOn(on); });
    countSwitches();
}

void VXPrivacyCenterViewController::selectCategory(const Switch& sender) {
    if (const auto* children = linkedTo(sender))
        for (std::int32_t child : *children)
            forEachSwitchOfRow(child, [&](Switch& each) { each.setOn(sender.on()); });
    checkGlobalConsent();
}

void VXPrivacyCenterViewController::selectSubCategory(const Switch& sender) {
    bool anyOn = false; // over all parents, deliberately
    if (const auto* parents = linkedTo(sender))
        for (std::int32_t parent : *parents) {
            if (const auto* children = categoryLinks_.find(std::to_string(parent)))
                for (std::int32_t child : *children)
                    forEachSwitchOfRow(child, [&](const Switch& each) { anyOn |= each.on(); });
            forEachSwitchOfRow(parent, [&](Switch& each) { each.setOn(anyOn); });
        }
    checkGlobalConsent();
}

void VXPrivacyCenterViewController::savePrivacy() {
    ConsentDictionary consent;
    forEachCategorySwitch([&](const Switch& each) {
        consent.set(numberedKey(kVXCategoryPrefix, each.tag()),
                    std::string(consentValue(each.on())));
    });
    VXMobilePrivacy::sharedInstance().saveConsent(consent);
}

void VXPrivacyCenterViewController::privacyButtonAction(const Button& sender) {
    for (std::size_t i = 0; i < privacyButtons_.size(); ++i)
        if (privacyButtons_[i].get() == &sender)
            openURL(privacyUrls_[i]);
}

std::optional<std::string> VXPrivacyCenterViewController::getSaveButtonText() const {
    const auto text = JSONDictionary_["information"]["saveButton"].string();
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

} // namespace vx
