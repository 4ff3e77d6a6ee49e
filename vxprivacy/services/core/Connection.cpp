#include "vxprivacy/services/core/Connection.h"

#include <algorithm>
#include <thread>

#include <sqlite3.h>

#include "vxprivacy/services/system/System.h"

namespace vx::services {

namespace {

using namespace std::chrono_literals;

// Shorter than SQLite's own pauses, so that each of several processes has its turn.
constexpr std::chrono::microseconds kPause = 1ms;

// https://sqlite.org/fileformat2.html, section 1.3
constexpr sqlite3_int64 kWriteVersionOffset = 18;
constexpr unsigned char kKnownWriteVersion = 2;

} // namespace

Connection::Connection(const std::filesystem::path& file)
    : SQLite::Database(system::utf8(file),
                       SQLite::OPEN_READWRITE | SQLite::OPEN_NOFOLLOW | SQLite::OPEN_NOMUTEX) {
    sqlite3_busy_handler(getHandle(), &waitForOthers, this);
    sqlite3_db_config(getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void Connection::setPatience(std::chrono::milliseconds patience) {
    deadline_ = std::chrono::steady_clock::now() + patience;
}

void Connection::trust() {
    sqlite3_db_config(getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

bool Connection::hasMoved() const {
    int moved = 0;
    sqlite3_file_control(const_cast<Connection*>(this)->getHandle(), "main", SQLITE_FCNTL_HAS_MOVED,
                         &moved);
    return moved != 0;
}

// Read as SQLite reads it: closing a descriptor of our own would take its locks away.
bool Connection::isOfLaterFormat() const {
    unsigned char version = 0;
    sqlite3_file* file = nullptr;
    sqlite3_file_control(const_cast<Connection*>(this)->getHandle(), "main",
                         SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    return file && file->pMethods &&
           file->pMethods->xRead(file, &version, 1, kWriteVersionOffset) == SQLITE_OK &&
           version > kKnownWriteVersion;
}

SQLite::Statement& Connection::prepared(const char* sql) {
    auto found = statements_.find(sql);
    if (found == statements_.end())
        found = statements_.emplace(sql, SQLite::Statement(*this, sql)).first;
    found->second.tryReset(); // what became of its last run was said then
    return found->second;
}

int Connection::waitForOthers(void* connection, int) {
    const auto left =
        static_cast<Connection*>(connection)->deadline_ - std::chrono::steady_clock::now();
    if (left <= 0ms)
        return 0;
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, kPause));
    return 1;
}

} // namespace vx::services
