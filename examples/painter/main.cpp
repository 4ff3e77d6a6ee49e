// painter DIRECTORY: asks in a terminal, with a painter of its own for the module's screens.
// DIRECTORY has the application's privacy.json; with a vendor-list.json in it too, the center is
// the IAB's.
//
// It reads a command a line: the number of a control, "save", or "leave" without deciding.

#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string>

#include "examples/painter/TextPainter.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

namespace {

constexpr double kWidth = 60 * TextPainter::kPoints;
constexpr double kHeight = 40 * TextPainter::kPoints;

// Hears that the center took itself away.
class Closing : public vx::ViewControllerDelegate {
public:
    bool closed() const { return closed_; }

private:
    void viewControllerDismissed(vx::ViewController&, bool) override { closed_ = true; }
    void viewControllerPopped(vx::ViewController&, bool) override { closed_ = true; }

    bool closed_ = false;
};

bool isNumber(const std::string& text) {
    return !text.empty() && text.size() < 6 && text.find_first_not_of("0123456789") == text.npos;
}

// Shows the center until the user closes it, and saves; who leaves has decided nothing.
void ask(vx::ViewController& center) {
    vx::ViewController home; // the application's own screen
    Closing closing;
    home.presentViewController(center);
    center.setDelegate(&closing);
    center.view()->setSize(kWidth, kHeight);
    center.viewDidLoad();
    TextPainter painter(center.view());
    std::cout << painter.paint();
    center.viewDidAppear(true); // it is laid out and measured, so answers that wait may be given
    for (std::string command; !closing.closed() && command != "save";) {
        if (painter.changed())
            std::cout << painter.paint();
        if (std::cout << "> " << std::flush; !std::getline(std::cin, command) || command == "leave")
            return;
        if (isNumber(command))
            std::cout << painter.touch(std::stoul(command)).value_or("There is no such number")
                      << '\n';
    }
    center.viewWillDisappear(true); // saves
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "painter DIRECTORY\n";
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    vx::services::Services services({.store = directory / "choices.sqlite", .packaged = directory});
    vx::Platform platform = services.platform();
    std::optional<vx::services::TCFLibrary> iab;
    if (std::filesystem::exists(directory / "vendor-list.json"))
        platform.iab = &iab.emplace(platform.store, platform.logger);
    vx::Runtime runtime(platform);
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSwitchDefaultState(false); // only what the user switches on is accepted
    engine.setSiteID({.site = 12, .privacy = 5});

    if (iab) {
        vx::VXIABPrivacyCenterViewController center;
        ask(center);
    } else {
        vx::VXPrivacyCenterViewController center;
        ask(center);
    }
    services.poll();
    for (const std::string& key : vx::VXPrivacyAPI::getAcceptedCategories())
        std::cout << "accepted: " << key << '\n';
}
