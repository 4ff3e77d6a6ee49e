#pragma once

#include "tools/recording/Event.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

#include <optional>

namespace vx::recording {

/// {"cmp":["setCMPSDKID"]}, {"cmp":["saveConsentString","text"]}, {"cmp":["resetTCData"]},
/// {"cmp":["setPublisherRestrictions",{...}]}, {"cmp":["writeTCData"]}, and of each builder one
/// line an operation, {"builder":["setVendorListVersion",51]}.
class RecordingIABLibrary : public IABLibrary {
public:
    explicit RecordingIABLibrary(EventSink sink) : sink_(std::move(sink)) {}
    void setCMPSDKID() override;
    std::string getCreatedDate() const override { return createdDate_; }
    void setPublisherRestrictions(const PublisherRestrictions& restrictions) override;
    void saveConsentString(std::string_view consent) override;
    void resetTCData() override;
    std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() override;

    /// What was handed over last; absent: nothing yet.
    const std::optional<PublisherRestrictions>& publisherRestrictions() const {
        return restrictions_;
    }

private:
    EventSink sink_;
    std::string createdDate_;
    std::optional<PublisherRestrictions> restrictions_;
};

} // namespace vx::recording
