// How the file and its directory are made, tightened, recognised and moved aside.

#include "vxprivacy/services/core/StoreFile.h"

#include <array>
#include <chrono>
#include <system_error>
#include <thread>

#include <sqlite3.h>

#include "vxprivacy/services/core/WriteAheadLog.h"
#include "vxprivacy/services/system/System.h"

namespace vx::services {

namespace fs = std::filesystem;

namespace {

// Found again in every user's store: "vxpr" in ASCII.
constexpr int kApplicationID = 0x76787072;
// The file and what SQLite keeps beside it; the file itself last, so that a crash in the middle of
// moving them never leaves it behind with a log that is not its own.
constexpr std::array<std::string_view, 3> kSuffixes{"-wal", "-shm", ""};

// How long another process may take to move the store.
constexpr std::chrono::milliseconds kLockPatience{50};

bool isThere(const fs::path& path) {
    return fs::exists(fs::symlink_status(path));
}

int number(SQLite::Database& database, const char* query) {
    return database.execAndGet(query).getInt();
}

// A file without content is ours to fill. Both facts as of one moment, for another process may be
// filling it.
bool isOurs(SQLite::Database& database) {
    const SQLite::Transaction moment(database);
    const int application = number(database, "PRAGMA application_id");
    return application == kApplicationID ||
           (application == 0 && number(database, "SELECT count(*) FROM sqlite_master") == 0);
}

// Takes the lock.
void waitFor(system::DirectoryLock& directory, const fs::path& path) {
    const auto deadline = std::chrono::steady_clock::now() + kLockPatience;
    while (!directory.tryLock()) {
        if (std::chrono::steady_clock::now() > deadline)
            throw fs::filesystem_error("another process is moving the store", path,
                                       std::make_error_code(std::errc::timed_out));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

// Whether nothing but the store lies in `directory`, and it is no common one.
bool isOnlyFor(const fs::path& file, const fs::path& directory) {
    if ((fs::status(directory).permissions() & fs::perms::sticky_bit) != fs::perms::none)
        return false;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        if (!entry.path().filename().native().starts_with(file.filename().native()))
            return false;
    return true;
}

} // namespace

StoreFile::StoreFile(const fs::path& path) : path_(path) {
    std::error_code unknown; // without a current directory the path stays as it is
    if (fs::path whole = fs::absolute(path, unknown); !unknown)
        path_ = std::move(whole);
}

std::unique_ptr<Connection> StoreFile::connect() {
    makeDirectory();
    system::makeFile(path_);
    tighten();
    hasGarbageLog_ = isGarbageLog(beside("-wal"));
    return std::make_unique<Connection>(path_);
}

void StoreFile::check(Connection& file) const {
    if (!isOurs(file))
        throw SQLite::Exception("it belongs to another program", SQLITE_NOTADB);
    if (hasGarbageLog_)
        throw SQLite::Exception("its log is damaged", SQLITE_CORRUPT);
    if (file.isOfLaterFormat())
        throw SQLite::Exception("its format is unknown", SQLITE_NOTADB);
    file.exec("PRAGMA journal_mode = WAL");
    file.exec("PRAGMA synchronous = FULL");
}

void StoreFile::claim(SQLite::Database& database) {
    database.exec("PRAGMA application_id = " + std::to_string(kApplicationID));
}

// A directory that was there before is made private only when it holds nothing else.
void StoreFile::makeDirectory() {
    fs::path directory = path_.parent_path();
    fs::create_directories(directory.parent_path());
    const bool made = system::makeDirectory(directory);
    if (made)
        system::sync(directory.parent_path());
    directory = fs::canonical(directory); // the directory may be a link, the file may not
    path_ = directory / path_.filename();
    std::error_code refused; // it may be another user's
    if (!made && isOnlyFor(path_, directory))
        fs::permissions(directory, fs::perms::owner_all, refused);
}

// The user alone may read the file, and what SQLite keeps beside it has the file's own rights:
// SQLite gives it those that the file has when it is made, be it for reading only.
void StoreFile::tighten() const {
    const fs::perms rights =
        fs::symlink_status(path_).permissions() & (fs::perms::owner_read | fs::perms::owner_write);
    for (std::string_view suffix : kSuffixes) {
        const fs::path file = beside(suffix);
        const fs::file_status found = fs::symlink_status(file);
        if (!fs::exists(found))
            continue;
        if (!fs::is_regular_file(found))
            throw fs::filesystem_error(
                "the store is a link or no file at all", file,
                std::make_error_code(std::errc::too_many_symbolic_link_levels));
        std::error_code refused; // it may be another user's
        if (found.permissions() != rights)
            fs::permissions(file, rights, refused);
    }
}

// The lock, lest two processes that found the same damage move one another's new file.
std::optional<fs::path> StoreFile::moveAside(std::unique_ptr<Connection> file) {
    system::DirectoryLock directory(path_.parent_path());
    waitFor(directory, path_);
    if (file->hasMoved())
        return {};
    file.reset();
    fs::path aside = reserveName();
    for (std::string_view suffix : kSuffixes)
        if (isThere(beside(suffix)))
            fs::rename(beside(suffix), fs::path(aside) += suffix);
    return aside;
}

// The first free name, held by an empty file, so that no other process takes it too.
fs::path StoreFile::reserveName() const {
    for (int count = 1;; ++count) {
        fs::path name = beside(".damaged-" + std::to_string(count));
        if (!isThere(fs::path(name) += "-wal") && !isThere(fs::path(name) += "-shm") &&
            system::makeFile(name))
            return name;
    }
}

bool StoreFile::meansDamage(const SQLite::Exception& problem) {
    // An error is what SQLite has for a table that is not there and a format that it does not know.
    const int code = problem.getErrorCode() & 0xff;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_ERROR;
}

fs::path StoreFile::beside(std::string_view suffix) const {
    return fs::path(path_) += suffix;
}

} // namespace vx::services
