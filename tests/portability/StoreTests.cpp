// What the services' store asks of the system, on every system.

#include <chrono>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "vxprivacy/services/core/Services.h"

namespace {

using namespace vx;
namespace fs = std::filesystem;

class Store : public testing::Test {
protected:
    ~Store() override { fs::remove_all(directory); }

    // What a process does with the store between its start and its end.
    template <class Action>
    void run(Action action) {
        services::Services services({.store = file, .logLevel = 6});
        action(services.platform().store);
    }

    const fs::path directory =
        fs::temp_directory_path() /
        ("vxprivacy-" +
         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    const fs::path file = directory / fs::path(u8"d\u00e9j\u00e0 \u4e2d") / "choices.sqlite";
};

TEST_F(Store, KeepsWhatWasSavedUnderAnyName) {
    run([](KeyValueStore& store) {
        StoreTransaction transaction(store);
        store.set("PRIVACY_CAT_1", "1");
        store.set("text", "\xff d\xc3\xa9j\xc3\xa0");
        transaction.commit();
    });
    EXPECT_GT(fs::file_size(file), 0U);
    run([](KeyValueStore& store) {
        EXPECT_EQ(store.get("PRIVACY_CAT_1"), "1");
        EXPECT_EQ(store.get("text"), "\xff d\xc3\xa9j\xc3\xa0");
    });
}

TEST_F(Store, IsSharedByTwo) {
    run([this](KeyValueStore& one) {
        run([](KeyValueStore& other) { other.set("PRIVACY_CAT_1", "1"); });
        one.set("PRIVACY_CAT_2", "0");
    });
    run([](KeyValueStore& store) {
        EXPECT_EQ(store.get("PRIVACY_CAT_1"), "1");
        EXPECT_EQ(store.get("PRIVACY_CAT_2"), "0");
    });
}

TEST_F(Store, MovesADamagedFileAside) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << std::string(10'000, 'x');
    run([](KeyValueStore& store) { store.set("PRIVACY_CAT_1", "1"); });
    EXPECT_EQ(fs::file_size(fs::path(file) += ".damaged-1"), 10'000U);
    run([](KeyValueStore& store) { EXPECT_EQ(store.get("PRIVACY_CAT_1"), "1"); });
}

} // namespace
