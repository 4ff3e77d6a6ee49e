#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

// What an application hears of hosts that it does not name.

namespace {

using namespace vx;
using namespace vx::services;
using namespace vx::services::test;

// An application that starts, and saves what the user chose.
struct SavingApplication : World {
    SavingApplication(const std::filesystem::path& store, const Hosts& hosts, bool iab)
        : World(store, {.store = store, .hosts = hosts}), library(services.platform().store, log),
          runtime([&] {
              Platform platform = services.platform();
              platform.iab = iab ? &library : nullptr;
              return platform;
          }()) {
        VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
        engine.setSiteID(12, 5);
        engine.saveConsent({{"PRIVACY_CAT_10001", "1"}});
        engine.viewConsent();
    }

    TCFLibrary library;
    Runtime runtime;
};

} // namespace

TEST(HostNames, TheVendorListHasNoneUnlessOneIsGiven) {
    const TemporaryDirectory directory;
    const std::string nobody = "http://127.0.0.1:9";
    const Hosts hosts = {nobody, defaultHosts().vendorList, nobody};
    {
        const SavingApplication category(directory / "category.sqlite", hosts, false);
        EXPECT_EQ(category.log.count("host", 4), 0U) << category.log.text();
    }
    const SavingApplication iab(directory / "iab.sqlite", hosts, true);
    EXPECT_EQ(iab.log.count("vendor-list is not downloaded: no host is named for it", 4), 1U);
    EXPECT_EQ(iab.log.count("host", 4), 1U) << iab.log.text();
}

TEST(HostNames, ThatAreEmptyAreSaidOnceAndNotAsked) {
    const TemporaryDirectory directory;
    const SavingApplication application(directory / "store.sqlite", {}, false);
    EXPECT_EQ(application.log.count("privacy is not downloaded: no host is named for it", 4), 1U);
    EXPECT_EQ(application.log.count("no host is named for the consent collector", 4), 1U);
    EXPECT_EQ(application.log.count("host", 4), 2U) << application.log.text();
}
