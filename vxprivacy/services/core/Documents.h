#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/services/core/OfflineCopies.h"
#include "vxprivacy/services/core/PackagedCopy.h"
#include "vxprivacy/services/core/Shared.h"
#include "vxprivacy/services/core/Status.h"

namespace vx::services {

/// Keeps the registered configuration files supplied: at once with the newer of the copy that ships
/// with the application and the copy downloaded last, later with what a download brings.
///
/// One download starts with each registration. A document replaces the copy at hand only when it is
/// a JSON object with a higher version; in all other cases the copy stays and the log says why.
///
/// What a file has is kept offline, in the commit of what its owner changes because of it, also a
/// copy that ships with the application: so a newer one is noticed when the application is updated,
/// and the owner is asked about it once. Of a file that is never downloaded nothing is kept.
class Documents : public ConfigurationDocuments {
public:
    /// `packaged` is the directory of the files that ship with the application, empty where there
    /// is none; `hosts` are where addresses begin.
    Documents(const Shared& shared, OfflineCopies& copies, std::filesystem::path packaged,
              const Hosts& hosts, int vendorListFormat);

    /// Every file knows the identifiers that its address is made of.
    void initialise(std::int32_t, std::int32_t) override {}
    void registered(const std::shared_ptr<VXConfigurationFile>& file) override;

    /// The registered files that somebody still holds, by name.
    std::vector<Status::Document> status() const;

private:
    struct Registration {
        std::weak_ptr<VXConfigurationFile> file;
        Origin origin = Origin::Nowhere; // of the document that the file has now
        std::string etag;                // of the copy downloaded last, where it was downloaded
        std::string problem;             // what went wrong last; empty when nothing did
    };

    void load(VXConfigurationFile& file, Registration& registration);
    void loadPackaged(VXConfigurationFile& file, Registration& registration, PackagedCopy& copy);
    void download(VXConfigurationFile& file, const std::shared_ptr<Registration>& registration);
    void arrived(Registration& registration, const HTTPResponse& response);
    void consider(Registration& registration, VXConfigurationFile& file,
                  const HTTPResponse& response);
    void install(VXConfigurationFile& file, JSONValue document, const OfflineCopies::Copy& copy);
    std::string storedText(const VXConfigurationFile& file);
    bool isInOtherFormat(const VXConfigurationFile& file) const;
    std::string copyName(const VXConfigurationFile& file) const;
    std::string resourceOf(const VXConfigurationFile& file) const;
    void checkVersion(Registration& registration, const VXConfigurationFile& file,
                      const JSONValue& document) const;
    void failed(Registration& registration, const VXConfigurationFile& file, std::string what,
                int level) const;
    void note(const VXConfigurationFile& file, std::string_view what, int level) const;

    Shared shared_;
    OfflineCopies& copies_;
    const std::filesystem::path packaged_;
    const std::string host_; // the configuration CDN's
    // Where the engine has the vendor list, and where it lies in another format; empty: in none.
    const std::string formerLists_;
    const std::string lists_;
    std::map<std::string, std::shared_ptr<Registration>> registrations_; // by the files' names
};

} // namespace vx::services
