#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/iab/CoreStringBuilder.h"

namespace vx {

/// The number that the IAB has given to this module as a consent management platform (CMP).
inline constexpr std::int32_t kCMPID = 90;

/// By purpose ID the restriction types of vendors 1, 2, 3 and so on, a character each: "0" not
/// allowed, "1" consent required or nothing said, "2" legitimate interest required. Purpose "1"
/// with "11012" forbids it to vendor 3 and has vendor 5 rely on legitimate interest. Both IDs and
/// types are the publisher's and may be anything.
using PublisherRestrictions = OrderedDictionary<std::string>;

/// What the publisher itself says, without the filler: purpose ID to vendor ID to type of
/// restriction, each as the publisher wrote it: "0" not allowed, "1" consent required, "2"
/// legitimate interest required.
using ExplicitRestrictions = OrderedDictionary<OrderedDictionary<std::string>>;

/// The door to the IAB library, which encodes TC strings and keeps them. Installed when the library
/// is present; its presence is what turns the IAB mode on. Application's thread; nothing throws.
///
/// What it stores during a save becomes durable with the save when it stores through the module's
/// `KeyValueStore`: the engine calls it within the save's transaction.
class VXPRIVACY_EXPORT IABLibrary {
public:
    virtual ~IABLibrary();

    /// Records this module's CMP identity where IAB-aware code reads it. Called at every start-up.
    virtual void setCMPSDKID() = 0;
    /// When the stored consent record was created, seconds since 1970 as decimal text; empty when
    /// there is none.
    virtual std::string getCreatedDate() const = 0;
    /// The publisher's restrictions for the rest of this run, in place of earlier ones; they come
    /// into force with the next string that is written. Not called where the application ships
    /// none: then there are none, whatever an earlier run had.
    virtual void setPublisherRestrictions(const PublisherRestrictions& restrictions) = 0;
    /// The same restrictions once more, right after `setPublisherRestrictions`, in a form that
    /// tells type 1 from the filler. Optional: does nothing by default, and no string then says
    /// that consent is required.
    virtual void setExplicitRestrictions(const ExplicitRestrictions& restrictions);
    /// Which vendors the user is shown, without those deleted, as IAB identifiers in any order, and
    /// by which vendor list; called by the privacy center on the screen right before it saves.
    /// Optional: does nothing by default, and no string then says whom the user was shown.
    virtual void setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                                     const JSONValue& vendorList);
    /// Whether screens tell of a vendor also what lists of format 3 declare beyond purposes and
    /// features: data categories, retention, the claim of a legitimate interest and the disclosure
    /// of device storage. Optional: no by default.
    virtual bool tellsDataUse() const;
    /// Stores `consent` as the current consent string; the empty text means that there is none. The
    /// engine only takes it away by this; a save's string is stored by its builder.
    virtual void saveConsentString(std::string_view consent) = 0;
    /// Forgets all stored TC data. Restrictions that were handed over in this run stay in force.
    virtual void resetTCData() = 0;

    /// A fresh builder, one for each save; never null. The library outlives it.
    virtual std::unique_ptr<CoreStringBuilder> makeCoreStringBuilder() = 0;
};

} // namespace vx
