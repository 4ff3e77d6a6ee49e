// A store that another process changes, takes away or locks while the engine works on it.

#include <chrono>
#include <optional>

#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "tests/services/faults/StoreFaults.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/services/sdk/TagSDK.h"

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;
using Text = std::optional<std::string>;

const ConsentDictionary kAccepted{{"PRIVACY_CAT_1", "1"}, {"PRIVACY_CAT_2", "1"}};
const ConsentDictionary kRefused{{"PRIVACY_CAT_1", "0"}, {"PRIVACY_CAT_2", "0"}};

struct LastConsent : VXPrivacyCallbacks {
    void consentUpdated(const ConsentDictionary& consent) override { heard.push_back(consent); }
    std::vector<ConsentDictionary> heard;
};

// A process with the engine in it.
struct EngineProcess {
    explicit EngineProcess(const fs::path& store) : world(store) {
        engine().registerCallback(callback);
        engine().setSiteID(12, 5, sdk);
    }
    VXMobilePrivacy& engine() { return VXMobilePrivacy::sharedInstance(); }
    void saveAt(std::uint64_t time, const ConsentDictionary& consent) {
        world.clock.setNow(time);
        engine().saveConsent(consent);
    }

    World world;
    Runtime runtime{world.services.platform()};
    std::shared_ptr<TagSDK> sdk =
        std::make_shared<TagSDK>(world.services.platform().notifications, [](const auto&) {});
    std::shared_ptr<LastConsent> callback = std::make_shared<LastConsent>();
};

// What another process writes into a store.
class Elsewhere {
public:
    explicit Elsewhere(const fs::path& file) : world_(file) {}

    void save(std::uint64_t time, const std::string& value, const std::string& id = "1") {
        StoreTransaction transaction(world_.store());
        const std::string key = "PRIVACY_CAT_" + id;
        for (const auto& [name, text] : std::vector<std::pair<std::string_view, std::string>>{
                 {key, value},
                 {kVXSavedCategories, key + ";"},
                 {kVXPrivacyConsent, value},
                 {kVXConsentTime, std::to_string(time)},
                 {kVXShouldDisplayPrivacyCenter, "0"}})
            world_.store().set(name, text);
        transaction.commit();
    }
    void reset() {
        StoreTransaction transaction(world_.store());
        for (std::string_view key : {std::string_view("PRIVACY_CAT_1"), kVXPrivacyConsent,
                                     kVXSavedCategories, kVXSavedVendors, kVXSavedFeatures})
            world_.store().set(key, "");
        transaction.commit();
    }
    Text get(std::string_view key) { return world_.store().get(key); }

private:
    World world_;
};

class SharedStore : public testing::Test {
protected:
    Text inFile(std::string_view key) { return Elsewhere(file).get(key); }

    TemporaryDirectory directory;
    const fs::path file = directory / "private/choices.db";
};

} // namespace

TEST_F(SharedStore, EachSaveGoesWithItsOwnGlobalConsent) {
    EngineProcess application(file);
    application.saveAt(1000, kRefused);
    Elsewhere(file).save(2000, "1");
    application.saveAt(3000, kRefused); // to this process nothing changed
    EXPECT_EQ(inFile("PRIVACY_CAT_1"), "0");
    EXPECT_EQ(inFile(kVXPrivacyConsent), "0");

    application.world.store().set(kVXPrivacyConsent, "overwritten by the application itself");
    application.saveAt(4000, kRefused);
    EXPECT_EQ(inFile(kVXPrivacyConsent), "overwritten by the application itself");
}

TEST_F(SharedStore, APendingChoiceGivesWayToALaterOneAlone) {
    struct Case {
        const char* what;
        std::uint64_t elsewhere;
        const char* kept;
    };
    for (const auto& [what, elsewhere, kept] :
         {Case{"saved later", 6000, "0"}, Case{"saved earlier", 4000, "1"},
          Case{"saved in the future, by a clock that is wrong", 1'700'000'000'000, "1"}}) {
        SCOPED_TRACE(what);
        fs::remove_all(file.parent_path());
        EngineProcess application(file);
        application.saveAt(1000, kRefused);
        {
            const LockedFile lock(file);
            application.saveAt(5000, kAccepted);
            EXPECT_TRUE(application.sdk->isOn());
            application.world.store().set("the application's", "own");
        }
        application.world.clock.setNow(7000);
        Elsewhere(file).save(elsewhere, "0", "3");
        EXPECT_TRUE(application.world.pollUntil(
            [&] { return application.world.log.count("written again") == 1; }));
        application.world.services.poll();
        EXPECT_EQ(inFile(kVXPrivacyConsent), kept);
        EXPECT_EQ(inFile("PRIVACY_CAT_1"), std::string(kept) == "1" ? "1" : "0");
        EXPECT_EQ(inFile("the application's"), "own");
        EXPECT_EQ(application.sdk->isOn(), std::string(kept) == "1");
        EXPECT_EQ(application.engine().privacyState(), std::string(kept) == "1" ? 1 : 2);
        if (std::string(kept) == "0") {
            EXPECT_EQ(application.callback->heard.back(),
                      (ConsentDictionary{{"PRIVACY_CAT_3", "0"}}));
            EXPECT_EQ(application.sdk->getPermanentData("PRIVACY_CAT_3"), "0");
            EXPECT_EQ(application.sdk->getPermanentData("PRIVACY_CAT_1"), Text())
                << "it is no longer listed";
        }
    }
}

TEST_F(SharedStore, WhatAnotherProcessDidIsTakenOverInPoll) {
    EngineProcess application(file);
    application.saveAt(1000, kAccepted);
    Elsewhere(file).reset();
    application.world.store().set("anything", "1"); // which reads what others wrote
    EXPECT_EQ(application.engine().privacyState(), 1) << "not in the middle of something else";
    application.world.services.poll();
    EXPECT_EQ(application.engine().privacyState(), 0);
    EXPECT_TRUE(application.callback->heard.back().empty());
    EXPECT_EQ(application.sdk->getPermanentData("PRIVACY_CAT_1"), Text());
    const std::size_t heard = application.callback->heard.size();
    application.world.store().set("anything", "2");
    application.world.services.poll();
    EXPECT_EQ(application.callback->heard.size(), heard) << "nothing changed since";
}

TEST_F(SharedStore, AFileTakenAwayIsWrittenAgain) {
    struct Case {
        const char* what;
        std::function<void(const fs::path&)> take;
    };
    for (const auto& [what, take] :
         {Case{"deleted", [](const fs::path& it) { fs::remove(it); }},
          Case{"renamed", [](const fs::path& it) { fs::rename(it, fs::path(it) += ".away"); }},
          Case{"with its directory",
               [](const fs::path& it) { fs::remove_all(it.parent_path()); }}}) {
        SCOPED_TRACE(what);
        fs::remove_all(file.parent_path());
        EngineProcess application(file);
        application.saveAt(1000, kAccepted);
        take(file);
        application.saveAt(2000, kRefused);
        application.world.store().set("another", "1");
        for (const auto& [key, value] : kRefused)
            EXPECT_EQ(inFile(key), value) << application.world.log.text();
        EXPECT_EQ(inFile(kVXConsentTime), "2000");
        EXPECT_EQ(inFile(kVXShouldDisplayPrivacyCenter), "0");
    }
}

TEST_F(SharedStore, AStoreThatCannotBeOpenedAtStartIsBelievedWhenItComesBack) {
    Elsewhere(file).save(1'599'000'000'000, "0");
    std::string identifier;
    {
        EngineProcess application(file);
        identifier =
            *application.world.services.platform().coreVariables.get("kVXPredefinedVariable_SDKID");
    }
    const fs::path away = fs::path(file.parent_path()) += ".away";
    fs::rename(file.parent_path(), away);
    writeFile(file.parent_path(), "not a directory");

    EngineProcess application(file);
    EXPECT_TRUE(VXPrivacyAPI::shouldDisplayPrivacyCenter()) << "as far as can be known";
    EXPECT_NE(
        application.world.services.platform().coreVariables.get("kVXPredefinedVariable_SDKID"),
        identifier);
    fs::remove(file.parent_path());
    fs::rename(away, file.parent_path());
    EXPECT_TRUE(application.world.pollUntil(
        [&] { return application.world.log.count("written again") == 1; }));
    EXPECT_FALSE(VXPrivacyAPI::shouldDisplayPrivacyCenter());
    EXPECT_EQ(application.engine().privacyState(), 2);
    EXPECT_EQ(
        application.world.services.platform().coreVariables.get("kVXPredefinedVariable_SDKID"),
        identifier);
    EXPECT_EQ(inFile(kVXPrivacyConsent), "0");
}

TEST_F(SharedStore, AFileThatMayBeWrittenAgainIsWritten) {
    Elsewhere(file).save(1'599'000'000'000, "1");
    const ReadOnlyFile readOnly(file);
    EngineProcess application(file);
    EXPECT_TRUE(VXPrivacyAPI::isCategoryAccepted(1));
    application.saveAt(1'600'000'000'000, kRefused);
    EXPECT_EQ(application.world.log.count("cannot be written", 4), 1U)
        << application.world.log.text();
    readOnly.makeWritable();
    EXPECT_TRUE(application.world.pollUntil([&] {
        return application.world.log.count("written again") == 1;
    })) << application.world.log.text();
    EXPECT_EQ(inFile("PRIVACY_CAT_1"), "0");
}

// The bound is generous; that it is kept at all is what counts.
TEST_F(SharedStore, ALockedFileHoldsNothingUp) {
    const auto start = std::chrono::steady_clock::now();
    {
        std::optional<EngineProcess> application(std::in_place, file);
        const LockedFile lock(file);
        for (std::uint64_t time = 1; time <= 10; ++time) {
            application->saveAt(time, kRefused);
            application->world.services.poll();
        }
        application.reset();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace vx::services::test
