#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/ViewController.h"
#include "vxprivacy/platform/ui/VisualFormat.h"

namespace vx {

/// The category privacy center: one screen with a switch for each consent category and subcategory
/// of the privacy configuration, and one for all of them.
///
/// The application makes it after start-up, presents it as `ViewController` says and shows its view
/// in a host; it must live while the view is shown. The choices are saved whenever it disappears,
/// changed or not. It shows the configuration that was there when it was made; without one it has
/// no switches, and leaving it counts as a refusal. User-interface thread, which is the
/// application's.
///
///     VXPrivacyCenterViewController center;
///     center.view()->setSize(375, 667);
///     center.viewDidLoad();               // builds the screen, sends the view beacon
///     web::WebSurface surface(center.view());
///     // ... the user sees the page and taps ...
///     center.viewWillDisappear(true);     // saves: durable when this returns
class VXPRIVACY_EXPORT VXPrivacyCenterViewController : public ViewController,
                                                       private ScrollViewDelegate {
public:
    /// Takes the configuration. Needs a `Runtime`.
    VXPrivacyCenterViewController();

    /// Builds the screen and reports that it is shown. The view's width must be set before: the
    /// columns of a row are shares of it. To be called once.
    void viewDidLoad() override;
    /// Saves.
    void viewWillDisappear(bool animated) override;

    /// What was saved before, by consent key: the listed categories that have an entry. Empty when
    /// nothing was ever saved.
    static ConsentDictionary retrieveSavedConsent();
    /// Hands the switches' states to the engine's `saveConsent`: an entry for each category and
    /// subcategory, none for the global switch. A category whose ID counts as 0 is not saved.
    void savePrivacy();
    /// The configuration's title for an application's own save control, or nothing. The screen has
    /// no such control.
    std::optional<std::string> getSaveButtonText() const;

    // Actions of the switches and links. The views call them when the user touches them; `sender`
    // is the control touched, a switch already in its new state.

    /// Sets every switch like the sender.
    void selectGlobalCategory(const Switch& sender);
    /// Sets the category's subcategories like the sender, and brings the global switch up to date.
    void selectCategory(const Switch& sender);
    /// Sets the category above on when one of its subcategories is, else off, and brings the global
    /// switch up to date.
    void selectSubCategory(const Switch& sender);
    /// Opens the link's address through the door `Application`. Nothing for another button.
    void privacyButtonAction(const Button& sender);
    /// Sets the global switch on exactly when every other one is.
    void checkGlobalConsent();

    // What the screen is made of, filled by `viewDidLoad`. The references are good while the
    // controller lives.

    /// The privacy configuration; absent when there was none.
    const JSONValue& JSONDictionary() const { return JSONDictionary_; }
    /// Null before the screen is built, as the content view, which holds all rows.
    const std::shared_ptr<ScrollView>& scrollView() const { return scrollView_; }
    const std::shared_ptr<View>& contentView() const { return contentView_; }
    /// Null when the configuration has no global consent.
    const std::shared_ptr<Switch>& globalConsent() const { return globalConsent_; }
    /// Every view by its layout name. Names of rows end with the row's number ("switchBtn0").
    const ViewsDictionary& viewsDictionary() const { return viewsDictionary_; }
    /// Layout names from top to bottom.
    const std::vector<std::string>& categoryUIObjects() const { return categoryUIObjects_; }
    /// A category's ID to its subcategories' IDs, and a subcategory's to its parent's. IDs that the
    /// document has as numbers are missing, and their switches do not follow each other,
    /// deliberately.
    const OrderedDictionary<std::vector<std::int32_t>>& categoryLinks() const {
        return categoryLinks_;
    }
    /// What the switches began with: what was saved, and the engine's `switchDefaultState` where
    /// nothing was. It does not follow them.
    const ConsentDictionary& savedConsent() const { return savedConsent_; }
    /// The links, from top to bottom.
    const std::vector<std::shared_ptr<Button>>& privacyButtons() const { return privacyButtons_; }
    /// The address of each of `privacyButtons`, as the document has it.
    const std::vector<std::string>& privacyUrls() const { return privacyUrls_; }
    /// The colours that the document gives, by name ("button_backgroundcolor").
    const OrderedDictionary<Colour>& customisation() const { return customisation_; }
    /// "oneFourthH" and "threeFourthH", in points: 0.15 and 0.8 of the width, whatever they
    /// promise.
    const MetricsDictionary& metrics() const { return metrics_; }
    /// How many rows there are.
    std::int32_t numberOfViews() const { return numberOfViews_; }

private:
    enum class LabelType { Title, Description };
    struct RowLayout;

    // A title and the switches whose number it tells: from the first to one past the last.
    struct Heading {
        std::shared_ptr<Label> title;
        std::size_t firstSwitch = 0;
        std::size_t lastSwitch = 0;
    };

    void scrollViewDidScroll(ScrollView& scrollView) override;

    void createScrollView();
    void parseCustomisation(const JSONValue& object);
    void addMainDescription(const std::string& text);
    void addMainPrivacyPolicy(const JSONValue& information);
    void addGlobalCategory();
    void addCategories();
    std::vector<std::int32_t> addSubCategories(const JSONValue& category, std::int32_t parentID);
    std::shared_ptr<Switch> addCategoryRow(const JSONValue& category,
                                           const std::shared_ptr<Label>& section);
    std::shared_ptr<Switch> addRow(const JSONValue& object, std::int32_t categoryID,
                                   const std::shared_ptr<Label>& section);
    void addPrivacyPolicyButton(const JSONValue& object, std::string_view horizontalFormat);
    void addLink(const JSONValue& object, const std::string& name);
    void attachRowConstraints(const RowLayout& layout);
    void arrangeViewsVertically();
    void applyBackground();
    void countSwitches() const;

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
    std::shared_ptr<Row> row_; // the one being built
    std::vector<Heading> headings_;
};

} // namespace vx
