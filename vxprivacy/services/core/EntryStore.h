#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/services/core/Database.h"
#include "vxprivacy/services/core/EntryDigest.h"
#include "vxprivacy/services/core/EntryMap.h"

namespace vx::services {

/// The key-value store: all entries in memory, changes written through to the database.
///
/// Two processes may share the file. Each sees the other's entries when it next writes; what it
/// set in one scope replaces the other's whole, so the file never holds a mixture of two saves. A
/// choice that could not be written gives way to a later one that the file holds by then.
///
/// One entry of the file is the store's own, a digest of all others by which damage is noticed. It
/// cannot be read or set.
class EntryStore : public KeyValueStore, private Table {
public:
    EntryStore(Database& database, const Clock& clock, Logger& logger);

    std::optional<std::string> get(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;
    void remove(std::string_view key) override;
    void setIfAbsent(std::string_view key, std::string_view value) override;
    void standBy(std::string_view key, std::string_view value) override;
    void beginTransaction() override { database_.begin(); }
    void commitTransaction() override { database_.commit(); }
    void rollBackTransaction() override { database_.rollBack(); }

    void setObserver(KeyValueStoreObserver* observer) override;
    /// Tells the observer, if other processes changed entries. No scope is open.
    void tellObserver();

private:
    using Value = std::optional<std::string>;
    using Entry = EntryMap::Entry;
    // That the settings around it go with an entry at `value`; it was `before` then.
    struct Stand {
        std::string value;
        Value before;
    };
    // A save makes thousands of these, and most change nothing: they are small.
    struct Setting {
        Entry* entry;
        std::unique_ptr<Value> before{}; // null: the value that was set
        std::unique_ptr<Stand> stand{};  // null: a setting
        bool onlyIfAbsent = false;
    };

    const char* schema() const override;
    void load(Connection& file) override;
    bool pending() const override { return !settings_.empty(); }
    void compact() override;
    std::size_t mark() const override { return settings_.size(); }
    void rollBack(std::size_t mark) override;
    void write(Connection& file, Contents contents) override;
    void written() override;
    void lost() override;

    void put(std::string_view key, std::optional<std::string_view> value, bool onlyIfAbsent);
    static Setting assign(Entry& entry, std::optional<std::string_view> value, EntryDigest& digest);
    bool givesWayTo(const EntryMap& loaded) const;
    void setAgain(EntryMap& loaded, EntryDigest& digest);
    void announceChange();
    void warnOfEmptyDecision() const;

    Database& database_;
    const Clock& clock_;
    Logger& logger_;
    EntryMap entries_;
    EntryDigest digest_;            // of `entries_`
    std::string digestInFile_;      // empty: none that is known
    std::vector<Setting> settings_; // all since the last writing, oldest first
    KeyValueStoreObserver* observer_ = nullptr;
    bool othersChanged_ = false; // and the observer was not told yet
};

} // namespace vx::services
