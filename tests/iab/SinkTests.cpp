#include <map>
#include <variant>

#include <gtest/gtest.h>

#include "tests/iab/IABApplication.h"

// What the sink is told, against what the store has.

namespace {

using namespace vx;
using tests::IABApplication;

using Typed = std::map<std::string, std::variant<std::int32_t, std::string>>;

// Expects that the store has all that it is told already.
struct Mirror : services::TCDataSink {
    void setNumber(std::string_view key, std::int32_t value) override {
        EXPECT_EQ(store->get(key), std::to_string(value)) << key;
        entries.insert_or_assign(std::string(key), value);
    }
    void setText(std::string_view key, std::string_view value) override {
        EXPECT_EQ(store->get(key), value) << key;
        entries.insert_or_assign(std::string(key), std::string(value));
    }
    void remove(std::string_view key) override {
        EXPECT_EQ(store->get(key), std::nullopt) << key;
        entries.erase(std::string(key));
    }

    const KeyValueStore* store = nullptr;
    Typed entries;
};

// Numbers where the IAB has numbers.
Typed inTypesOfTheIAB(const recording::Texts& stored) {
    Typed typed(stored.begin(), stored.end());
    for (const char* name : {"CmpSdkID", "CmpSdkVersion", "PolicyVersion", "gdprApplies",
                             "PurposeOneTreatment", "UseNonStandardTexts", "UseNonStandardStacks"})
        if (const auto entry = typed.find(std::string("IABTCF_") + name); entry != typed.end())
            entry->second = std::stoi(std::get<std::string>(entry->second));
    return typed;
}

class TCDataSink : public testing::Test {
protected:
    TCDataSink() { mirror.store = &application.store; }

    void expectLikeTheStore() {
        EXPECT_EQ(mirror.entries, inTypesOfTheIAB(application.store.entries()));
    }

    Mirror mirror;
    IABApplication application{{}, &mirror};
};

} // namespace

TEST_F(TCDataSink, HasWhatTheStoreHas) {
    application.library.setCMPSDKID();
    expectLikeTheStore();
    application.library.setPublisherRestrictions({{"1", "11012"}});
    save(application, true);
    expectLikeTheStore();
    EXPECT_EQ(mirror.entries.size(), 19u);
    application.library.setPublisherRestrictions({});
    save(application, false);
    expectLikeTheStore();
    application.library.saveConsentString("");
    expectLikeTheStore();
    application.library.resetTCData();
    EXPECT_TRUE(mirror.entries.empty());
}

// A process that dies in a save leaves the store as it was, and the mirror ahead of it.
TEST_F(TCDataSink, IsMendedAtStartUp) {
    save(application, false);
    mirror.entries = {{"IABTCF_TCString", "never saved"}, {"IABTCF_PublisherRestrictions63", "0"}};
    application.library.setCMPSDKID();
    expectLikeTheStore();
}
