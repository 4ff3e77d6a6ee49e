#include "bench/StartUpFiles.h"

#include "bench/Application.h"
#include "services/core/EntryStore.h"
#include "services/core/OfflineCopies.h"
#include "services/core/Outbox.h"

#include <fstream>
#include <iterator>

namespace vx::bench {

namespace {

const std::filesystem::path kConfiguration = PROJECT_ROOT "/samples/category.json";
const std::filesystem::path kVendorList = PROJECT_ROOT "/../shared/data/gvl/vendor-list.json";

class NoLog : public Logger {
    void log(std::string_view, int) override {}
};

std::string read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// As large and as many-membered as the list that is published, about 0.9 MB.
std::string generatedVendorList() {
    std::string list = R"({"gvlSpecificationVersion":2,"vendorListVersion":224,"vendors":{)";
    for (int id = 1; id <= 1000; ++id) {
        const std::string number = std::to_string(id);
        list +=
            (id == 1 ? "\"" : ",\"") + number + R"(":{"id":)" + number + R"(,"name":"Vendor )" +
            number +
            R"(","purposes":[1,3,4,7,9,10],"legIntPurposes":[2,8],"flexiblePurposes":[2,8],)"
            R"("specialPurposes":[1,2],"features":[1,2,3],"specialFeatures":[1],)"
            R"("policyUrl":"https://vendor.example/privacy","cookieMaxAgeSeconds":34128000,)"
            R"("usesCookies":true,"cookieRefresh":false,"usesNonCookieAccess":true,)"
            R"("dataRetention":{"stdRetention":365,"purposes":{"1":30},"specialPurposes":{}},)"
            R"("urls":[{"langId":"en","privacy":"https://vendor.example/en/privacy",)"
            R"("legIntClaim":"https://vendor.example/en/interest"}],)"
            R"("dataDeclaration":[1,2,3,4,6,8,10,11],)"
            R"("deviceStorageDisclosureUrl":"https://vendor.example/disclosure.json","note":")" +
            std::string(180, 'x') + "\"}";
    }
    return list + "}}";
}

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
    services::EntryStore entries(database);
    services::Outbox outbox(database);
    services::OfflineCopies copies(database);
    database.open();
    copies.replace("12/5/privacy", {configuration, "", ""});
    copies.replace("vendor-list", {vendorList, "", ""});
}

} // namespace

StartUpFiles StartUpFiles::make() {
    const bool real = std::filesystem::exists(kVendorList);
    const std::string configuration = read(kConfiguration);
    const std::string vendorList = real ? read(kVendorList) : generatedVendorList();
    StartUpFiles files{freshDirectory("start-up"),
                       real ? "the published list" : "a generated list"};
    saveChoices(files.directory / "choices.sqlite");
    keepCopies(files.directory / "choices.sqlite", configuration, vendorList);
    std::ofstream(files.directory / "privacy.json") << configuration;
    std::ofstream(files.directory / "vendor-list.json") << vendorList;
    return files;
}

} // namespace vx::bench
