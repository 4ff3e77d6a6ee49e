#pragma once

#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/ViewController.h"
#include "vxprivacy/platform/ui/VisualFormat.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The category privacy center: one screen with a switch for each consent category and subcategory
/// of the privacy configuration, and one for all of them.
///
/// The application makes it after start-up and presents it; the choices are saved whenever it
/// disappears. It shows the configuration that was there when it was made.
class VXPrivacyCenterViewController : public ViewController, private ScrollViewDelegate {
public:
    VXPrivacyCenterViewController();

    void viewDidLoad() override;
    void viewWillDisappear(bool animated) override;

    /// What was saved before, by consent key.
    static ConsentDictionary retrieveSavedConsent();
    /// Hands the switches' states to the engine.
    void savePrivacy();
    /// The configuration's title for an application's own save control, or nothing.
    std::optional<std::string> getSaveButtonText() const;

    // Actions of the switches and links.
    void selectGlobalCategory(const Switch& sender);
    void selectCategory(const Switch& sender);
    void selectSubCategory(const Switch& sender);
    void privacyButtonAction(const Button& sender);
    /// Sets the global switch on exactly when every other one is.
    void checkGlobalConsent();

    const JSONValue& JSONDictionary() const { return JSONDictionary_; }
    const std::shared_ptr<ScrollView>& scrollView() const { return scrollView_; }
    const std::shared_ptr<View>& contentView() const { return contentView_; }
    /// Null when the configuration has no global consent.
    const std::shared_ptr<Switch>& globalConsent() const { return globalConsent_; }
    /// Every view by its layout name.
    const ViewsDictionary& viewsDictionary() const { return viewsDictionary_; }
    /// Layout names from top to bottom.
    const std::vector<std::string>& categoryUIObjects() const { return categoryUIObjects_; }
    /// A category's ID to its subcategories' IDs, and a subcategory's to its parent's.
    const OrderedDictionary<std::vector<std::int32_t>>& categoryLinks() const {
        return categoryLinks_;
    }
    const ConsentDictionary& savedConsent() const { return savedConsent_; }
    const std::vector<std::shared_ptr<Button>>& privacyButtons() const { return privacyButtons_; }
    /// The address of each of `privacyButtons`.
    const std::vector<std::string>& privacyUrls() const { return privacyUrls_; }
    const OrderedDictionary<Colour>& customisation() const { return customisation_; }
    const MetricsDictionary& metrics() const { return metrics_; }
    std::int32_t numberOfViews() const { return numberOfViews_; }

private:
    enum class LabelType { Title, Description };
    struct RowLayout;

    void scrollViewDidScroll(ScrollView& scrollView) override;

    void createScrollView();
    void parseCustomisation(const JSONValue& object);
    void addMainDescription(const std::string& text);
    void addMainPrivacyPolicy(const JSONValue& information);
    void addGlobalCategory();
    void addCategories();
    std::vector<std::int32_t> addSubCategories(const JSONValue& category, std::int32_t parentID);
    std::shared_ptr<Switch> addCategoryRow(const JSONValue& category);
    std::shared_ptr<Switch> addRow(const JSONValue& object, std::int32_t categoryID);
    void addPrivacyPolicyButton(const JSONValue& object, std::string_view horizontalFormat);
    void addLink(const JSONValue& object, const std::string& name);
    void attachRowConstraints(const RowLayout& layout);
    void arrangeViewsVertically();
    void applyBackground();

    std::shared_ptr<Label> createLabel(LabelType type, const std::string& text);
    std::shared_ptr<Switch> createSwitchBtn(std::int32_t categoryID);
    std::shared_ptr<View> createStackView(std::int32_t categoryID);
    void colourText(Label& label) const;

    void attachConstaint(std::string_view format, View& view) const;
    void attachFormattedConstrait(std::string_view format, View& view) const;

    std::string numbered(std::string_view format) const;
    const std::vector<std::int32_t>* linkedTo(const Switch& sender) const;
    template <class Action>
    void forEachSwitch(Action action) const;
    template <class Action>
    void forEachCategorySwitch(Action action) const;
    template <class Action>
    void forEachSwitchOfRow(std::int32_t categoryID, Action action) const;

    JSONValue JSONDictionary_;
    std::shared_ptr<ScrollView> scrollView_;
    std::shared_ptr<View> contentView_;
    std::shared_ptr<Switch> globalConsent_;
    ViewsDictionary viewsDictionary_;
    std::vector<std::string> categoryUIObjects_;
    OrderedDictionary<std::vector<std::int32_t>> categoryLinks_;
    std::vector<std::shared_ptr<Switch>> switches_; // every one, from top to bottom
    ConsentDictionary savedConsent_;
    std::vector<std::shared_ptr<Button>> privacyButtons_;
    std::vector<std::string> privacyUrls_;
    OrderedDictionary<Colour> customisation_;
    MetricsDictionary metrics_;
    std::int32_t numberOfViews_ = 0;
};

} // namespace vx
