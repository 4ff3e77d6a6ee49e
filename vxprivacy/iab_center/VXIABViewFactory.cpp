// What the IAB privacy center's screens are made of: texts, labels, switches and boxes.

#include <utility>

#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

std::optional<std::string>
VXIABPrivacyCenterViewController::getTranslation(std::string_view path) const {
    return configuration_->getTextForKey(path, VXMobilePrivacy::sharedInstance().languageCode());
}

std::optional<std::string>
VXIABPrivacyCenterViewController::getIABTranslation(std::string_view path) const {
    const auto& file = translationConf_ ? translationConf_ : IABConf_;
    const auto text = file ? file->getJsonLeafFromPath(path).string() : std::nullopt;
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::shared_ptr<Label>
VXIABPrivacyCenterViewController::createLabel(LabelType type,
                                              const std::optional<std::string>& text) const {
    auto label = std::make_shared<Label>();
    label->setFont({type == LabelType::Title ? "TrebuchetMS-Bold" : "TrebuchetMS", 15});
    if (const Colour* colour = configuration_->customisation().find("content_fontcolor"))
        label->setTextColor(*colour);
    label->setText(text.value_or(""));
    label->setNumberOfLines(0);
    return label;
}

std::shared_ptr<Switch> VXIABPrivacyCenterViewController::createSwitchBtn(std::int32_t number,
                                                                          std::string_view prefix,
                                                                          bool legitimateInterest) {
    auto made = std::make_shared<Switch>();
    made->setTag(number);
    const std::string key = numberedKey(prefix, number);
    const std::string* saved = savedConsent_.find(key);
    made->setOn(saved ? *saved == kConsentAccepted : legitimateInterest);
    if (!saved)
        savedConsent_.set(key, std::string(consentValue(legitimateInterest)));
    if (const Colour* tint = configuration_->customisation().find("button_backgroundcolor"))
        made->setOnTintColor(*tint);
    made->setScale(0.6);
    return made;
}

std::shared_ptr<View> VXIABPrivacyCenterViewController::createStackView(std::int32_t tag) const {
    auto box = std::make_shared<View>();
    box->setTag(tag);
    View::Border border{1, 5, {}};
    if (const Colour* colour = configuration_->customisation().find("content_bordercolor"))
        border.colour = *colour;
    box->setBorder(border);
    return box;
}

void VXIABPrivacyCenterViewController::addOurPartnersLinkToLabel(Label& label) const {
    const auto words = getTranslation("generic/partnersLinkText");
    if (const auto range = rangeIgnoringCase(label.text(), words.value_or("")))
        label.setLink(Label::Link{*range, kLinkColour});
}

} // namespace vx
