#include "bench/BareStore.h"

#include "bench/MeasuredApplication.h"

namespace vx::bench {

namespace {

SQLite::Database emptyDatabase(std::string_view name) {
    SQLite::Database database(freshDirectory(name) / "rows.sqlite",
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec("PRAGMA journal_mode = WAL");
    database.exec("PRAGMA synchronous = FULL");
    database.exec("CREATE TABLE entries (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID");
    return database;
}

} // namespace

BareStore::BareStore(std::string_view name)
    : database_(emptyDatabase(name)),
      statement_(database_, "INSERT INTO entries VALUES (?, ?) "
                            "ON CONFLICT DO UPDATE SET value = excluded.value") {}

void BareStore::upsert(const Rows& rows) {
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    for (const auto& [key, value] : rows) {
        statement_.bindNoCopy(1, key);
        statement_.bindNoCopy(2, value);
        statement_.exec();
        statement_.reset();
    }
    transaction.commit();
}

} // namespace vx::bench
