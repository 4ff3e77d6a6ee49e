#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "services/core/OfflineCopies.h"
#include "services/core/Shared.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"

namespace vx::services {

/// Keeps the registered configuration files supplied: at once with the newer of the copy that ships
/// with the application and the copy downloaded last, later with what a download brings.
///
/// One download starts with each registration. A document replaces the copy at hand only when it is
/// a JSON object with a higher version; in all other cases the copy stays and the log says why.
class Documents : public ConfigurationDocuments {
public:
    /// `packaged` is the directory of the files that ship with the application, empty where there
    /// is none; `host` is where the configuration CDN's addresses begin.
    Documents(const Shared& shared, OfflineCopies& copies, std::filesystem::path packaged,
              std::string host);

    /// Every file knows the identifiers that its address is made of.
    void initialise(std::int32_t, std::int32_t) override {}
    void registered(const std::shared_ptr<VXConfigurationFile>& file) override;

private:
    enum class Origin { Nowhere, Packaged, Downloaded };
    struct Registration {
        std::weak_ptr<VXConfigurationFile> file;
        Origin origin = Origin::Nowhere; // of the document that the file has now
        std::string etag;                // of the copy downloaded last, where it was downloaded
    };

    void load(VXConfigurationFile& file, Registration& registration);
    void download(VXConfigurationFile& file, const std::shared_ptr<Registration>& registration);
    void arrived(Registration& registration, const HTTPResponse& response);
    void consider(Registration& registration, VXConfigurationFile& file,
                  const HTTPResponse& response);
    void install(Registration& registration, VXConfigurationFile& file, JSONValue document,
                 const HTTPResponse& response);
    std::string currentText(const VXConfigurationFile& file, Origin origin);
    std::string packagedText(const VXConfigurationFile& file) const;
    std::string resourceOf(const VXConfigurationFile& file) const;
    void note(const VXConfigurationFile& file, std::string_view what, int level) const;

    Shared shared_;
    OfflineCopies& copies_;
    const std::filesystem::path packaged_;
    const std::string host_;
    std::map<std::string, std::shared_ptr<Registration>> registrations_; // by the files' names
};

} // namespace vx::services
