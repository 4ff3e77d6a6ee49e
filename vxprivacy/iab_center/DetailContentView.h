#pragma once

#include <memory>

#include "vxprivacy/iab_center/ContentView.h"

namespace vx {

/// What the two screens of details have in common: they are built when they are first shown, and
/// have a button back. Before that they serve the list as records, and have no views at all.
class DetailContentView : public ContentView,
                          public std::enable_shared_from_this<DetailContentView> {
public:
    /// Builds the screen; later calls change nothing.
    void displayWithController(VXIABPrivacyCenterViewController& controller);
    /// Leads back to the list.
    virtual void backSelector() = 0;

    /// The list's button by which this is found; null until the list sets it.
    const std::shared_ptr<Button>& originalBtn() const { return originalBtn_; }
    void setOriginalBtn(std::shared_ptr<Button> button) { originalBtn_ = std::move(button); }
    /// Null before the screen is built, or where it has no text.
    const std::shared_ptr<Button>& backBtn() const { return backBtn_; }

protected:
    virtual void displayInformation() = 0;

private:
    void addBackButton();
    void customiseButtons();
    void arrangeViews();

    std::shared_ptr<Button> originalBtn_;
    std::shared_ptr<Button> backBtn_;
};

} // namespace vx
