// Any vendor list, configured vendors and publisher restrictions, from registration over accept-all
// and refuse-all and every control of a screen, which the input's length chooses, to the TC string,
// which must be one that can be read again. A list of format 3 meets the framework in force, which
// may refuse to make one.

#include <variant>
#include <vector>

#include "fuzz/Input.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;
using fuzz::require;

void requireReadable(const recording::Event& event, services::TCFProfile profile) {
    const auto text = event.find("tc");
    if (text == event.end())
        return;
    const auto written = text->get<std::string>();
    if (profile == services::TCFProfile::Specified || !written.empty())
        require(std::holds_alternative<services::tcf::TCModel>(services::tcf::decode(written)));
}

services::TCFProfile profileFor(const std::string& list) {
    const JSONValue format = JSONValue::parse(list)["gvlSpecificationVersion"];
    return format.integerValue() == 3 ? services::TCFProfile::InForce
                                      : services::TCFProfile::Specified;
}

void askForLists() {
    VXIABPrivacyCenterViewController center;
    center.loadIABWithoutPC();
    for (const char* section : {"purposes", "specialPurposes", "features", "specialFeatures"})
        center.keysToDisplay(section);
    for (const std::int32_t number : {10001, 11001, 12001, 13001}) {
        center.setFilter(number);
        center.vendorsToDisplay();
    }
}

// A touch may change the tree or replace it, so the list is a copy.
void touchAll(View& view) {
    gridPlan(view, 375);
    for (const auto& each : std::vector(view.subviews())) {
        touchAll(*each);
        touch(*each);
    }
}

void touchDetails(VXIABPrivacyCenterViewController& center) {
    const auto list = center.vendorContentView();
    for (const auto& detail : list->detailBtns()) {
        touch(*detail->originalBtn());
        touch(*detail->originalBtn());
        list->setCurrentDetail(detail);
        detail->displayWithController(center);
        center.displayVendorDetail();
    }
    touchAll(*center.view());
}

// One screen a run, since all of them take three times as long.
void touchScreen(std::size_t which) {
    VXIABPrivacyCenterViewController center; // nobody presents it, so it stays
    center.viewDidLoad();
    center.viewDidAppear(false);
    if (which == 1)
        center.displayPurposeScreen();
    else if (which == 2)
        center.displayVendorList();
    touchAll(*center.view()); // expands
    if (which == 2)
        touchDetails(center);
    center.viewWillDisappear(false);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [list, vendors, restrictions] = fuzz::parts<3>(fuzz::text(data, size));
    const recording::Event configuration = {{"information", {{"vendors", vendors}}}};
    const services::TCFProfile profile = profileFor(list);
    recording::World world(
        {.files = {{"vendor-list", list},
                   {"privacy",
                    configuration.dump(-1, ' ', true, recording::Event::error_handler_t::replace)},
                   {"VXIABPublisherRestrictions", restrictions}},
         .iab = true,
         .tcf = {.profile = profile, .publisherCountry = "FR"}},
        [profile](const recording::Event& event) { requireReadable(event, profile); });
    world.engine().setSiteID(12, 5);
    world.engine().useCustomPublisherRestrictions();
    world.engine().setGeneratePublisherTC(true);
    world.engine().acceptAllConsent();
    askForLists();
    touchScreen(size % 3);
    world.engine().refuseAllConsent();
    return 0;
}
