#include "services/core/Documents.h"

#include <fstream>
#include <optional>
#include <utility>

#include "services/core/URLPolicy.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services {

namespace {

constexpr std::uint64_t kHour = 60 * 60 * 1000; // milliseconds

std::int32_t versionOf(const JSONValue& document, const VXConfigurationFile& file) {
    return VXConfigurationFile::getJsonLeaf(document, file.versionPath()).integerValue();
}

bool isOnCDN(const VXConfigurationFile& file) {
    return file.source() == VXConfigurationFile::Source::ConfigurationCDN;
}

// One application may change its identifiers; then the old document is no copy of the new one.
std::string copyName(const VXConfigurationFile& file) {
    return isOnCDN(file) ? formatted("%d/%d/%@", {file.siteID(), file.fileID(), file.offlineName()})
                         : file.offlineName();
}

} // namespace

Documents::Documents(const Shared& shared, OfflineCopies& copies, std::filesystem::path packaged,
                     std::string host)
    : shared_(shared), copies_(copies), packaged_(std::move(packaged)), host_(std::move(host)) {}

void Documents::registered(const std::shared_ptr<VXConfigurationFile>& file) {
    auto registration = std::make_shared<Registration>();
    registration->file = file;
    load(*file, *registration);
    registrations_[file->offlineName()] = registration;
    if (file->source() != VXConfigurationFile::Source::Packaged)
        download(*file, registration);
}

void Documents::load(VXConfigurationFile& file, Registration& registration) {
    JSONValue document;
    copies_.read(copyName(file), [&](const OfflineCopies::Copy& copy) {
        document = VXConfigurationFile::getJSONDictionaryFromString(copy.text);
        if (document && copy.address == resourceOf(file))
            registration.etag = copy.etag; // it means nothing at another address
    });
    if (document)
        registration.origin = Origin::Downloaded;
    const JSONValue packaged = VXConfigurationFile::getJSONDictionaryFromString(packagedText(file));
    if (packaged && (!document || versionOf(packaged, file) > versionOf(document, file))) {
        registration.origin = Origin::Packaged;
        document = packaged;
    }
    if (document)
        file.setDocument(std::move(document));
}

void Documents::download(VXConfigurationFile& file,
                         const std::shared_ptr<Registration>& registration) {
    const std::string resource = resourceOf(file);
    if (!mayRequest(resource))
        return note(file,
                    "is not downloaded: " + resource + " is neither https nor on this machine", 4);
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
        note(*file, "was not downloaded: " + response.error, 3);
    else if (response.status == 200)
        consider(registration, *file, response);
    else if (response.status != 304)
        note(*file, "was not downloaded: HTTP " + std::to_string(response.status), 3);
}

void Documents::consider(Registration& registration, VXConfigurationFile& file,
                         const HTTPResponse& response) {
    std::string error = "it is no object";
    JSONValue document = JSONValue::parse(response.body, &error);
    if (!document.isObject())
        return note(file, "was downloaded but is no JSON object: " + error, 4);
    const std::int32_t version = versionOf(document, file);
    if (version <= file.version())
        return note(file,
                    formatted("was downloaded but version %d is not newer than %d",
                              {version, file.version()}),
                    3);
    install(registration, file, std::move(document), response);
    note(file, formatted("was downloaded, version %d", {version}), 3);
}

// One commit: the new document, and what its owner changes in the store because of it.
void Documents::install(Registration& registration, VXConfigurationFile& file, JSONValue document,
                        const HTTPResponse& response) {
    StoreTransaction transaction(shared_.store);
    const std::string oldText = currentText(file, registration.origin);
    file.install(oldText, response.body, std::move(document));
    copies_.replace(copyName(file), {response.body, resourceOf(file), response.etag});
    registration.origin = Origin::Downloaded;
    transaction.commit();
}

std::string Documents::currentText(const VXConfigurationFile& file, Origin origin) {
    std::string text;
    if (origin == Origin::Packaged)
        text = packagedText(file);
    if (origin == Origin::Downloaded)
        copies_.read(copyName(file), [&](const OfflineCopies::Copy& copy) { text = copy.text; });
    return text;
}

std::string Documents::packagedText(const VXConfigurationFile& file) const {
    const std::filesystem::path directory =
        file.bundle().empty() ? packaged_ : std::filesystem::path(file.bundle());
    if (directory.empty())
        return {};
    std::ifstream stream(directory / (file.offlineName() + ".json"), std::ios::binary);
    std::string text;
    if (stream.seekg(0, std::ios::end) && stream.tellg() <= std::streamoff(kLargestAnswer)) {
        text.resize(static_cast<std::size_t>(stream.tellg()));
        stream.seekg(0).read(text.data(), static_cast<std::streamsize>(text.size()));
    }
    return text;
}

std::string Documents::resourceOf(const VXConfigurationFile& file) const {
    if (!isOnCDN(file))
        return file.baseURL().value_or("");
    return formatted("%@/mobile/%d/%d/privacy%@.json", {host_, file.siteID(), file.fileID(), ""});
}

void Documents::note(const VXConfigurationFile& file, std::string_view what, int level) const {
    shared_.logger.log("Configuration file " + file.offlineName() + " " + std::string(what), level);
}

} // namespace vx::services
