#pragma once

#include <vector>

#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/testing/Event.h"

namespace vx::recording {

/// A key-value store in memory that can be looked at and changed from outside.
class VXPRIVACY_EXPORT MemoryStore : public KeyValueStore {
public:
    /// `entries` are there from the start.
    explicit MemoryStore(Texts entries = {}) : entries_(std::move(entries)) {}

    std::optional<std::string> get(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;
    void remove(std::string_view key) override;
    void beginTransaction() override;
    void commitTransaction() override;
    void rollBackTransaction() override;

    /// All of it, those of open transactions too.
    const Texts& entries() const { return entries_; }

private:
    Texts entries_;
    std::vector<Texts> before_; // the entries as each open transaction found them
};

} // namespace vx::recording
