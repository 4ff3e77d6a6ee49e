#include "services/core/StoreFile.h"

#include <array>
#include <cerrno>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sqlite3.h>

namespace vx::services {

namespace fs = std::filesystem;

namespace {

using Status = struct stat;

// Found again in every user's store: "vxpr" in ASCII.
constexpr int kApplicationID = 0x76787072;
// How long a commit may wait for another process, in milliseconds.
constexpr int kBusyTimeout = 1000;
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

// A file without content is ours to fill.
bool isOurs(SQLite::Database& database) {
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
    auto database = std::make_unique<Connection>(path_.string(),
                                                 SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE |
                                                     SQLite::OPEN_NOFOLLOW | SQLite::OPEN_NOMUTEX,
                                                 kBusyTimeout);
    connected_ = fileStatus(path_).value_or(Status()).st_ino;
    if (!isOurs(*database))
        throw SQLite::Exception("it belongs to another program", SQLITE_NOTADB);
    database->exec("PRAGMA journal_mode = WAL");
    database->exec("PRAGMA synchronous = FULL");
    return database;
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

void StoreFile::tighten() const {
    for (std::string_view suffix : kSuffixes) {
        const fs::path file = beside(suffix);
        const auto found = fileStatus(file);
        if (found && !S_ISREG(found->st_mode)) {
            errno = ELOOP;
            fail("the store is a link or no file at all", file);
        }
        if (found && (found->st_mode & (S_IRWXG | S_IRWXO)))
            ::chmod(file.c_str(), S_IRUSR | S_IWUSR);
    }
}

fs::path StoreFile::moveAside() {
    const auto found = fileStatus(path_);
    if (!found || found->st_ino != connected_)
        return path_;
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
    const int code = problem.getErrorCode() & 0xff;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

fs::path StoreFile::beside(std::string_view suffix) const {
    return fs::path(path_) += suffix;
}

} // namespace vx::services
