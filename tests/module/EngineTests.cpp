#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/testing/World.h"

// What a session cannot show: callbacks that act in the middle of an operation, several objects
// beside each other. All else about the engine is in the scripted sessions.

namespace {

using namespace vx;
using recording::World;

const ConsentDictionary kAccepted{{"PRIVACY_CAT_1", "1"}, {"PRIVACY_CAT_2", "0"}};

TEST(Callbacks, AnswerEveryOperationOfTheProtocolUnlessOverridden) {
    const VXPrivacyCallbacks callbacks;
    for (const std::string operation : {"consentUpdated", "consentOutdated",
                                        "significantChangesInPrivacy", "consentCategoryChanged"}) {
        EXPECT_TRUE(callbacks.respondsTo(operation)) << operation;
        EXPECT_TRUE(callbacks.respondsTo(operation + ":")) << operation;
    }
    for (const char* operation : {"", ":", "consentUpdated::", "consentupdated", "init"})
        EXPECT_FALSE(callbacks.respondsTo(operation)) << operation;
}

struct LeavesDuringTheCall : VXPrivacyCallbacks {
    void consentUpdated(const ConsentDictionary& consent) override {
        VXMobilePrivacy::sharedInstance().registerCallback(nullptr);
        sizes.push_back(consent.size()); // this object must still be there
    }
    std::vector<std::size_t> sizes;
};

TEST(Callbacks, MayReplaceThemselvesDuringTheCall) {
    World world;
    world.engine().setSiteID(12, 5);
    world.engine().registerCallback(std::make_shared<LeavesDuringTheCall>());
    world.engine().saveConsent(kAccepted);
    EXPECT_EQ(world.engine().callback(), nullptr);
}

struct AsksAndSavesAgain : VXPrivacyCallbacks {
    void consentUpdated(const ConsentDictionary&) override {
        firstAnswer.push_back(VXPrivacyAPI::isCategoryAccepted(1));
        if (firstAnswer.size() == 1)
            VXMobilePrivacy::sharedInstance().saveConsent({{"PRIVACY_CAT_1", "0"}});
        else if (forgets)
            VXMobilePrivacy::sharedInstance().resetSavedConsent();
    }
    bool forgets = false;
    std::vector<bool> firstAnswer;
};

TEST(Callbacks, SeeTheNewStateAndMaySaveAgain) {
    World world;
    auto callback = std::make_shared<AsksAndSavesAgain>();
    world.engine().setSiteID(12, 5);
    world.engine().registerCallback(callback);
    world.engine().saveConsent(kAccepted);
    EXPECT_EQ(callback->firstAnswer, (std::vector<bool>{true, false}));
    EXPECT_EQ(world.store().get(kVXPrivacyConsent), "0");
    EXPECT_EQ(world.store().get(kVXSavedCategories), "PRIVACY_CAT_1;");
    EXPECT_EQ(world.engine().privacyState(), 2);
}

TEST(Callbacks, SaveAndForgetLaterThanTheSaveThatCalledThem) {
    for (const bool forgets : {false, true}) {
        SCOPED_TRACE(forgets);
        World world({.iab = true});
        auto callback = std::make_shared<AsksAndSavesAgain>();
        callback->forgets = forgets;
        world.engine().setSiteID(12, 5);
        world.engine().registerCallback(callback);
        world.engine().saveConsent({{"PRIVACY_CAT_1", "1"}, {"PRIVACY_VEN_1001", "1"}});
        EXPECT_EQ(world.iab().getCreatedDate().empty(), forgets); // of the TC string that is stored
        EXPECT_EQ(world.engine().maxVendorID(), 0);
    }
}

struct AcceptsWhatChanged : VXPrivacyCallbacks {
    void consentCategoryChanged() override { VXMobilePrivacy::sharedInstance().acceptAllConsent(); }
};

TEST(Callbacks, MeetTheNewDocumentWhenTheyHearOfIt) {
    World world({.files = {{"privacy", R"({"categories":[{"ID":"1"}]})"}}});
    world.engine().registerCallback(std::make_shared<AcceptsWhatChanged>());
    world.engine().setSiteID(12, 5);
    world.documents().install("privacy", R"({"categories":[{"ID":"2"},3,"4",{"ID":"5"}]})");
    EXPECT_EQ(world.store().get(kVXSavedCategories), "PRIVACY_CAT_2;PRIVACY_CAT_5;");
}

struct Throws : VXPrivacyCallbacks {
    void consentUpdated(const ConsentDictionary&) override { throw std::runtime_error("no"); }
};

TEST(Callbacks, OneThatThrowsLeavesTheDecisionAsItWas) {
    World world;
    world.engine().setSiteID(12, 5);
    const auto before = world.store().entries();
    world.engine().registerCallback(std::make_shared<Throws>());
    EXPECT_THROW(world.engine().saveConsent(kAccepted), std::runtime_error);
    EXPECT_EQ(world.store().entries(), before);
    world.engine().registerCallback(nullptr);
    world.engine().saveConsent(kAccepted);
    EXPECT_EQ(world.store().get(kVXPrivacyConsent), "1");
}

TEST(Engine, SendsThroughTheCenterItWasGivenAndListensOnTheOldOne) {
    World world;
    world.engine().setSiteID(12, 5);
    std::vector<recording::Event> sent;
    recording::RecordingNotificationCenter other(
        [&](const recording::Event& event) { sent.push_back(event); });
    world.engine().changeNotificationCenter(other);
    world.engine().saveConsent(kAccepted);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0]["send"]["name"], "VXNotification_StartingTheSDK");
    EXPECT_EQ(sent[1]["send"]["name"], "VXNotification_HTTPRequest");
    platform().notifications.post({"VXNotification_ConfigurationChangedprivacy", nullptr,
                                   Notification::UserInfo{{"resetSave", "yes"}}});
    EXPECT_EQ(world.store().get(kVXPrivacyConsent), "");
}

TEST(Engine, IsOneForEachWorld) {
    {
        World world;
        world.engine().setSiteID(12, 5);
        EXPECT_EQ(&world.engine(), &VXMobilePrivacy::sharedInstance());
    }
    World world;
    EXPECT_EQ(world.engine().clientSiteID(), 0);
}

TEST(Engine, TakesSavedListsApartAndPutsThemTogether) {
    World world({.store = {{"SAVED_VENDORS", "PRIVACY_VEN_1;PRIVACY_CAT_2;PRIVACY_VEN_3;"},
                           {"PRIVACY_VEN_1", "1"},
                           {"PRIVACY_CAT_2", "1"},
                           {"PRIVACY_VEN_3", "1"}}});
    EXPECT_EQ(VXMobilePrivacy::addToHit(kVXSavedVendors), "1,3");
    EXPECT_EQ(VXMobilePrivacy::addToHit(kVXSavedFeatures), "");
    std::vector<std::string> keys = {"before"};
    VXMobilePrivacy::appendByParsing("PRIVACY_CAT_1;", keys);
    VXMobilePrivacy::appendByParsing("", keys);
    VXMobilePrivacy::appendByParsing(std::nullopt, keys);
    EXPECT_EQ(keys, (std::vector<std::string>{"before", "PRIVACY_CAT_1", ""}));
    const ConsentDictionary consent{{"PRIVACY_CAT_1", "1"}, {"OTHER_1", "0"}};
    EXPECT_TRUE(VXMobilePrivacy::getCustomCategories(consent, kVXCategoryPrefix));
    EXPECT_EQ(world.store().get(kVXSavedCategories), "PRIVACY_CAT_1;");
    EXPECT_FALSE(VXMobilePrivacy::getCustomCategories(consent, "OTHER_"));
    EXPECT_EQ(world.store().get("OTHER_1"), "0");
    EXPECT_EQ(world.store().get(kVXSavedCategories), "PRIVACY_CAT_1;");
}

TEST(Engine, DoesTheStepsOfASaveByThemselves) {
    World world({.iab = true, .coreVariables = {{"kVXPredefinedVariable_SDKID", "0f9a"}}});
    world.engine().saveConsentInSDK(kAccepted); // without a tag SDK nothing
    world.engine().setSiteID(12, 5, world.sdk());
    world.engine().saveConsentInSDK({{"PRIVACY_CAT_1", "1"}, {"CUSTOM_1", "1"}});
    EXPECT_EQ(world.sdkData(), (recording::Texts{{"PRIVACY_CAT_1", "1"}}));
    world.engine().saveConsentStringV2({{"PRIVACY_VEN_1024", "1"}});
    EXPECT_EQ(world.engine().maxVendorID(), 12);
    EXPECT_EQ(world.engine().privacyState(), 0);
    EXPECT_FALSE(VXPrivacyAPI::isConsentAlreadyGiven());
    world.engine().saveInSharedPreferences(kAccepted);
    EXPECT_EQ(world.engine().privacyState(), 1);
    EXPECT_EQ(world.store().get(kVXShouldDisplayPrivacyCenter), "1");
    world.clock().setNow(1700000000001);
    VXMobilePrivacy::saveTimeOfConsent();
    EXPECT_EQ(VXPrivacyAPI::getLastTimeConsentWasSaved(), 1700000000001);
    world.clearEvents();
    VXMobilePrivacy::checkPrefixes({{"PRIVACY_CAT_1", "1"}, {"CUSTOM_1", "1"}});
    EXPECT_EQ(world.events().size(), 1U);
    EXPECT_EQ(world.engine().resolveUserID(), "0f9a");
    world.engine().setConsentUser("alice");
    EXPECT_EQ(world.engine().resolveUserID(), "alice");
}

// In one process of its own, for what is missed before is told to whoever comes next.
TEST(Engine, AnswersFromNothingWithoutARuntimeAndIgnoresASecondOne) {
    EXPECT_FALSE(VXPrivacyAPI::isCategoryAccepted(1));
    EXPECT_TRUE(VXPrivacyAPI::shouldDisplayPrivacyCenter());
    VXMobilePrivacy::sharedInstance().setSiteID(12, 5);
    VXMobilePrivacy::sharedInstance().acceptAllConsent();
    EXPECT_FALSE(VXPrivacyAPI::isConsentAlreadyGiven());

    World world;
    ASSERT_FALSE(world.events().empty());
    EXPECT_EQ(world.events().front()["log"][0], kLogProblem);
    world.engine().setSiteID(12, 5);
    world.clearEvents();
    {
        const Runtime second(platform());
        EXPECT_EQ(world.events().front()["log"][0], kLogProblem);
        EXPECT_EQ(world.engine().clientSiteID(), 12);
    }
    EXPECT_EQ(&world.engine(), &VXMobilePrivacy::sharedInstance());
    EXPECT_EQ(world.engine().clientSiteID(), 12);
}

// For ThreadSanitizer: the engine may be asked for on any thread, while the application's works.
TEST(Engine, IsMadeOnceOnAnyThread) {
    World world({}, [](const recording::Event&) {});
    std::vector<VXMobilePrivacy*> found(4);
    std::vector<std::thread> threads;
    for (VXMobilePrivacy*& each : found)
        threads.emplace_back([&each] { each = &VXMobilePrivacy::sharedInstance(); });
    for (int round = 0; round < 100; ++round)
        platform().notifications.post({"anything", nullptr, {}});
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set(found.begin(), found.end()), std::set{&world.engine()});
}

} // namespace
