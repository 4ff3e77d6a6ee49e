#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/testing/World.h"

// What the sessions of accept-all and refuse-all cannot show of the IAB privacy center's model: the
// lists of its screens, and what becomes of restrictions. All else is in the scripted sessions.

namespace {

using namespace vx;
using recording::World;
using Keys = std::optional<std::vector<std::string>>;
using Center = VXIABPrivacyCenterViewController;

const char* const kVendorList = R"({"vendorListVersion":48,
    "purposes":{"10":{},"1":{},"2":{}}, "specialPurposes":{}, "specialFeatures":{"2":{},"1":{}},
    "vendors":{
    "1":{"id":1,"name":"b","purposes":[3,1],"legIntPurposes":[2,1],"features":[2]},
    "2":{"id":2,"name":"A","purposes":[1],"legIntPurposes":[4],"specialPurposes":[2]},
    "3":{"id":3,"name":"a","purposes":["4",7.9,null,{}],"features":[],"specialFeatures":[1]},
    "4":{"id":4,"name":"0","purposes":[4],"deletedDate":"2020-01-01T00:00:00Z"},
    "5":[], "6":null}})";

class IABModel : public testing::Test {
protected:
    // A center on the vendor list above and a privacy configuration with these vendors.
    std::unique_ptr<Center> centerFor(const std::string& vendors, const char* list = kVendorList) {
        world.reset(); // there is one at a time
        world = std::make_unique<World>(recording::WorldSettings{
            .store = store,
            .files = {{"vendor-list", list},
                      {"privacy", R"({"information":{"vendors":")" + vendors + "\"}}"}},
            .iab = true});
        world->engine().setSiteID(12, 5);
        auto center = std::make_unique<Center>();
        center->viewDidLoad();
        return center;
    }

    recording::Texts store;
    std::unique_ptr<World> world;
};

using IDs = std::vector<std::string>;

// The restrictions in the TC string of the last save.
services::tcf::Restrictions restrictionsIn(const World& world) {
    std::string text;
    for (const recording::Event& event : world.events())
        text = event.value("tc", text);
    return std::get<services::tcf::TCModel>(services::tcf::decode(text)).publisherRestrictions;
}

} // namespace

TEST_F(IABModel, ListsWhatTheConfiguredVendorsDeclare) {
    const auto center = centerFor("1,2");
    EXPECT_EQ(center->purposes()->elements(), (std::vector<std::int32_t>{3, 1}));
    EXPECT_EQ(center->legitimateInterest()->elements(), (std::vector<std::int32_t>{2, 1, 4}));
    EXPECT_EQ(center->keysToDisplay("purposes"), (Keys{{"1", "2", "3", "4"}}));
    EXPECT_EQ(center->keysToDisplay("specialPurposes"), Keys{{"2"}});
    EXPECT_EQ(center->keysToDisplay("features"), Keys{{"2"}});
    EXPECT_EQ(center->keysToDisplay("specialFeatures"), Keys());
}

TEST_F(IABModel, ListsTheWholeSectionWithoutConfiguredVendors) {
    const auto center = centerFor("");
    EXPECT_FALSE(center->purposes());
    EXPECT_EQ(center->keysToDisplay("purposes"), (Keys{{"1", "2", "10"}}));
    EXPECT_EQ(center->keysToDisplay("specialFeatures"), (Keys{{"1", "2"}}));
    EXPECT_EQ(center->keysToDisplay("specialPurposes"), Keys{IDs()});
    EXPECT_EQ(center->keysToDisplay("features"), Keys{IDs()}); // the list lacks them
    const JSONValue vendor = center->JSONDictionary()["vendors"]["1"];
    center->addPurposesFromVendor(vendor); // there is no set to add to
    center->addLegitimateInterestFromVendor(vendor);
    center->saveVendorRestriction();
    EXPECT_FALSE(center->purposes() || center->legitimateInterest());
}

TEST_F(IABModel, ListsVendorsByNameByteByByte) {
    EXPECT_EQ(centerFor("")->vendorsToDisplay(), (IDs{"5", "6", "2", "3", "1"}));
    EXPECT_EQ(centerFor("1,4,2,1,77")->vendorsToDisplay(), (IDs{"4", "2", "1"}));
    EXPECT_EQ(centerFor("", "{}")->vendorsToDisplay(), IDs());
}

TEST_F(IABModel, FiltersTheWholeListAlone) {
    const struct {
        std::int32_t number;
        IDs vendors;
    } table[] = {
        {10001, {"2", "1"}},
        {10002, {"1"}},
        {10004, {"2", "3"}},
        {10007, {"3"}},
        {11002, {"2"}},
        {12002, {"1"}},
        {13001, {"3"}},
        {13999, {}},
        {10999, {}},
        {10000, {"5", "6", "2", "3", "1"}},
        {14000, {"5", "6", "2", "3", "1"}},
        {11000, {"5", "6", "2", "3", "1"}},
    };
    for (const auto& [number, vendors] : table) {
        const auto center = centerFor("");
        center->setFilter(number);
        EXPECT_EQ(center->vendorsToDisplay(), vendors) << number;
    }
    const auto center = centerFor("1,3");
    center->setFilter(11002);
    EXPECT_EQ(center->vendorsToDisplay(), (IDs{"3", "1"}));
}

TEST_F(IABModel, StartsFromTheAcceptedEntries) {
    store = {{"SAVED_CATEGORIES", "PRIVACY_CAT_10001;PRIVACY_CAT_10003;"},
             {"SAVED_VENDORS", "PRIVACY_VEN_1001;"},
             {"PRIVACY_CAT_10001", "1"},
             {"PRIVACY_CAT_10003", "0"},
             {"PRIVACY_VEN_1001", "1"}};
    const auto center = centerFor("1");
    EXPECT_EQ(Center::retrieveSavedConsent(),
              (ConsentDictionary{{"PRIVACY_CAT_10001", "1"}, {"PRIVACY_VEN_1001", "1"}}));
    EXPECT_EQ(*center->savedConsent().find("PRIVACY_VEN_1001"), "1");
    center->actionRefuseAll();
    center->viewWillDisappear(false);
    EXPECT_EQ(world->store().get("PRIVACY_VEN_1001"), "0");
    EXPECT_EQ(world->store().get("PRIVACY_CAT_10003"), "0");
}

TEST_F(IABModel, RestrictionsCountWhileTheApplicationShipsThem) {
    using services::tcf::Restriction;
    world = std::make_unique<World>(recording::WorldSettings{
        .files = {{"vendor-list", kVendorList},
                  {"VXIABPublisherRestrictions",
                   R"({"publisher":{"restrictions":{"1":{"2":0,"3":1},"2":{"4":2}}}})"}},
        .iab = true});
    const auto start = [&] { world->engine().setSiteID(12, 5); };
    const services::tcf::Restrictions shipped = {
        {{1, Restriction::NotAllowed}, {2}},
        {{1, Restriction::RequireConsent}, {3}},
        {{2, Restriction::RequireLegitimateInterest}, {4}}};
    const auto acceptAll = [&] {
        world->engine().acceptAllConsent();
        return restrictionsIn(*world);
    };
    start();
    world->engine().useCustomPublisherRestrictions();
    EXPECT_EQ(acceptAll(), shipped);
    world->relaunch();
    start();
    EXPECT_EQ(acceptAll(), services::tcf::Restrictions());

    world->engine().useCustomPublisherRestrictions();
    Center center; // on the screen while the application resets
    center.viewDidLoad();
    world->engine().resetSavedConsent();
    center.viewWillDisappear(false);
    EXPECT_EQ(restrictionsIn(*world), shipped);
}
