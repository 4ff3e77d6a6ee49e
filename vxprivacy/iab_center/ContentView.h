#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/VisualFormat.h"

namespace vx {

/// What every screen of the IAB privacy center has: a container with a scroll view, texts stacked
/// in it, and the names of its views. It keeps no choices: they are the controller's.
///
/// Made with `std::make_shared` by its controller or by another screen, and outlived by the
/// controller. User-interface thread.
class ContentView {
public:
    enum class Kind { PopUp, Purposes, PurposeDetail, Vendors, VendorDetail };

    virtual ~ContentView();
    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;

    virtual Kind kind() const = 0;

    /// Null while the screen is not built.
    VXIABPrivacyCenterViewController* viewController() const { return viewController_; }
    /// The root of the screen, what scrolls in it, and the scroll view; null while not built.
    const std::shared_ptr<View>& containerView() const { return containerView_; }
    const std::shared_ptr<View>& scrollContainerView() const { return scrollContainerView_; }
    const std::shared_ptr<ScrollView>& scrollView() const { return scrollView_; }
    /// Views by layout name. A name belongs to the view that took it last.
    const ViewsDictionary& viewsDictionary() const { return viewsDictionary_; }
    /// Layout names of what is stacked in the scroll view, in the order in which it was built.
    const std::vector<std::string>& UIObjects() const { return UIObjects_; }

    // For those who build a part of the screen.

    /// Names a view, for formats.
    void enter(std::string_view name, std::shared_ptr<View> view);
    /// Appends a name to `UIObjects`.
    void stack(std::string name) { UIObjects_.push_back(std::move(name)); }
    /// Attaches the constraints of a format over the screen's names and the controller's metrics.
    void attach(std::string_view format, View& view, int options = 0) const;
    /// `format` with the controller's `numberOfViews` in place of "%d".
    std::string numbered(std::string_view format) const;
    /// A label of the controller's, with a name, in `parent`.
    std::shared_ptr<Label> addLabel(VXIABPrivacyCenterViewController::LabelType type,
                                    const std::optional<std::string>& text, std::string_view name,
                                    View& parent);
    /// Makes `view` an item of the list that `section` heads, and names it by `title`.
    static void makeItem(View& view, const std::shared_ptr<Label>& title,
                         const std::shared_ptr<Label>& section);

protected:
    ContentView() = default;

    /// Takes the controller; first of all.
    void begin(VXIABPrivacyCenterViewController& controller) { viewController_ = &controller; }
    const VXPrivacyConfiguration& configuration() const {
        return *viewController_->configuration();
    }
    /// The configuration's colour of this name; null when it has none.
    const Colour* colour(std::string_view name) const;

    /// Makes the root, in the configured colour or else in `ground`.
    void createContainer(const std::optional<Colour>& ground);
    void createScrollView();
    /// Adds a bordered box to what is stacked in the scroll view.
    std::shared_ptr<View> generateContainerForName(std::string_view name);
    /// Adds a label to what is stacked in the scroll view, from margin to margin.
    std::shared_ptr<Label> stackLabel(VXIABPrivacyCenterViewController::LabelType type,
                                      const std::optional<std::string>& text,
                                      const std::string& name);
    /// Adds the heading of the screen.
    std::shared_ptr<Label> stackTitle(std::string_view textPath, const std::string& name);
    /// A button of the bar `bar`, with a name; without a text where there is none.
    std::shared_ptr<Button> addBarButton(std::string_view textPath, std::string_view name,
                                         View& bar, std::function<void()> action);
    /// Gives a button of a bar its colours and font.
    void customise(Button& button) const;
    /// Stacks what `UIObjects` names.
    void arrangeVertically() const;
    /// The text of a button without which the screen does; the log hears where it is missing.
    std::optional<std::string> textOfOptionalButton(std::string_view path) const;

private:
    VXIABPrivacyCenterViewController* viewController_ = nullptr;
    ViewsDictionary viewsDictionary_;
    std::vector<std::string> UIObjects_;
    std::shared_ptr<View> containerView_;
    std::shared_ptr<View> scrollContainerView_;
    std::shared_ptr<ScrollView> scrollView_;
};

} // namespace vx
