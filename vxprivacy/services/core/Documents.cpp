// A document from its registration to its download, and what decides which copy is used.

#include "vxprivacy/services/core/Documents.h"

#include <optional>
#include <utility>

#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/services/core/PackagedCopy.h"
#include "vxprivacy/services/core/URLPolicy.h"

namespace vx::services {

namespace {

constexpr int kEnginesFormat = 2;               // of the vendor list, in the engine's addresses
constexpr std::uint64_t kHour = 60 * 60 * 1000; // milliseconds

// The object that `text` holds, or absent; then `problem` says why.
JSONValue objectIn(std::string_view text, std::string& problem) {
    std::string error = "it is no object";
    JSONValue document = JSONValue::parse(text, &error);
    if (document.isObject())
        return document;
    problem = "no JSON object: " + error;
    return {};
}

std::int32_t versionOf(const VXConfigurationFile& file) {
    return file.versionOf(file.getJSONDictionary());
}

bool isDownloaded(const VXConfigurationFile& file) {
    return file.source() != VXConfigurationFile::Source::Packaged;
}

bool isOnCDN(const VXConfigurationFile& file) {
    return file.source() == VXConfigurationFile::Source::ConfigurationCDN;
}

// Where lists of a format lie: "https://lists.example.com/v2/".
std::string folder(const Hosts& hosts, int format) {
    return hosts.vendorList + "/v" + std::to_string(format) + "/";
}

} // namespace

Documents::Documents(const Shared& shared, OfflineCopies& copies, std::filesystem::path packaged,
                     const Hosts& hosts, int vendorListFormat)
    : shared_(shared), copies_(copies), packaged_(std::move(packaged)),
      host_(hosts.configurationCDN),
      formerLists_(vendorListFormat == kEnginesFormat ? "" : folder(hosts, kEnginesFormat)),
      lists_(vendorListFormat == kEnginesFormat ? "" : folder(hosts, vendorListFormat)) {}

void Documents::registered(const std::shared_ptr<VXConfigurationFile>& file) {
    auto registration = std::make_shared<Registration>();
    registration->file = file;
    registrations_[file->offlineName()] = registration;
    load(*file, *registration);
    if (isDownloaded(*file))
        download(*file, registration);
}

std::vector<Status::Document> Documents::status() const {
    std::vector<Status::Document> status;
    for (const auto& [name, registration] : registrations_)
        if (const auto file = registration->file.lock())
            status.push_back({name, versionOf(*file), registration->origin, registration->problem});
    return status;
}

void Documents::load(VXConfigurationFile& file, Registration& registration) {
    PackagedCopy packaged = readPackagedCopy(file, packaged_);
    bool isStored = false; // the packaged copy's very text
    copies_.read(copyName(file), [&](const OfflineCopies::Copy& copy) {
        JSONValue document = VXConfigurationFile::getJSONDictionaryFromString(copy.text);
        if (!document)
            return;
        checkVersion(registration, file, document);
        registration.origin = copy.address.empty() ? Origin::Packaged : Origin::Downloaded;
        if (copy.address == resourceOf(file))
            registration.etag = copy.etag; // it means nothing at another address
        isStored = copy.text == packaged.text;
        file.setDocument(std::move(document));
    });
    if (!isStored)
        loadPackaged(file, registration, packaged);
    if (registration.origin == Origin::Nowhere)
        failed(registration, file, "was found nowhere: " + packaged.path + ": " + packaged.problem,
               kLogProblem);
    else if (packaged.isThere && !packaged.problem.empty())
        failed(registration, file,
               "has a packaged copy of no use: " + packaged.path + ": " + packaged.problem,
               kLogProblem);
}

void Documents::loadPackaged(VXConfigurationFile& file, Registration& registration,
                             PackagedCopy& packaged) {
    if (!packaged.problem.empty())
        return;
    JSONValue document = objectIn(packaged.text, packaged.problem);
    if (!document)
        return;
    checkVersion(registration, file, document);
    const std::int32_t version = file.versionOf(document);
    const OfflineCopies::Copy copy{packaged.text, {}, {}};
    if (registration.origin == Origin::Nowhere) {
        file.setDocument(std::move(document));
        if (isDownloaded(file))
            copies_.keepIfAbsent(copyName(file), copy);
    } else if (version > versionOf(file)) {
        install(file, std::move(document), copy);
    } else if (version == versionOf(file) && registration.origin == Origin::Packaged) {
        file.setDocument(std::move(document)); // mended without a new version
        copies_.replace(copyName(file), copy);
    } else {
        return;
    }
    registration.origin = Origin::Packaged;
}

void Documents::download(VXConfigurationFile& file,
                         const std::shared_ptr<Registration>& registration) {
    const std::string resource = resourceOf(file);
    if (namesNoHost(resource))
        return failed(*registration, file, "is not downloaded: no host is named for it",
                      kLogProblem);
    if (!mayRequest(resource))
        return failed(*registration, file,
                      "is not downloaded: " + resource + " is neither https nor on this machine",
                      kLogProblem);
    // The count of hours lets a cache on the way keep the document for an hour, and no longer.
    const std::uint64_t hours = shared_.clock.nowMilliseconds() / kHour;
    const std::string address = isOnCDN(file) ? resource + "?r=" + std::to_string(hours) : resource;
    shared_.http.submit(
        {address, {}, registration->etag},
        [this, registration](const HTTPResponse& response) { arrived(*registration, response); });
}

void Documents::arrived(Registration& registration, const HTTPResponse& response) {
    const std::shared_ptr<VXConfigurationFile> file = registration.file.lock();
    if (!file || registrations_[file->offlineName()].get() != &registration)
        return; // another file was registered in its place meanwhile
    if (!response.error.empty())
        return failed(registration, *file, "was not downloaded: " + response.error, kLogNote);
    const bool isUnchanged = response.status == 304 && !registration.etag.empty(); // as was asked
    if (response.status != 200 && !isUnchanged)
        return failed(registration, *file,
                      "was not downloaded: HTTP " + std::to_string(response.status), kLogNote);
    registration.problem.clear();
    if (response.status == 200)
        consider(registration, *file, response);
}

void Documents::consider(Registration& registration, VXConfigurationFile& file,
                         const HTTPResponse& response) {
    std::string problem;
    JSONValue document = objectIn(response.body, problem);
    if (!document)
        return failed(registration, file, "was downloaded but is " + problem, kLogProblem);
    checkVersion(registration, file, document);
    const std::int32_t version = file.versionOf(document);
    if (version <= versionOf(file))
        return note(file,
                    formatted("was downloaded but version %d is not newer than %d",
                              {version, versionOf(file)}),
                    kLogNote);
    install(file, std::move(document), {response.body, resourceOf(file), response.etag});
    registration.origin = Origin::Downloaded;
    note(file, formatted("was downloaded, version %d", {version}), kLogNote);
}

// One commit: the newer document, and what its owner changes in the store because of it.
void Documents::install(VXConfigurationFile& file, JSONValue document,
                        const OfflineCopies::Copy& copy) {
    StoreTransaction transaction(shared_.store);
    const std::string oldText = storedText(file);
    copies_.replace(copyName(file), copy);
    file.install(oldText, copy.text, std::move(document));
    transaction.commit();
}

std::string Documents::storedText(const VXConfigurationFile& file) {
    std::string text;
    copies_.read(copyName(file), [&](const OfflineCopies::Copy& copy) { text = copy.text; });
    return text;
}

bool Documents::isInOtherFormat(const VXConfigurationFile& file) const {
    return !formerLists_.empty() && file.baseURL() && file.baseURL()->starts_with(formerLists_);
}

// One application may change its identifiers, or the format of its vendor list; then the old
// document is no copy of the new one.
std::string Documents::copyName(const VXConfigurationFile& file) const {
    if (isOnCDN(file))
        return formatted("%d/%d/%@", {file.siteID(), file.fileID(), file.offlineName()});
    return isInOtherFormat(file)
               ? lists_.substr(lists_.rfind('/', lists_.size() - 2) + 1) + file.offlineName()
               : file.offlineName();
}

std::string Documents::resourceOf(const VXConfigurationFile& file) const {
    if (isInOtherFormat(file))
        return lists_ + file.baseURL()->substr(formerLists_.size());
    if (!isOnCDN(file))
        return file.baseURL().value_or("");
    return formatted("%@/mobile/%d/%d/privacy%@.json", {host_, file.siteID(), file.fileID(), ""});
}

// One beyond 32 bits would be the highest there is, and bar all later ones.
void Documents::checkVersion(Registration& registration, const VXConfigurationFile& file,
                             const JSONValue& document) const {
    const bool saysOne =
        VXConfigurationFile::getJsonLeaf(document, file.versionPath()).integerValue() != 0;
    if (saysOne && file.versionOf(document) == 0)
        failed(registration, file, "has a version that 32 bits do not hold; it counts as none",
               kLogProblem);
}

void Documents::failed(Registration& registration, const VXConfigurationFile& file,
                       std::string what, int level) const {
    note(file, what, level);
    registration.problem = std::move(what);
}

void Documents::note(const VXConfigurationFile& file, std::string_view what, int level) const {
    shared_.logger.log("Configuration file " + file.offlineName() + " " + std::string(what), level);
}

} // namespace vx::services
