#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/iab_center/ContentView.h"

namespace vx {

/// The first layer: what is done, what for and by what means, in one page, and up to three buttons.
/// Accepting and refusing everything wait until nearly all of the page was seen. Words that mean
/// the partners lead to the vendor list.
class VXPopUpContentView : public ContentView, private ScrollViewDelegate {
public:
    /// Builds the screen. The controller's model must be loaded.
    explicit VXPopUpContentView(VXIABPrivacyCenterViewController& controller);

    Kind kind() const override { return Kind::PopUp; }

    /// Attaches all constraints of the screen's frame. Each showing attaches them once more, which
    /// changes nothing.
    void arrangeViews();
    /// Enables accepting and refusing where all of the page is seen. They stay enabled.
    void setButtonsState();
    /// The user moved the page, or it got another height: the same, for nearly all of it.
    void scrollViewDidScroll(ScrollView& scrollView) override;

    void actionDisplayDetails();
    void actionAcceptAll();
    void actionRefuseAll();
    /// A tap on a character of a label leads to the vendor list where it is one of the partners
    /// words.
    void openVendorView(const Label& label, std::size_t character);

    const std::shared_ptr<Button>& displayDetailsBtn() const { return displayDetailsBtn_; }
    /// Null where the configuration leaves the button out.
    const std::shared_ptr<Button>& acceptAllBtn() const { return acceptAllBtn_; }
    const std::shared_ptr<Button>& refuseAllBtn() const { return refuseAllBtn_; }

private:
    struct Section;

    void createCategoryList();
    void build(const Section& section);
    void linkPartners(Label& label);
    void createExplanation();
    void createButtons();
    void customiseButtons();
    void enableButtons();

    std::shared_ptr<View> btnContainer_;
    std::shared_ptr<Button> displayDetailsBtn_;
    std::shared_ptr<Button> acceptAllBtn_;
    std::shared_ptr<Button> refuseAllBtn_;
    std::string barFormat_;
};

} // namespace vx
