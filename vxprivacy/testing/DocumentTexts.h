#pragma once

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/testing/Event.h"

namespace vx::recording {

/// Configuration documents that are found by the file's name among texts given beforehand. A text
/// that is no JSON object counts as no document.
class VXPRIVACY_EXPORT DocumentTexts : public ConfigurationDocuments {
public:
    /// `texts` are the documents by their files' names.
    explicit DocumentTexts(Texts texts = {}) : texts_(std::move(texts)) {}

    void initialise(std::int32_t siteID, std::int32_t containerID) override;
    void registered(const std::shared_ptr<VXConfigurationFile>& file) override;

    /// A newer document of the file registered under `name` arrives; later registrations find it
    /// too. Nothing happens when no file of that name is registered.
    void install(const std::string& name, const std::string& text);

private:
    Texts texts_;
};

} // namespace vx::recording
