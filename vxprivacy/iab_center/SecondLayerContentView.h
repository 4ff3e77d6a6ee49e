#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/iab_center/ContentView.h"

namespace vx {

/// What the screens behind the popup have in common: a title, a list, a button to the other list,
/// and a bar with save, accept all and refuse all.
class SecondLayerContentView : public ContentView {
public:
    void actionSaveExit();
    void actionAcceptAll();
    void actionRefuseAll();

    const std::shared_ptr<View>& btnContainer() const { return btnContainer_; }
    const std::shared_ptr<Button>& saveExitBtn() const { return saveExitBtn_; }
    /// Null where the configuration leaves the button out.
    const std::shared_ptr<Button>& acceptAllBtn() const { return acceptAllBtn_; }
    const std::shared_ptr<Button>& refuseAllBtn() const { return refuseAllBtn_; }

protected:
    /// The bar.
    void createButtons();
    /// The button to the other list; null where it has no text.
    std::shared_ptr<Button> createNavigationButton(std::string_view textPath, std::string_view name,
                                                   std::function<void()> action);
    void customiseButtons();
    void arrangeViews();
    /// A button within the list.
    std::shared_ptr<Button> createLink(std::string_view textPath) const;
    /// The row of a switch: its switch and its label, which formats of the caller's put in place.
    struct ConsentRow {
        std::shared_ptr<View> row;
        std::shared_ptr<Switch> consentSwitch;
    };
    ConsentRow createConsentRow(std::string_view rowName, std::int32_t number,
                                std::string_view prefix);

private:
    std::shared_ptr<View> btnContainer_;
    std::shared_ptr<Button> saveExitBtn_;
    std::shared_ptr<Button> acceptAllBtn_;
    std::shared_ptr<Button> refuseAllBtn_;
    std::shared_ptr<Button> navigationBtn_;
    std::string navigationName_;
    std::string barFormat_;
};

} // namespace vx
