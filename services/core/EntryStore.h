#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "services/core/Database.h"
#include "services/core/TextHash.h"
#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx::services {

/// The key-value store: all entries in memory, changes written through to the database.
///
/// Two processes may share the file. Each sees the other's entries when it next writes; what it
/// set in one scope replaces the other's whole, so the file never holds a mixture of two saves.
class EntryStore : public KeyValueStore, private Table {
public:
    explicit EntryStore(Database& database);

    std::optional<std::string> get(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override { put(key, value); }
    void remove(std::string_view key) override { put(key, std::nullopt); }
    void beginTransaction() override { database_.begin(); }
    void commitTransaction() override { database_.commit(); }
    void rollBackTransaction() override { database_.rollBack(); }

private:
    struct Entry;
    using Value = std::optional<std::string>;
    using Node = std::pair<const std::string, Entry>; // which does not move
    // The writing that an entry waits for is named by its number, so that nothing has to be reset
    // in thousands of entries when it is done.
    struct Entry {
        Value value;                  // absent: there is no such entry, any more
        std::uint32_t setFor = 0;     // be it to the value it had
        std::uint32_t changedFor = 0; // to another value
        Node* next = nullptr;         // asked for after this one the last time
    };
    using Entries = std::unordered_map<std::string, Entry, TextHash, std::equal_to<>>;
    struct Change {
        Node* entry;
        std::uint32_t setFor, changedFor; // before
        bool wasThere;
        bool hasBefore; // the value changed; the one before is in `before_`
    };

    const char* schema() const override;
    void load(Connection& file) override;
    bool pending() const override { return !changes_.empty(); }
    std::size_t mark() const override { return changes_.size(); }
    void rollBack(std::size_t mark) override;
    void write(Connection& file, Contents contents) override;
    void written() override;
    void lost() override;

    void put(std::string_view key, std::optional<std::string_view> value);
    Node* find(std::string_view key) const;
    Node* insert(std::string_view key);
    void takeBack(const Change& change);
    void forgetOrder();
    void keepOneChangeOfEach();

    Database& database_;
    mutable Entries entries_;
    mutable Node* last_ = nullptr; // asked for last
    std::vector<Change> changes_;  // all settings since the last writing, in order
    std::vector<Value> before_;    // of those that changed a value, in the same order
    std::uint32_t writing_ = 1;    // the next one
};

} // namespace vx::services
