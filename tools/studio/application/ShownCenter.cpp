// The two privacy centers, behind one face.

#include "tools/studio/application/ShownCenter.h"

#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXPopUpContentView.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tools::studio {

namespace {

class CategoryCenter : public ShownCenter {
public:
    ViewController& controller() override { return center_; }

    Choices choices() const override {
        Choices choices;
        for (const auto& [name, view] : center_.viewsDictionary())
            if (const auto* control = viewAs<Switch>(*view); control && control->tag() != 0)
                choices[numberedKey(kVXCategoryPrefix, control->tag())] =
                    consentValue(control->on());
        return choices;
    }

    const char* choicesQuestion() const override { return "screen"; }
    const ViewsDictionary& names() const override { return center_.viewsDictionary(); }
    ScrollView* popup() const override { return nullptr; }
    std::optional<std::string> leaveText() const override { return center_.getSaveButtonText(); }
    bool closesItself() const override { return false; }

private:
    VXPrivacyCenterViewController center_;
};

class IABCenter : public ShownCenter {
public:
    explicit IABCenter(std::int32_t first) { center_.setFirstScreen(first); }

    ViewController& controller() override { return center_; }

    Choices choices() const override {
        const auto& saved = center_.savedConsent();
        return {saved.begin(), saved.end()};
    }

    const char* choicesQuestion() const override { return "model"; }

    const ViewsDictionary& names() const override {
        const auto& screen = center_.currentScreen();
        return screen ? screen->viewsDictionary() : center_.viewsDictionary();
    }

    ScrollView* popup() const override {
        const auto& popup = center_.popupContentView();
        return popup && popup == center_.currentScreen() ? popup->scrollView().get() : nullptr;
    }

    std::optional<std::string> leaveText() const override { return {}; }
    bool closesItself() const override { return true; }

private:
    VXIABPrivacyCenterViewController center_;
};

} // namespace

ShownCenter::~ShownCenter() = default;

std::unique_ptr<ShownCenter> categoryCenter() {
    return std::make_unique<CategoryCenter>();
}

std::unique_ptr<ShownCenter> iabCenter(std::int32_t first) {
    return std::make_unique<IABCenter>(first);
}

} // namespace vx::tools::studio
