#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/services/core/Services.h"

namespace {

// Documents that the application keeps and downloads itself. `load` gives the newest text that is
// at hand under a name, that of the download before or else the packaged one, and `keep` stores it.
class Documents : public vx::ConfigurationDocuments {
public:
    using Load = std::function<std::string(const std::string& name)>;
    using Keep = std::function<void(const std::string& name, const std::string& text)>;

    Documents(Load load, Keep keep) : load_(std::move(load)), keep_(std::move(keep)) {}

    void initialise(std::int32_t, std::int32_t) override {}
    void registered(const std::shared_ptr<vx::VXConfigurationFile>& file) override {
        files_[file->offlineName()] = file; // in place of an earlier one of this name
        file->setDocument(
            vx::VXConfigurationFile::getJSONDictionaryFromString(load_(file->offlineName())));
    }

    // A download brought `text`. On the application's thread, as everything here.
    void arrived(const std::string& name, const std::string& text) {
        const auto file = files_[name].lock();
        vx::JSONValue document = vx::VXConfigurationFile::getJSONDictionaryFromString(text);
        if (!file || !document)
            return;
        if (file->versionOf(document) <= file->versionOf(file->getJSONDictionary()))
            return; // the module compares no versions
        // Nor does it keep the old text. This tells the engine what changed.
        file->install(load_(name), text, std::move(document));
        keep_(name, text);
    }

private:
    Load load_;
    Keep keep_;
    std::map<std::string, std::weak_ptr<vx::VXConfigurationFile>> files_;
};

vx::Platform withDocuments(const vx::Platform& usual, Documents& documents) {
    return {.store = usual.store,
            .documents = documents,
            .notifications = usual.notifications,
            .logger = usual.logger,
            .clock = usual.clock,
            .coreVariables = usual.coreVariables,
            .predefinedVariables = usual.predefinedVariables,
            .hosts = usual.hosts};
}

} // namespace

void runWithDocuments(const Documents::Load& load, const Documents::Keep& keep) {
    vx::services::Services services({.store = "consent/choices.sqlite"});
    Documents documents(load, keep);
    vx::Runtime runtime(withDocuments(services.platform(), documents));
}
