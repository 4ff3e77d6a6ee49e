#include <cerrno>
#include <system_error>

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vxprivacy/services/system/System.h"

namespace vx::services::system {

namespace fs = std::filesystem;

namespace {

#ifdef __APPLE__
constexpr const char* kCurlNames[] = {"libcurl.4.dylib"};
#else
// The one library under its two names on Debian, after the TLS library that it was built with.
constexpr const char* kCurlNames[] = {"libcurl.so.4", "libcurl-gnutls.so.4"};
#endif

[[noreturn]] void fail(const char* what, const fs::path& path) {
    throw fs::filesystem_error(what, path, std::error_code(errno, std::generic_category()));
}

int openDirectory(const fs::path& directory) {
    return ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

} // namespace

bool makeDirectory(const fs::path& directory) {
    const bool made = ::mkdir(directory.c_str(), S_IRWXU) == 0;
    if (!made && errno != EEXIST)
        fail("no directory can be made", directory);
    return made;
}

bool makeFile(const fs::path& file) {
    const int handle =
        ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (handle < 0 && errno != EEXIST)
        fail("no file can be made", file);
    if (handle >= 0)
        ::close(handle);
    return handle >= 0;
}

void sync(const fs::path& directory) {
    const int handle = openDirectory(directory);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

DirectoryLock::DirectoryLock(const fs::path& directory)
    : directory_(directory), handle_(openDirectory(directory)) {
    if (handle_ < 0)
        fail("the directory cannot be locked", directory);
}

DirectoryLock::~DirectoryLock() {
    ::close(static_cast<int>(handle_));
}

bool DirectoryLock::tryLock() {
    const bool locked = ::flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB) == 0;
    if (!locked && errno != EWOULDBLOCK && errno != EINTR)
        fail("the directory cannot be locked", directory_);
    return locked;
}

std::string utf8(const fs::path& path) {
    return path.native();
}

void* loadCurl(std::string& problem) {
    for (const char* name : kCurlNames) {
        if (void* library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL))
            return library;
        if (problem.empty())
            problem = ::dlerror();
    }
    return nullptr;
}

void* functionOf(void* library, const char* name) {
    return ::dlsym(library, name);
}

std::optional<std::uint32_t> ipv4Address(const std::string& text) {
    in_addr address{};
    if (::inet_pton(AF_INET, text.c_str(), &address) != 1)
        return {};
    return ntohl(address.s_addr);
}

} // namespace vx::services::system
