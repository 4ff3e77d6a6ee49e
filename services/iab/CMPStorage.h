#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "services/iab/TCModel.h"
#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx::services::tcf {

/// Purposes that a restriction can name: what 6 bits hold.
inline constexpr int kGreatestPurpose = 63;

/// The TC data in a key-value store, under the keys and with the values that the IAB has published
/// for applications. Numbers are decimal; a text of "0" and "1" has the identifier n at index n
/// - 1.
class CMPStorage {
public:
    /// `store` must outlive it.
    explicit CMPStorage(KeyValueStore& store) : store_(store) {}

    void setCMP(std::uint32_t cmp);
    /// The TC string alone; the empty text takes it away.
    void setTCString(std::string_view text);
    std::optional<std::string> tcString() const;

    /// The restriction types of a purpose as they were handed over; absent: takes them away.
    void setRestrictions(int purpose, const std::optional<std::string>& types);
    std::optional<std::string> restrictions(int purpose) const;

    /// All that is stored of a model but for the restrictions; `text` is its TC string.
    void write(const TCModel& model, std::string_view text);
    /// Forgets everything.
    void reset();

private:
    void put(std::string_view key, const std::optional<std::string>& value);
    void putPublisher(const std::optional<PublisherTC>& publisher);

    KeyValueStore& store_;
};

} // namespace vx::services::tcf
