// Entries in memory, and the list of what was set since the file was written last: by it scopes are
// taken back, the file is brought up to date, and two processes' saves are put together.

#include "vxprivacy/services/core/EntryStore.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include <sqlite3.h>

#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services {

namespace {

// Found again in every user's store. Lies beside the time, so that a save touches no more pages.
constexpr std::string_view kDigestKey = "VXStoreDigest";

// What a save of consent writes, TC data included.
bool isOfChoice(std::string_view key) {
    return consentKind(key) != ConsentKind::None || key == kVXPrivacyConsent ||
           key == kVXConsentTime || key == kVXShouldDisplayPrivacyCenter ||
           std::ranges::any_of(
               kConsentKinds,
               [&](ConsentKind kind) { return consentNames(kind).savedList == key; }) ||
           key.starts_with("IABTCF_");
}

[[noreturn]] void reportDamage() {
    throw SQLite::Exception("its entries are damaged", SQLITE_CORRUPT);
}

} // namespace

EntryStore::EntryStore(Database& database, const Clock& clock, Logger& logger)
    : database_(database), clock_(clock), logger_(logger) {
    database.add(*this);
}

std::optional<std::string> EntryStore::get(std::string_view key) const {
    const Entry* found = entries_.find(key);
    return found ? found->second.value : std::nullopt;
}

void EntryStore::set(std::string_view key, std::string_view value) {
    put(key, value, false);
}

void EntryStore::remove(std::string_view key) {
    put(key, std::nullopt, false);
}

void EntryStore::setIfAbsent(std::string_view key, std::string_view value) {
    if (!get(key))
        put(key, value, true);
}

void EntryStore::put(std::string_view key, std::optional<std::string_view> value,
                     bool onlyIfAbsent) {
    if (key == kDigestKey)
        return;
    settings_.push_back(assign(entries_.make(key), value, digest_));
    settings_.back().onlyIfAbsent = onlyIfAbsent;
    database_.changed();
}

EntryStore::Setting EntryStore::assign(Entry& entry, std::optional<std::string_view> value,
                                       EntryDigest& digest) {
    const std::string& key = entry.first;
    Value& held = entry.second.value;
    if (held == value)
        return {&entry};
    if (held)
        digest.remove(key, *held);
    if (value)
        digest.add(key, *value);
    return {&entry, std::make_unique<Value>(std::exchange(held, Value(value)))};
}

void EntryStore::standBy(std::string_view key, std::string_view value) {
    Entry& entry = entries_.make(key);
    settings_.push_back({.entry = &entry,
                         .stand = std::make_unique<Stand>(std::string(value), entry.second.value)});
}

void EntryStore::rollBack(std::size_t mark) {
    for (; settings_.size() > mark; settings_.pop_back())
        if (const Setting& last = settings_.back(); last.before)
            assign(*last.entry, *last.before, digest_);
}

void EntryStore::setObserver(KeyValueStoreObserver* observer) {
    observer_ = observer;
    othersChanged_ = false;
}

void EntryStore::tellObserver() {
    if (std::exchange(othersChanged_, false))
        observer_->entriesChanged();
}

void EntryStore::announceChange() {
    if (!observer_)
        return;
    observer_->entriesWillChange();
    othersChanged_ = true;
}

const char* EntryStore::schema() const {
    return "CREATE TABLE entries (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID";
}

// Takes over what the file holds, and sets again what this process set and did not write yet.
// Throws before anything is changed where the file is damaged: where its keys do not ascend, for
// SQLite finds no key in such a table, or where the digest is that of other entries.
void EntryStore::load(Connection& file) {
    EntryMap loaded;
    EntryDigest digest;
    std::string kept;
    SQLite::Statement rows(file, "SELECT key, value FROM entries");
    std::string last;
    for (bool first = true; rows.executeStep(); first = false) {
        const std::string_view key = bytes(rows.getColumn(0));
        const std::string_view value = bytes(rows.getColumn(1));
        if (!first && key <= last)
            reportDamage();
        last = key;
        if (key == kDigestKey) {
            kept = value;
            continue;
        }
        assign(loaded.make(key), value, digest);
    }
    if (!kept.empty() && kept != digest.text())
        reportDamage();
    if (givesWayTo(loaded)) {
        logger_.log("A choice that could not be written gives way to a later one", kLogNote);
        std::erase_if(settings_,
                      [](const Setting& setting) { return isOfChoice(setting.entry->first); });
    }
    setAgain(loaded, digest);
    if (!(loaded == entries_))
        announceChange();
    entries_ = std::move(loaded);
    digest_ = digest;
    digestInFile_ = kept;
}

// Whether the pending choice is older than that of the file, which another process saved meanwhile.
// One from the future is none: a clock was wrong.
bool EntryStore::givesWayTo(const EntryMap& loaded) const {
    const auto ours = std::ranges::find_if(settings_, [](const Setting& setting) {
        return setting.entry->first == kVXConsentTime && !setting.stand;
    });
    const Entry* theirs = loaded.find(kVXConsentTime);
    if (ours == settings_.end() || !theirs ||
        (ours->before && theirs->second.value == *ours->before))
        return false;
    const auto time = [](const Entry& entry) {
        return decimalInteger(entry.second.value.value_or(""));
    };
    const auto now = static_cast<std::int64_t>(clock_.nowMilliseconds());
    return time(*theirs) > time(*ours->entry) && time(*theirs) <= now;
}

void EntryStore::setAgain(EntryMap& loaded, EntryDigest& digest) {
    std::vector<Setting> settings;
    settings.reserve(settings_.size());
    for (auto& [own, before, stand, onlyIfAbsent] : settings_) {
        Entry& entry = loaded.make(own->first);
        if (stand && entry.second.value == stand->before) // nobody else changed it
            settings.push_back({.entry = &entry, .stand = std::move(stand)});
        else if (stand)
            settings.push_back(assign(entry, stand->value, digest));
        else if (!onlyIfAbsent || !entry.second.value)
            settings.push_back(assign(entry, own->second.value, digest));
    }
    settings_ = std::move(settings);
}

void EntryStore::write(Connection& file, Contents contents) {
    if (contents == Contents::ChangedByOthers)
        load(file);
    SQLite::Statement& upsert = file.prepared("REPLACE INTO entries (key, value) VALUES (?, ?)");
    SQLite::Statement& removal = file.prepared("DELETE FROM entries WHERE key = ?");
    const auto run = [](SQLite::Statement& statement) {
        statement.exec();
        statement.reset();
    };
    for (const Setting& setting : settings_) {
        const auto& [key, content] = *setting.entry;
        if (!setting.before || content.value == *setting.before)
            continue;
        SQLite::Statement& statement = content.value ? upsert : removal;
        statement.bindNoCopy(1, key);
        if (content.value)
            statement.bindNoCopy(2, *content.value);
        run(statement);
    }
    const std::string digest = digest_.text();
    if (digest == digestInFile_)
        return;
    upsert.bind(1, std::string(kDigestKey));
    upsert.bind(2, digest);
    run(upsert);
}

void EntryStore::written() {
    warnOfEmptyDecision();
    settings_.clear();
    digestInFile_ = digest_.text();
}

// Accept all finds nothing to accept where no document was found, and is saved as a refusal.
void EntryStore::warnOfEmptyDecision() const {
    const auto is = [this](auto condition) { return std::ranges::any_of(settings_, condition); };
    if (is([](const Setting& setting) {
            return consentKind(setting.entry->first) != ConsentKind::None;
        }))
        return; // as in nearly all saves, with the first setting
    if (is([](const Setting& setting) {
            const auto& [key, content] = *setting.entry;
            return key == kVXShouldDisplayPrivacyCenter && content.value == kNeedNotDisplay;
        }))
        logger_.log("A decision was saved that names no category and no vendor, so it counts as a "
                    "refusal: the configuration was not found, or lists none",
                    kLogProblem);
}

// What the file holds is known from the first setting that changed an entry, and what the settings
// go with from the last. No other is needed, for none will be taken back.
void EntryStore::compact() {
    if (settings_.size() <= 2 * entries_.size())
        return;
    std::set<const Entry*> changed;
    std::set<const Entry*> named;
    std::map<const Entry*, Stand*> stands;
    std::erase_if(settings_, [&](Setting& setting) {
        if (setting.before)
            return !changed.insert(setting.entry).second;
        return !setting.stand && !named.insert(setting.entry).second;
    });
    for (Setting& setting : settings_)
        if (setting.stand) {
            Stand*& first = stands.try_emplace(setting.entry, setting.stand.get()).first->second;
            first->value = setting.stand->value;
        }
    std::erase_if(settings_, [&](const Setting& setting) {
        return setting.stand && stands.at(setting.entry) != setting.stand.get();
    });
}

void EntryStore::lost() {
    settings_.clear();
    for (Entry& entry : entries_)
        settings_.push_back({&entry, std::make_unique<Value>()}); // an empty file holds none
}

} // namespace vx::services
