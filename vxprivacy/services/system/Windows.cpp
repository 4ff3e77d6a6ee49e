#include <system_error>

#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include "vxprivacy/services/system/System.h"

namespace vx::services::system {

namespace fs = std::filesystem;

namespace {

// As vcpkg, the curl project and MSYS2 name it.
constexpr const char* kCurlNames[] = {"libcurl.dll", "libcurl-x64.dll", "libcurl-4.dll"};
// A directory itself cannot be locked here; this file in it goes with the handle.
constexpr const wchar_t* kLockName = L"vxprivacy.lock";

const std::intptr_t kNoHandle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

[[noreturn]] void fail(const char* what, const fs::path& path) {
    throw fs::filesystem_error(
        what, path, std::error_code(static_cast<int>(::GetLastError()), std::system_category()));
}

} // namespace

// In the user's profile, where stores belong, others may read nothing by default.
bool makeDirectory(const fs::path& directory) {
    const bool made = ::CreateDirectoryW(directory.c_str(), nullptr);
    if (!made && ::GetLastError() != ERROR_ALREADY_EXISTS)
        fail("no directory can be made", directory);
    return made;
}

bool makeFile(const fs::path& file) {
    const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        if (::GetLastError() != ERROR_FILE_EXISTS)
            fail("no file can be made", file);
        return false;
    }
    ::CloseHandle(handle);
    return true;
}

// NTFS keeps a journal of what is made in its directories.
void sync(const fs::path&) {}

DirectoryLock::DirectoryLock(const fs::path& directory)
    : directory_(directory), handle_(kNoHandle) {}

DirectoryLock::~DirectoryLock() {
    if (handle_ != kNoHandle)
        ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

bool DirectoryLock::tryLock() {
    const HANDLE handle =
        ::CreateFileW((directory_ / kLockName).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                      FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    // While its last handle is being closed, access to the file is denied.
    if (handle == INVALID_HANDLE_VALUE && ::GetLastError() != ERROR_SHARING_VIOLATION &&
        ::GetLastError() != ERROR_ACCESS_DENIED)
        fail("the directory cannot be locked", directory_);
    handle_ = reinterpret_cast<std::intptr_t>(handle);
    return handle_ != kNoHandle;
}

std::string utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

void* loadCurl(std::string& problem) {
    for (const char* name : kCurlNames)
        if (HMODULE library = ::LoadLibraryA(name))
            return library;
    problem = std::system_category().message(static_cast<int>(::GetLastError()));
    return nullptr;
}

void* functionOf(void* library, const char* name) {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library), name));
}

std::optional<std::uint32_t> ipv4Address(const std::string& text) {
    in_addr address{};
    if (::inet_pton(AF_INET, text.c_str(), &address) != 1)
        return {};
    return ::ntohl(address.s_addr);
}

} // namespace vx::services::system
