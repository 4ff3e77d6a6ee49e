// When the tables are read and written, in which transaction, and what follows when that fails.

#include "vxprivacy/services/core/Database.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

#include "vxprivacy/services/system/System.h"

namespace vx::services {

namespace {

using namespace std::chrono_literals;

constexpr int kSchemaVersion = 1;
constexpr std::chrono::milliseconds kFirstPause = 250ms;
constexpr std::chrono::milliseconds kLongestPause = 1min;
// How long a save waits for other processes, and how long where the one before waited in vain.
constexpr std::chrono::milliseconds kPatience = 150ms;
constexpr std::chrono::milliseconds kPatienceInTrouble = 20ms;

int dataVersion(Connection& file) {
    SQLite::Statement& query = file.prepared("PRAGMA data_version");
    query.executeStep();
    const int version = query.getColumn(0).getInt();
    query.reset(); // or it would go on reading
    return version;
}

} // namespace

Table::~Table() = default;

Database::Database(const std::filesystem::path& file, Logger& logger)
    : file_(file), logger_(logger) {}

void Database::open() {
    try {
        connect();
    } catch (const std::exception& reason) {
        failed(reason);
    }
}

void Database::begin() {
    Marks marks;
    for (const Table* table : tables_)
        marks.push_back(table->mark());
    scopes_.push_back(std::move(marks));
}

void Database::commit() {
    scopes_.pop_back();
    changed();
}

void Database::rollBack() {
    for (std::size_t i = 0; i < tables_.size(); ++i)
        tables_[i]->rollBack(scopes_.back()[i]);
    scopes_.pop_back();
}

void Database::changed() {
    if (scopes_.empty() && pending())
        flush();
}

void Database::retry() {
    if (failing_ && scopes_.empty() && Steady::now() >= nextTry_)
        flush(); // also when nothing waits: what the file holds may never have been read
}

void Database::finish() {
    onSettled_ = nullptr;
    finishing_ = true;
    changed();
}

std::optional<std::chrono::milliseconds> Database::timeToRetry() const {
    if (!failing_)
        return {};
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(nextTry_ - Steady::now()), 0ms);
}

void Database::flush() {
    for (Table* table : tables_)
        table->compact();
    try {
        if (connection_ && connection_->hasMoved())
            disconnect();
        if (!connection_)
            connect();
        connection_->setPatience(patience());
        writeOrReplace();
        succeeded();
    } catch (const std::exception& reason) {
        failed(reason);
    }
    if (onSettled_)
        onSettled_();
}

// Once more where a damaged file was moved aside.
void Database::connect() {
    if (!tryToConnect() && !tryToConnect())
        throw std::runtime_error("each file in its place is damaged");
}

// False where the file was damaged: it has another name now.
bool Database::tryToConnect() {
    auto file = file_.connect();
    file->setPatience(patience());
    try {
        file_.check(*file);
        if (makeTables(*file))
            for (Table* table : tables_)
                table->lost();
        dataVersion_ = dataVersion(*file); // before reading, so that no later write goes unseen
        for (Table* table : tables_)
            table->load(*file);
    } catch (const SQLite::Exception& problem) {
        if (!StoreFile::meansDamage(problem))
            throw;
        moveAside(problem, std::move(file));
        return false;
    }
    file->trust();
    connection_ = std::move(file);
    return true;
}

void Database::disconnect() {
    connection_.reset();
    for (Table* table : tables_)
        table->disconnected();
}

// Says whether they were missing.
bool Database::makeTables(Connection& file) {
    if (file.execAndGet("PRAGMA user_version").getInt() == kSchemaVersion)
        return false;
    SQLite::Transaction transaction(file, SQLite::TransactionBehavior::IMMEDIATE);
    const int version = file.execAndGet("PRAGMA user_version").getInt();
    if (version != 0 && version != kSchemaVersion)
        throw SQLite::Exception("its layout is unknown", SQLITE_NOTADB);
    if (version == 0) {
        StoreFile::claim(file);
        for (const Table* table : tables_)
            file.exec(table->schema());
        file.exec("PRAGMA user_version = " + std::to_string(kSchemaVersion));
    }
    transaction.commit();
    return version == 0;
}

void Database::write() {
    SQLite::Transaction transaction(*connection_, SQLite::TransactionBehavior::IMMEDIATE);
    const int version = dataVersion(*connection_);
    const Contents contents = version == dataVersion_ ? Contents::Known : Contents::ChangedByOthers;
    for (Table* table : tables_)
        table->write(*connection_, contents);
    transaction.commit();
    dataVersion_ = version;
    for (Table* table : tables_)
        table->written();
}

// Damage that only shows in writing: memory has all but the documents, which are downloaded again.
void Database::writeOrReplace() {
    try {
        write();
    } catch (const SQLite::Exception& problem) {
        const int code = problem.getErrorCode() & 0xff;
        if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB) {
            moveAside(problem, std::move(connection_));
            disconnect();
            connect();
            return write();
        }
        if (code != SQLITE_BUSY && code != SQLITE_FULL)
            connection_.reset(); // SQLite would not notice that a file may be written again
        throw;
    }
}

void Database::moveAside(const std::exception& reason, std::unique_ptr<Connection> file) {
    if (const auto aside = file_.moveAside(std::move(file)))
        logger_.log("The store " + system::utf8(file_.path()) + " cannot be used (" +
                        reason.what() + "); it is now " + system::utf8(*aside) +
                        ", and a new one is begun",
                    kLogProblem);
}

std::chrono::milliseconds Database::patience() const {
    if (finishing_)
        return 0ms;
    return failing_ ? kPatienceInTrouble : kPatience;
}

bool Database::pending() const {
    return std::ranges::any_of(tables_, [](const Table* table) { return table->pending(); });
}

void Database::failed(const std::exception& reason) {
    if (!failing_)
        logger_.log("The store " + system::utf8(file_.path()) + " cannot be written (" +
                        reason.what() + "); changes are kept in memory and tried again",
                    kLogProblem);
    pause_ = failing_ ? std::min(pause_ * 2, kLongestPause) : kFirstPause;
    nextTry_ = Steady::now() + pause_;
    failing_ = true;
    problem_ = reason.what();
}

void Database::succeeded() {
    if (failing_)
        logger_.log("The store " + system::utf8(file_.path()) + " is written again", kLogNote);
    failing_ = false;
    problem_.clear();
}

} // namespace vx::services
