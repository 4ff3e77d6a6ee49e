#include <algorithm>

#include <gtest/gtest.h>

#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/testing/World.h"

using vx::VXPrivacyAPI;
using vx::recording::Event;
using vx::recording::World;

namespace {

const char* const kConfiguration = R"({"information": {"version": 1},
    "categories": [{"ID": "1", "name": "Measurement"}, {"ID": "2", "name": "Advertising"}]})";

} // namespace

TEST(Application, MeasuresWhoAgreed) {
    World world({.files = {{"privacy", kConfiguration}}});
    world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
    world.engine().acceptAllConsent(); // or what your code does when the user says yes
    EXPECT_TRUE(VXPrivacyAPI::isCategoryAccepted(1));
}

TEST(Application, AsksAgainWhenTheAnswerIsOld) {
    World world({.store = {{"PRIVACY_CONSENT", "1"}, {"TIMESTAMP", "1700000000000"}}});
    world.clock().setNow(1700000000000 + vx::kVXConsentExpirationDuration + 1);
    world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
    EXPECT_TRUE(VXPrivacyAPI::shouldDisplayPrivacyCenter());
}

TEST(Application, KeepsTheAnswerOverARestartAndTellsTheTagSDK) {
    World world({.files = {{"privacy", kConfiguration}}});
    world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
    world.engine().saveConsent({{"PRIVACY_CAT_1", "1"}, {"PRIVACY_CAT_2", "0"}});
    EXPECT_EQ(world.store().entries().at("PRIVACY_CAT_2"), "0");
    world.relaunch();
    world.clearEvents();
    world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
    const Event told = {{"sdk", {"addPermanentData", "PRIVACY_CAT_1", "1"}}};
    EXPECT_NE(std::ranges::find(world.events(), told), world.events().end());
}

TEST(Application, AsksAgainAfterASignificantChange) {
    World world({.files = {{"privacy", kConfiguration}}});
    world.engine().registerCallback(world.callbacks({"significantChangesInPrivacy:"})); // or yours
    world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
    world.engine().refuseAllConsent();
    world.documents().install("privacy", R"({"information": {"version": 2,
        "significantChanges": "true"}, "categories": [{"ID": "1"}, {"ID": "2"}]})");
    EXPECT_TRUE(VXPrivacyAPI::shouldDisplayPrivacyCenter());
}
