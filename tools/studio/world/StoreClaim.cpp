// What lies at the path of a store, and who uses it.

#include "tools/studio/world/StoreClaim.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/system/Files.h"

namespace vx::tools::studio {

namespace {

namespace fs = std::filesystem;

constexpr int kBusyPatience = 5000; // milliseconds; an application that ends puts its log away
// "vxpr" in ASCII, in every store.
constexpr unsigned kApplicationID = 0x76787072;

// The beginning of an SQLite file (https://www.sqlite.org/fileformat2.html, 1.3 and 1.6).
struct Header {
    std::array<unsigned char, 108> bytes{};

    explicit Header(const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        stream.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
        if (stream.bad() || !stream.is_open())
            throw std::system_error(errno, std::generic_category(), file.string());
    }
    bool isSQLite() const {
        return std::string(bytes.begin(), bytes.begin() + 15) == "SQLite format 3";
    }
    unsigned applicationID() const {
        return static_cast<unsigned>(bytes[68]) << 24 | static_cast<unsigned>(bytes[69]) << 16 |
               static_cast<unsigned>(bytes[70]) << 8 | bytes[71];
    }
    bool hasNoTables() const { return bytes[100] == 13 && bytes[103] == 0 && bytes[104] == 0; }
};

// Of a file that has nothing in it yet: what was written last may lie in its log alone. Throws
// when another program locks it for long.
bool isOursWithItsLog(const fs::path& file) {
    try {
        SQLite::Database database(file.string(), SQLite::OPEN_READONLY, kBusyPatience);
        const auto number = [&](const char* query) { return database.execAndGet(query).getUInt(); };
        const unsigned application = number("PRAGMA application_id");
        return application == kApplicationID ||
               (application == 0 && number("SELECT count(*) FROM sqlite_master") == 0);
    } catch (const SQLite::Exception& error) {
        if (error.getErrorCode() == SQLITE_BUSY)
            throw;
        return false;
    }
}

bool isOurs(const fs::path& file) {
    const Header header(file);
    return header.isSQLite() &&
           (header.applicationID() == kApplicationID ||
            (header.applicationID() == 0 && header.hasNoTables() && isOursWithItsLog(file)));
}

std::optional<Problem> findObstacle(const fs::path& file) {
    const fs::file_status status = fs::symlink_status(file);
    const auto problem = [&](const char* what) {
        return Problem{file.string() + " is " + what +
                       ", no store of the studio's; it stays as it is"};
    };
    switch (status.type()) {
    case fs::file_type::not_found:
        return {};
    case fs::file_type::regular:
        try {
            if (fs::file_size(file) == 0 || isOurs(file))
                return {};
        } catch (const SQLite::Exception&) {
            return Problem{file.string() + " is locked by another program, so that nothing tells "
                                           "whose it is; it stays as it is"};
        }
        return problem("another program's file");
    case fs::file_type::directory:
        return problem("a directory");
    case fs::file_type::symlink:
        return problem("a link");
    default:
        return problem("no regular file");
    }
}

// As the application would make it: for the user alone.
void makeDirectory(const fs::path& directory) {
    fs::create_directories(directory.parent_path());
    if (::mkdir(directory.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), directory.string());
}

std::system_error lockFailure(const std::string& name) {
    return {errno, std::generic_category(),
            name + ", which keeps a second studio away, cannot be written"};
}

std::string holderOf(int lock) {
    char text[32];
    const ssize_t size = ::pread(lock, text, sizeof text, 0);
    return size > 0 ? " (process " + std::string(text, static_cast<std::size_t>(size)) + ")" : "";
}

} // namespace

Result<std::shared_ptr<const StoreClaim>> StoreClaim::make(const fs::path& file, Path whose) {
    if (const std::optional<Problem> obstacle = findObstacle(file);
        obstacle && whose == Path::Named)
        return *obstacle;
    makeDirectory(file.parent_path());
    const std::string name = file.string() + ".lock";
    system::Descriptor lock(::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock.get() < 0)
        throw lockFailure(name);
    if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
        return Problem{file.string() + " is in use by another studio" + holderOf(lock.get()) +
                       "; name another with --store"};
    if (::ftruncate(lock.get(), 0) != 0 ||
        !system::writeAll(lock.get(), std::to_string(::getpid())))
        throw lockFailure(name);
    return std::make_shared<const StoreClaim>(std::move(lock));
}

} // namespace vx::tools::studio
