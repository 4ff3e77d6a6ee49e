#include "bench/StartUpFiles.h"

#include <fstream>

#include "bench/LargeVendorList.h"
#include "bench/MeasuredApplication.h"
#include "vxprivacy/services/core/EntryStore.h"
#include "vxprivacy/services/core/OfflineCopies.h"
#include "vxprivacy/services/core/Outbox.h"
#include "vxprivacy/services/core/ServiceVariables.h"

namespace vx::bench {

namespace {

const std::filesystem::path kConfiguration = PROJECT_ROOT "/samples/category.json";

class NoLog : public Logger {
    void log(std::string_view, int) override {}
};

void saveChoices(const std::filesystem::path& store) {
    services::Services services(settings(store));
    Runtime runtime(services.platform());
    VXMobilePrivacy::sharedInstance().saveConsent(consent(2200));
}

// As if both documents had been downloaded.
void keepCopies(const std::filesystem::path& store, const std::string& configuration,
                const std::string& vendorList) {
    NoLog log;
    services::Database database(store, log);
    const services::ServiceClock clock(nullptr);
    services::EntryStore entries(database, clock, log);
    services::Outbox outbox(database);
    services::OfflineCopies copies(database);
    database.open();
    copies.replace("12/5/privacy", {configuration, "", ""});
    copies.replace("vendor-list", {vendorList, "", ""});
}

} // namespace

StartUpFiles StartUpFiles::make() {
    const std::string configuration = contentOf(kConfiguration);
    const std::string& vendorList = bench::largeVendorList().text;
    StartUpFiles files{freshDirectory("start-up")};
    saveChoices(files.directory / "choices.sqlite");
    keepCopies(files.directory / "choices.sqlite", configuration, vendorList);
    std::ofstream(files.directory / "privacy.json") << configuration;
    std::ofstream(files.directory / "vendor-list.json") << vendorList;
    return files;
}

} // namespace vx::bench
