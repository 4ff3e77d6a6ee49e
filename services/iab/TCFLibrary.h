#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

namespace vx::services {

/// The IAB's Transparency and Consent Framework, version 2: encodes TC strings, and keeps them with
/// all that goes with them in a store, under the keys that IAB-aware code in an application reads
/// ("IABTCF_TCString" and others). Its presence turns the IAB mode on.
///
///     vx::Platform platform = services.platform();
///     vx::services::TCFLibrary iab(platform.store, platform.logger);
///     platform.iab = &iab;
///     vx::Runtime runtime(platform);
///
/// Values that a field cannot hold are left out and logged at level 4. Application's thread.
class TCFLibrary : public IABLibrary {
public:
    /// Both must outlive it.
    TCFLibrary(KeyValueStore& store, Logger& logger);
    ~TCFLibrary() override;
    TCFLibrary(const TCFLibrary&) = delete;
    TCFLibrary& operator=(const TCFLibrary&) = delete;

    void setCMPSDKID() override;
    std::string getCreatedDate() const override;
    void setPublisherRestrictions(const PublisherRestrictions& restrictions) override;
    void saveConsentString(std::string_view consent) override;
    void resetTCData() override;
    std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() override;

private:
    KeyValueStore& store_;
    Logger& logger_;
};

} // namespace vx::services
