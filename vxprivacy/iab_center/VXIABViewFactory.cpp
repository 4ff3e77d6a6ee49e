// What the IAB privacy center's screens are made of: texts, labels, switches and boxes.

#include <utility>

#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

constexpr std::string_view kLegalText = "descriptionLegal";

// What lists of format 3 have in place of the legal text at `path`, a line each, or else the
// description: many items have none.
std::optional<std::string> illustrations(const VXConfigurationFile& file, std::string_view path) {
    const std::string item(path.substr(0, path.size() - kLegalText.size()));
    const JSONValue texts = file.getJsonLeafFromPath(item + "illustrations");
    if (!texts.isArray())
        return {};
    std::string lines;
    for (const JSONValue& text : texts.elements())
        if (const auto line = text.string())
            lines.append(lines.empty() ? "" : "\n").append(*line);
    if (lines.empty())
        lines = file.getJsonLeafFromPath(item + "description").string().value_or("");
    return lines;
}

} // namespace

std::optional<std::string>
VXIABPrivacyCenterViewController::getTranslation(std::string_view path) const {
    return configuration_->getTextForKey(path, VXMobilePrivacy::sharedInstance().languageCode());
}

std::optional<std::string>
VXIABPrivacyCenterViewController::getIABTranslation(std::string_view path) const {
    const auto& file = translationConf_ ? translationConf_ : IABConf_;
    if (!file)
        return {};
    if (const auto text = file->getJsonLeafFromPath(path).string())
        return std::string(*text);
    return path.ends_with(kLegalText) ? illustrations(*file, path) : std::nullopt;
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
