// Composition of the category privacy center's screen, as the eye reads it. What its switches and
// links do is in VXPrivacyCenterViewController.cpp.

#include <array>
#include <utility>

#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

// How the rows of one kind are laid out: formats over the row's own names, in order.
struct VXPrivacyCenterViewController::RowLayout {
    std::array<std::string_view, 2> inRow;
    std::array<std::string_view, 2> inContent;
};

namespace {

std::string textOf(const JSONValue& value) {
    return std::string(value.string().value_or(""));
}

} // namespace

void VXPrivacyCenterViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    savedConsent_ = retrieveSavedConsent();
    // The names promise a quarter and three quarters; the factors are these, deliberately.
    metrics_.set("oneFourthH", static_cast<float>(0.15 * view()->width()));
    metrics_.set("threeFourthH", static_cast<float>(0.8 * view()->width()));
    createScrollView();
    viewsDictionary_.set("view", view());
    viewsDictionary_.set("scrollView", scrollView_);
    attachConstaint("V:|-30-[scrollView]-10-|", *view());
    attachConstaint("H:|[scrollView(==view)]|", *view());
    attachConstaint("V:|[contentView]|", *scrollView_);
    attachConstaint("H:|[contentView(==scrollView)]|", *scrollView_);
    parseCustomisation(JSONDictionary_["customisation"]);
    const JSONValue information = JSONDictionary_["information"];
    const auto content = information["content"].string();
    addMainDescription(std::string(content.value_or("(null)"))); // shown like that, deliberately
    addMainPrivacyPolicy(information);
    addGlobalCategory();
    addCategories();
    arrangeViewsVertically();
    applyBackground();
    checkGlobalConsent();
    VXMobilePrivacy::sharedInstance().viewConsent();
}

void VXPrivacyCenterViewController::createScrollView() {
    scrollView_ = std::make_shared<ScrollView>();
    scrollView_->setBackgroundColor(kWhite);
    scrollView_->setDelegate(this);
    contentView_ = std::make_shared<View>();
    contentView_->setBackgroundColor(kWhite);
    viewsDictionary_.set("contentView", contentView_);
    scrollView_->addSubview(contentView_);
    view()->addSubview(scrollView_);
}

void VXPrivacyCenterViewController::parseCustomisation(const JSONValue& object) {
    for (const auto& [section, name] :
         {std::pair("content", "fontcolor"), std::pair("content", "backgroundcolor"),
          std::pair("button", "fontcolor"), std::pair("button", "backgroundcolor")})
        if (const auto text = object[section][name].string())
            customisation_.set(formatted("%@_%@", {section, name}),
                               VXPrivacyConfiguration::parseUIColorFromHex(*text));
}

void VXPrivacyCenterViewController::addMainDescription(const std::string& text) {
    auto label = std::make_shared<Label>();
    label->setText(text);
    label->setNumberOfLines(0);
    colourText(*label);
    viewsDictionary_.set("contentTV", label);
    contentView_->addSubview(label);
    categoryUIObjects_.push_back("contentTV");
    attachConstaint("H:|-10-[contentTV(<=contentView)]-10-|", *contentView_);
}

void VXPrivacyCenterViewController::addMainPrivacyPolicy(const JSONValue& information) {
    if (!information["privacy_policy_url"].string())
        return;
    addLink(information, "privacyPolicyBTN");
    attachConstaint("H:|-10-[privacyPolicyBTN(<=contentView)]", *contentView_);
}

void VXPrivacyCenterViewController::addGlobalCategory() {
    const JSONValue global = JSONDictionary_["global_consent"];
    if (!global.isObject())
        return;
    globalConsent_ = addRow(global, 0, nullptr);
    headings_.push_back({row_->title.lock(), 1, 1}); // of all that come
    globalConsent_->addTouchUpInside([this] { selectGlobalCategory(*globalConsent_); });
    attachRowConstraints({{"H:|[nameL%d]", "H:[switchBtn%d]|"},
                          {"H:|-10-[descL%d]-10-|", "V:[stackView%d(switchBtn%d)]"}});
    ++numberOfViews_;
}

void VXPrivacyCenterViewController::addCategories() {
    for (const JSONValue& category :
         VXPrivacyConfiguration::objectsOf(JSONDictionary_["categories"])) {
        const auto consentSwitch = addCategoryRow(category, nullptr);
        consentSwitch->setScale(0.75);
        consentSwitch->addTouchUpInside(
            [this, sender = consentSwitch.get()] { selectCategory(*sender); });
        addPrivacyPolicyButton(category, "H:|-10-[privacyPolicyBTN%d]");
        attachRowConstraints({{"H:|[nameL%d(threeFourthH)]", "H:[switchBtn%d(oneFourthH)]|"},
                              {"H:|-10-[descL%d]-10-|", "V:[stackView%d(nameL%d)]"}});
        ++numberOfViews_;
        auto children = addSubCategories(category, consentSwitch->tag());
        // Links are found by text, so an ID that is a number links nothing, deliberately.
        if (const auto key = category["ID"].string(); key && !children.empty())
            categoryLinks_.set(*key, std::move(children));
    }
    if (globalConsent_)
        headings_.front().lastSwitch = switches_.size();
}

std::vector<std::int32_t> VXPrivacyCenterViewController::addSubCategories(const JSONValue& category,
                                                                          std::int32_t parentID) {
    std::vector<std::int32_t> children;
    const auto section = row_->title.lock();
    const std::size_t firstSwitch = switches_.size();
    for (const JSONValue& subcategory :
         VXPrivacyConfiguration::objectsOf(category["subcategories"])) {
        if (const auto key = subcategory["ID"].string())
            categoryLinks_.set(*key, {parentID});
        const auto consentSwitch = addCategoryRow(subcategory, section);
        consentSwitch->setScale(0.6);
        consentSwitch->addTouchUpInside(
            [this, sender = consentSwitch.get()] { selectSubCategory(*sender); });
        addPrivacyPolicyButton(subcategory, "H:|-20-[privacyPolicyBTN%d]");
        attachRowConstraints({{"H:|-10-[nameL%d]", "H:[switchBtn%d]|"},
                              {"V:[stackView%d(switchBtn%d)]", "H:|-20-[descL%d]-10-|"}});
        children.push_back(consentSwitch->tag());
        ++numberOfViews_;
    }
    if (!children.empty())
        headings_.push_back({section, firstSwitch, switches_.size()});
    return children;
}

std::shared_ptr<Switch>
VXPrivacyCenterViewController::addCategoryRow(const JSONValue& category,
                                              const std::shared_ptr<Label>& section) {
    const std::int32_t categoryID = category["ID"].integerValue();
    const std::string key = numberedKey(kVXCategoryPrefix, categoryID);
    if (!savedConsent_.contains(key))
        savedConsent_.set(
            key, std::string(consentValue(VXMobilePrivacy::sharedInstance().switchDefaultState())));
    return addRow(category, categoryID, section);
}

std::shared_ptr<Switch>
VXPrivacyCenterViewController::addRow(const JSONValue& object, std::int32_t categoryID,
                                      const std::shared_ptr<Label>& section) {
    const auto title = createLabel(LabelType::Title, textOf(object["name"]));
    title->setHeadingLevel(section ? 3 : 2);
    row_ = std::make_shared<Row>(Row{title, section});
    const auto consentSwitch = createSwitchBtn(categoryID);
    const auto description = createLabel(LabelType::Description, textOf(object["description"]));
    const auto row = createStackView(categoryID);
    row->addSubview(title);
    row->addSubview(consentSwitch);
    row->setRow(row_);
    contentView_->addSubview(description);
    description->setRow(row_);
    categoryUIObjects_.push_back(numbered("stackView%d"));
    categoryUIObjects_.push_back(numbered("descL%d"));
    return consentSwitch;
}

void VXPrivacyCenterViewController::addPrivacyPolicyButton(const JSONValue& object,
                                                           std::string_view horizontalFormat) {
    if (!object["privacy_policy_url"].string())
        return;
    addLink(object, numbered("privacyPolicyBTN%d"));
    privacyButtons_.back()->setRow(row_);
    attachFormattedConstrait(horizontalFormat, *contentView_);
}

void VXPrivacyCenterViewController::addLink(const JSONValue& object, const std::string& name) {
    auto button = std::make_shared<Button>();
    button->setTitle(removingAll(textOf(object["privacy_policy_text"]), "\n"));
    button->setTitleColor(kLinkColour);
    button->setLeavesApplication(true);
    button->addTouchUpInside([this, sender = button.get()] { privacyButtonAction(*sender); });
    viewsDictionary_.set(name, button);
    categoryUIObjects_.push_back(name);
    contentView_->addSubview(button);
    privacyUrls_.push_back(textOf(object["privacy_policy_url"]));
    privacyButtons_.push_back(std::move(button));
}

void VXPrivacyCenterViewController::attachRowConstraints(const RowLayout& layout) {
    View& row = **viewsDictionary_.find(numbered("stackView%d"));
    attachFormattedConstrait("V:|-5-[nameL%d]", row);
    attachFormattedConstrait("V:|[switchBtn%d]", row);
    for (std::string_view format : layout.inRow)
        attachFormattedConstrait(format, row);
    for (std::string_view format : layout.inContent)
        attachFormattedConstrait(format, *contentView_);
    attachFormattedConstrait("H:|-[stackView%d(<=contentView)]-|", *contentView_);
}

void VXPrivacyCenterViewController::arrangeViewsVertically() {
    std::string format = "V:|";
    format.reserve(categoryUIObjects_.size() * 24); // a name and what stands around it
    for (const std::string& name : categoryUIObjects_)
        format.append("-[").append(name).append("]");
    attachConstaint(format + "-10-|", *contentView_);
}

void VXPrivacyCenterViewController::applyBackground() {
    if (const Colour* colour = customisation_.find("content_backgroundcolor"))
        for (View* each : {contentView_.get(), static_cast<View*>(scrollView_.get()), view().get()})
            each->setBackgroundColor(*colour);
}

std::shared_ptr<Label> VXPrivacyCenterViewController::createLabel(LabelType type,
                                                                  const std::string& text) {
    auto label = std::make_shared<Label>();
    if (type == LabelType::Title)
        label->setFont({"TrebuchetMS-Bold", 17});
    label->setText(text);
    label->setNumberOfLines(0);
    colourText(*label);
    viewsDictionary_.set(numbered(type == LabelType::Title ? "nameL%d" : "descL%d"), label);
    return label;
}

void VXPrivacyCenterViewController::colourText(Label& label) const {
    if (const Colour* colour = customisation_.find("content_fontcolor"))
        label.setTextColor(*colour);
}

std::shared_ptr<Switch> VXPrivacyCenterViewController::createSwitchBtn(std::int32_t categoryID) {
    auto consentSwitch = std::make_shared<Switch>();
    consentSwitch->setTag(categoryID);
    const std::string* saved = savedConsent_.find(numberedKey(kVXCategoryPrefix, categoryID));
    consentSwitch->setOn(!saved || *saved != kConsentRefused);
    if (const Colour* colour = customisation_.find("button_backgroundcolor"))
        consentSwitch->setOnTintColor(*colour);
    viewsDictionary_.set(numbered("switchBtn%d"), consentSwitch);
    switches_.push_back(consentSwitch);
    return consentSwitch;
}

std::shared_ptr<View> VXPrivacyCenterViewController::createStackView(std::int32_t categoryID) {
    auto row = std::make_shared<View>();
    row->setTag(categoryID);
    viewsDictionary_.set(numbered("stackView%d"), row);
    contentView_->addSubview(row);
    return row;
}

void VXPrivacyCenterViewController::attachConstaint(std::string_view format, View& view) const {
    view.addConstraints(constraintsWithVisualFormat(format, 0, metrics_, viewsDictionary_));
}

void VXPrivacyCenterViewController::attachFormattedConstrait(std::string_view format,
                                                             View& view) const {
    attachConstaint(numbered(format), view);
}

// `format` with the row's index in place of every "%d".
std::string VXPrivacyCenterViewController::numbered(std::string_view format) const {
    return formatted(format, {numberOfViews_, numberOfViews_});
}

// The screen never scrolls sideways.
void VXPrivacyCenterViewController::scrollViewDidScroll(ScrollView& scrollView) {
    scrollView.setContentOffset({0, scrollView.contentOffset().y});
}

} // namespace vx
