#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Protocol.h"
#include "vxprivacy/platform/core/Doors.h"

namespace vx {
class VXConfigurationFile;
}

namespace vx::tools::studio {

/// Reports what is done to the application as steps of a session for `vxprivacy play`, each before
/// what it causes.
class SessionSteps {
public:
    /// `clock` is the engine's, and must outlive it.
    explicit SessionSteps(const Clock& clock) : clock_(clock) {}

    /// What the process begins with: "now", "iab", "inForce", "userAgent", the store's entries as
    /// pairs in "store", the texts of the documents at hand by name in "files" and, in IAB mode,
    /// "createdDate" of the stored TC string; "isFresh" where a played session makes it so. Before
    /// anything opens the store.
    void launch(const Launch& launch, const std::string& userAgent);
    /// A step, with the time before it where that moved on.
    void step(const Json& step);
    /// What play has no step for.
    void remark(const std::string& text);
    /// An `install` for each registered file that has another document than at the last look. To be
    /// called before anything is reported that the document may have caused.
    void lookForDocuments();

private:
    struct Known {
        std::shared_ptr<const VXConfigurationFile> file;
        std::int32_t version = 0;
    };

    const Clock& clock_;
    std::uint64_t told_ = 0;                 // the time
    std::map<std::string, Known> documents_; // by the files' names
};

} // namespace vx::tools::studio
