#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/iab/IABLibrary.h"
#include "vxprivacy/services/iab/TCDataSink.h"
#include "vxprivacy/services/iab/TCFSettings.h"

namespace vx::services {

namespace tcf {
struct PublisherRules;
}

/// The IAB's Transparency and Consent Framework, version 2: encodes TC strings, and keeps them with
/// all that goes with them in a store, under the keys that IAB-aware code in an application reads
/// ("IABTCF_TCString" and others). Its presence turns the IAB mode on.
///
///     vx::Platform platform = services.platform();
///     vx::services::TCFLibrary iab(platform.store, platform.logger);
///     platform.iab = &iab;
///     vx::Runtime runtime(platform);
///
/// Unless its settings say otherwise, its strings are those of policy version 2.
///
/// What it writes goes into the store's open transaction, so it becomes durable with the save that
/// it belongs to. Values that a field cannot hold are left out and logged at level 4. Nothing
/// throws. Application's thread.
class VXPRIVACY_EXPORT TCFLibrary : public IABLibrary {
public:
    /// What an application decides about its strings.
    using Settings = TCFSettings;

    /// Has the engine accept and refuse all through the module's IAB privacy center. Writes nothing
    /// yet. All that is given must outlive it; without a `sink` the TC data is in the store alone.
    TCFLibrary(KeyValueStore& store, Logger& logger, TCDataSink* sink = nullptr);
    TCFLibrary(KeyValueStore& store, Logger& logger, Settings settings, TCDataSink* sink = nullptr);
    ~TCFLibrary() override;
    TCFLibrary(const TCFLibrary&) = delete;
    TCFLibrary& operator=(const TCFLibrary&) = delete;

    /// Takes away TC data that has expired, where the settings say so; stores the number of this
    /// CMP, in the profile `InForce` also whether the GDPR applies, and tells the sink all that is
    /// stored.
    void setCMPSDKID() override;
    /// When the stored TC string was created, in seconds since 1970 as decimal text. Empty when
    /// there is none, and, with a log line, when it is damaged or another CMP's.
    std::string getCreatedDate() const override;
    /// Keeps these restrictions for the strings that are built from now on, in place of earlier
    /// ones. Stores nothing: a builder's `writeTCData` does. Purposes other than 1 to 63 are left
    /// out; the first of them is logged.
    void setPublisherRestrictions(const PublisherRestrictions& restrictions) override;
    /// The same, and restrictions of type 1 are encoded too. What is no purpose, vendor or type is
    /// left out, and logged when a string is built.
    void setExplicitRestrictions(const ExplicitRestrictions& restrictions) override;
    /// Keeps them for the next string alone. In the profile `InForce` only: else there is no such
    /// segment.
    void setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                             const JSONValue& vendorList = {}) override;
    /// In the profile `InForce`.
    bool tellsDataUse() const override { return inForce(); }
    /// Google's Additional Consent: which providers of Google's list the user accepted, and which
    /// ones the user was shown, by the numbers of that list. The application shows and asks; the
    /// next save writes it ("IABTCF_AddtlConsent"), in either profile, and one that follows without
    /// another call removes it: who was not asked about has not accepted. A string that is not
    /// written leaves none of it.
    void setAdditionalConsent(std::span<const std::int32_t> accepted,
                              std::span<const std::int32_t> disclosed);
    /// Stores `consent` as the TC string; the empty text removes it.
    void saveConsentString(std::string_view consent) override;
    /// Removes all that is stored; in the profile `InForce` all but what start-up stores.
    void resetTCData() override;
    /// A builder on the same store and log; the caller's, and this library must outlive it.
    std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() override;

private:
    struct Disclosed;

    std::unique_ptr<CoreStringBuilder> makeInForceBuilder();
    bool hasExpired() const;
    bool inForce() const { return settings_.profile == TCFProfile::InForce; }

    KeyValueStore& store_;
    Logger& logger_;
    Settings settings_;
    TCDataSink* sink_;
    std::optional<std::string> additionalConsent_; // for the next string
    std::unique_ptr<Disclosed> disclosed_;         // for the next string; null: nothing was
    std::unique_ptr<tcf::PublisherRules> rules_;   // handed over in this run; never null
};

} // namespace vx::services
