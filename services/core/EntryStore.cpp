#include "services/core/EntryStore.h"

#include <utility>

namespace vx::services {

EntryStore::EntryStore(Database& database) : database_(database) {
    database.add(*this);
}

std::optional<std::string> EntryStore::get(std::string_view key) const {
    const Node* found = find(key);
    return found ? found->second.value : std::nullopt;
}

// Thousands of entries are saved, reported and restored in one order. So the one that came after
// the last is tried first: most of the time no hash has to be made.
EntryStore::Node* EntryStore::find(std::string_view key) const {
    Node* next = last_ ? last_->second.next : nullptr;
    if (!next || next->first != key) {
        const auto found = entries_.find(key);
        if (found == entries_.end())
            return nullptr;
        next = &*found;
        if (last_)
            last_->second.next = next;
    }
    return last_ = next;
}

EntryStore::Node* EntryStore::insert(std::string_view key) {
    return &*entries_.emplace(key, Entry{}).first;
}

void EntryStore::put(std::string_view key, std::optional<std::string_view> value) {
    Node* found = find(key);
    const bool wasThere = found != nullptr;
    if (!wasThere)
        found = insert(key);
    Entry& entry = found->second;
    const bool changes = !wasThere || entry.value != value;
    if (changes || entry.setFor != writing_) {
        changes_.push_back({found, entry.setFor, entry.changedFor, wasThere, changes});
        entry.setFor = writing_;
    }
    if (changes) {
        before_.push_back(std::exchange(entry.value, Value(value)));
        entry.changedFor = writing_;
    }
    database_.changed();
}

void EntryStore::rollBack(std::size_t mark) {
    if (changes_.size() > mark)
        forgetOrder(); // which may lead to entries that go
    for (; changes_.size() > mark; changes_.pop_back())
        takeBack(changes_.back());
}

void EntryStore::takeBack(const Change& change) {
    Entry& entry = change.entry->second;
    if (change.hasBefore) {
        entry.value = std::move(before_.back());
        before_.pop_back();
    }
    entry.setFor = change.setFor;
    entry.changedFor = change.changedFor;
    if (!change.wasThere)
        entries_.erase(entries_.find(change.entry->first));
}

void EntryStore::forgetOrder() {
    last_ = nullptr;
    for (auto& [key, entry] : entries_)
        entry.next = nullptr;
}

const char* EntryStore::schema() const {
    return "CREATE TABLE entries (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID";
}

void EntryStore::load(Connection& file) {
    for (auto& [key, entry] : entries_) // which another process may have removed
        if (entry.setFor != writing_)
            entry.value.reset();
    SQLite::Statement rows(file, "SELECT key, value FROM entries");
    while (rows.executeStep()) {
        const std::string_view key = bytes(rows.getColumn(0));
        Node* found = find(key);
        if (!found)
            found = insert(key);
        if (found->second.setFor != writing_)
            found->second.value = bytes(rows.getColumn(1));
    }
}

void EntryStore::write(Connection& file, Contents contents) {
    if (contents == Contents::ChangedByOthers)
        load(file);
    if (changes_.size() > 2 * entries_.size())
        keepOneChangeOfEach(); // it could not be written for long
    SQLite::Statement& upsert = file.prepared("REPLACE INTO entries (key, value) VALUES (?, ?)");
    SQLite::Statement& removal = file.prepared("DELETE FROM entries WHERE key = ?");
    for (const Change& change : changes_) {
        const auto& [key, entry] = *change.entry;
        if (contents == Contents::Known && entry.changedFor != writing_)
            continue;
        SQLite::Statement& statement = entry.value ? upsert : removal;
        statement.bindNoCopy(1, key);
        if (entry.value)
            statement.bindNoCopy(2, *entry.value);
        statement.exec();
        statement.reset();
    }
}

// No scope is open when entries are written, so nothing will be taken back.
void EntryStore::keepOneChangeOfEach() {
    before_.clear();
    for (Change& change : changes_) {
        change.entry->second.setFor = 0;
        change.hasBefore = false;
    }
    std::erase_if(changes_, [&](Change& change) {
        return std::exchange(change.entry->second.setFor, writing_) == writing_;
    });
}

void EntryStore::written() {
    changes_.clear();
    before_.clear();
    ++writing_;
}

void EntryStore::lost() {
    changes_.clear();
    before_.clear();
    for (auto& entry : entries_) {
        entry.second.setFor = entry.second.changedFor = writing_;
        changes_.push_back({&entry, writing_, writing_, true, false});
    }
}

} // namespace vx::services
