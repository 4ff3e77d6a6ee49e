#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "tools/system/Files.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/services/sdk/TagSDK.h"

namespace vx::services::test {

TEST(TagSDK, SendsHitsOnlyWhileItIsOn) {
    NotificationCenter center;
    std::vector<std::string> sent;
    TagSDK sdk(center, [&](const TagSDK::Hit& hit) {
        sent.push_back(std::string(hit.data) + " " + hit.permanentData.at("PRIVACY_CAT_1"));
    });
    const auto post = [&](std::string_view name, std::optional<Notification::UserInfo> userInfo) {
        center.post({std::string(name), nullptr, std::move(userInfo)});
    };
    sdk.addPermanentData("PRIVACY_CAT_1", "0");
    EXPECT_FALSE(sdk.accept("before"));
    post(kVXNotification_StartingTheSDK,
         Notification::UserInfo{{std::string(kVXUserInfo_POSTData), "&PRIVACY_CAT_1=0"}});
    EXPECT_EQ(sdk.startData(), "&PRIVACY_CAT_1=0");
    EXPECT_TRUE(sdk.accept("first"));
    sdk.addPermanentData("PRIVACY_CAT_1", "1");
    EXPECT_TRUE(sdk.accept("second"));
    post(kVXNotification_StoppingTheSDK, {});
    EXPECT_FALSE(sdk.accept("after"));
    EXPECT_EQ(sent, (std::vector<std::string>{"first 0", "second 1"}));
    EXPECT_EQ(sdk.sent(), 2U);
    EXPECT_EQ(sdk.dropped(), 2U);
    post(kVXNotification_StartingTheSDK, {});
    EXPECT_EQ(sdk.startData(), "");
}

TEST(TagSDK, ForgetsRemovedData) {
    NotificationCenter center;
    TagSDK sdk(center, [](const TagSDK::Hit&) {});
    sdk.addPermanentData("key", "value");
    EXPECT_EQ(sdk.getPermanentData("key"), "value");
    sdk.removePermanentData("key");
    sdk.removePermanentData("key");
    EXPECT_EQ(sdk.getPermanentData("key"), std::nullopt);
}

TEST(Variables, TheSDKIdentifierIsMadeOnceForAnInstallation) {
    const TemporaryDirectory directory;
    const auto identifier = [&](const char* store) {
        World world(directory / store);
        return *world.services.platform().coreVariables.get(kVXPredefinedVariable_SDKID);
    };
    const std::string made = identifier("one.db");
    const std::string shape = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    ASSERT_EQ(made.size(), shape.size()) << made;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const std::string allowed = shape[i] == 'x'   ? "0123456789abcdef"
                                    : shape[i] == 'y' ? "89ab"
                                                      : std::string(1, shape[i]);
        EXPECT_NE(allowed.find(made[i]), std::string::npos) << made;
    }
    EXPECT_EQ(identifier("one.db"), made);
    EXPECT_NE(identifier("another.db"), made);
}

TEST(Variables, TheApplicationAddsItsOwn) {
    const TemporaryDirectory directory;
    Settings settings;
    settings.userAgent = "Shop/7";
    settings.variables = [](std::string_view name) {
        return name == "customer" ? std::optional<std::string>("42") : std::nullopt;
    };
    World world(directory / "store.db", settings);
    const Platform platform = world.services.platform();
    EXPECT_EQ(platform.predefinedVariables.get("customer"), "42");
    EXPECT_EQ(platform.coreVariables.get(kVXPredefinedVariable_UserAgent), "Shop/7");
    EXPECT_EQ(platform.coreVariables.get("unknown"), std::nullopt);
}

TEST(Log, LeavesOutWhatIsBelowItsLevelAndMakesALineOfTheRest) {
    const TemporaryDirectory directory;
    Settings settings;
    settings.store = directory / "store.db";
    settings.logFile = directory / "log.txt";
    settings.logLevel = kLogNote;
    Services services(settings);
    services.platform().logger.log("below", 2);
    services.platform().logger.log("problem {} %s\xff\n[4] forged\x1b[2J\x7f", 4);
    const std::string text = tools::system::readFile(*settings.logFile);
    EXPECT_EQ(text.find("below"), std::string::npos);
    EXPECT_NE(text.find("[4] problem {} %s\xff\\n[4] forged\\x1b[2J\\x7f\n"), std::string::npos)
        << text;
}

} // namespace vx::services::test
