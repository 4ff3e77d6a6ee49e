// How the file and its directory are made, tightened, recognised and moved aside.

#include "vxprivacy/services/core/StoreFile.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vxprivacy/services/core/WriteAheadLog.h"

namespace vx::services {

namespace fs = std::filesystem;

namespace {

using Status = struct stat;

// Found again in every user's store: "vxpr" in ASCII.
constexpr int kApplicationID = 0x76787072;
// The file and what SQLite keeps beside it; the file itself last, so that a crash in the middle of
// moving them never leaves it behind with a log that is not its own.
constexpr std::array<std::string_view, 3> kSuffixes{"-wal", "-shm", ""};

[[noreturn]] void fail(const char* what, const fs::path& path) {
    throw fs::filesystem_error(what, path, std::error_code(errno, std::generic_category()));
}

std::optional<Status> fileStatus(const fs::path& path) {
    Status found{};
    return ::lstat(path.c_str(), &found) == 0 ? std::optional(found) : std::nullopt;
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

// Makes what was made in `directory` survive a power cut.
void sync(const fs::path& directory) {
    const int handle = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

// Lets one process at a time move files in a directory, while the object lives.
class DirectoryLock {
public:
    explicit DirectoryLock(const fs::path& directory)
        : handle_(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        const auto deadline = std::chrono::steady_clock::now() + kLockPatience;
        while (::flock(handle_, LOCK_EX | LOCK_NB) != 0) {
            if (handle_ < 0 || std::chrono::steady_clock::now() > deadline) {
                ::close(handle_);
                fail("another process is moving the store", directory);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    ~DirectoryLock() { ::close(handle_); }
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    static constexpr std::chrono::milliseconds kLockPatience{50};
    const int handle_;
};

// Whether nothing but the store lies in `directory`, and it is no common one.
bool isOnlyFor(const fs::path& file, const fs::path& directory) {
    if (fileStatus(directory)->st_mode & S_ISVTX)
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
    makeFile();
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
    const bool made = ::mkdir(directory.c_str(), S_IRWXU) == 0;
    if (!made && errno != EEXIST)
        fail("no directory for the store", directory);
    if (made)
        sync(directory.parent_path());
    directory = fs::canonical(directory); // the directory may be a link, the file may not
    path_ = directory / path_.filename();
    if (!made && isOnlyFor(path_, directory))
        ::chmod(directory.c_str(), S_IRWXU);
}

void StoreFile::makeFile() {
    const int file = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0)
        ::close(file);
    else if (errno != EEXIST)
        fail("the store cannot be made", path_);
}

// The user alone may read the file, and what SQLite keeps beside it has the file's own rights:
// SQLite gives it those that the file has when it is made, be it for reading only.
void StoreFile::tighten() const {
    const auto store = fileStatus(path_);
    const mode_t rights = store ? store->st_mode & (S_IRUSR | S_IWUSR) : 0;
    for (std::string_view suffix : kSuffixes) {
        const fs::path file = beside(suffix);
        const auto found = fileStatus(file);
        if (found && !S_ISREG(found->st_mode)) {
            errno = ELOOP;
            fail("the store is a link or no file at all", file);
        }
        if (found && (found->st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) != rights)
            ::chmod(file.c_str(), rights);
    }
}

// The lock, lest two processes that found the same damage move one another's new file.
std::optional<fs::path> StoreFile::moveAside(const Connection& file) {
    const DirectoryLock lock(path_.parent_path());
    if (file.hasMoved())
        return {};
    fs::path aside = reserveName();
    for (std::string_view suffix : kSuffixes)
        if (fileStatus(beside(suffix)))
            fs::rename(beside(suffix), fs::path(aside) += suffix);
    return aside;
}

// The first free name, held by an empty file, so that no other process takes it too.
fs::path StoreFile::reserveName() const {
    for (int count = 1;; ++count) {
        fs::path name = beside(".damaged-" + std::to_string(count));
        if (fileStatus(fs::path(name) += "-wal") || fileStatus(fs::path(name) += "-shm"))
            continue;
        const int file = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (file < 0 && errno != EEXIST)
            fail("the store cannot be moved aside", name);
        if (file >= 0) {
            ::close(file);
            return name;
        }
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
