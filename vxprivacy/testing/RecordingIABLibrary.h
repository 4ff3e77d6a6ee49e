#pragma once

#include <memory>
#include <optional>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/iab/IABLibrary.h"
#include "vxprivacy/services/iab/TCFLibrary.h"
#include "vxprivacy/testing/Event.h"
#include "vxprivacy/testing/MemoryStore.h"

namespace vx::recording {

/// The real library on a store of its own. {"cmp":["setCMPSDKID"]},
/// {"cmp":["saveConsentString","text"]}, {"cmp":["resetTCData"]}, {"cmp":["writeTCData"]},
/// {"cmp":["setPublisherRestrictions",{...}]}; of each builder one line an operation, such as
/// {"builder":["setCmpID",90]}, and {"tc":"text"} after the one that builds; none for what the
/// profile `InForce` alone takes.
class VXPRIVACY_EXPORT RecordingIABLibrary : public IABLibrary {
public:
    /// `createdDate` is what `getCreatedDate` answers until TC data is written or reset.
    RecordingIABLibrary(std::string createdDate, services::TCFSettings settings, EventSink sink);

    void setCMPSDKID() override;
    std::string getCreatedDate() const override;
    void setPublisherRestrictions(const PublisherRestrictions& restrictions) override;
    // Passed on without a line.
    void setExplicitRestrictions(const ExplicitRestrictions& restrictions) override;
    void setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                             const JSONValue& vendorList) override;
    bool tellsDataUse() const override { return library_->tellsDataUse(); }

    void saveConsentString(std::string_view consent) override;
    void resetTCData() override;
    std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() override;

    /// The process ends and starts again: what is stored stays.
    void relaunch() {
        library_ = std::make_unique<services::TCFLibrary>(store_, silence_, settings_);
    }

    /// What was handed over last; absent: nothing yet.
    const std::optional<PublisherRestrictions>& publisherRestrictions() const {
        return restrictions_;
    }

private:
    class Builder;
    // What the library says about odd values is not the module's doing.
    class Silence : public Logger {
        void log(std::string_view, int) override {}
    };

    const services::TCFSettings settings_;
    EventSink sink_;
    std::optional<std::string> createdDate_;
    std::optional<PublisherRestrictions> restrictions_;
    Silence silence_;
    MemoryStore store_;
    std::unique_ptr<services::TCFLibrary> library_; // never null
};

} // namespace vx::recording
