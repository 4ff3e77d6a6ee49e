#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/services/iab/PublisherRules.h"
#include "vxprivacy/services/iab/TCDataSink.h"
#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// What is stored of a choice.
struct TCData {
    TCModel model;
    std::string text; ///< the model's TC string
    /// Restrictions of purposes that it does not have are taken away.
    RestrictionTexts restrictions;
    std::optional<bool> gdprApplies = true; ///< absent: not known
    /// Whether UseNonStandardTexts stands under its name before version 2.2 too.
    bool underOldName = true;
    std::optional<std::string> additionalConsent{}; ///< Google's
};

/// What a store has: of the keys that are not made of the TC string all, each as it may be.
struct StoredTCData {
    std::optional<std::uint32_t> cmp;
    std::optional<bool> gdprApplies;
    std::optional<std::string> tcString;
    std::optional<std::string> additionalConsent;
};

/// Numbers that are none, or out of range, are absent.
StoredTCData storedTCData(const KeyValueStore& store);

/// The TC data in a key-value store, under the keys and with the values that the IAB has published
/// for applications. Numbers are decimal; a text of "0" and "1" has the identifier n at index n
/// - 1. What is written goes to the sink too, where there is one.
class CMPStorage {
public:
    /// Both must outlive it; `sink` may be null.
    CMPStorage(KeyValueStore& store, TCDataSink* sink) : store_(store), sink_(sink) {}

    void setCMP(std::uint32_t cmp);
    /// What is known before a choice: the CMP, where it has a number, and whether the GDPR applies.
    void announce(std::optional<std::uint32_t> cmp, std::optional<bool> gdprApplies);
    /// The TC string alone; the empty text takes it away.
    void setTCString(std::string_view text);
    std::optional<std::string> tcString() const;

    /// All of it; what another write stored beyond it is taken away.
    void write(const TCData& data);
    /// Forgets everything.
    void reset();
    /// Tells the sink of every key what is stored under it.
    void mirror() const;

private:
    void setNumber(std::string_view key, std::uint32_t value);
    void setText(std::string_view key, std::string_view value);
    void remove(std::string_view key);
    void putNumber(std::string_view key, std::optional<std::uint32_t> value);
    void putText(std::string_view key, const std::optional<std::string>& value);
    void putPublisher(const std::optional<PublisherTC>& publisher);
    void putRestrictions(const RestrictionTexts& restrictions);

    KeyValueStore& store_;
    TCDataSink* sink_;
};

} // namespace vx::services::tcf
