#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

/// What the services ask of the operating system beyond the standard library. Each system has one
/// source.
///
/// A failure that is not among the answers throws `std::filesystem::filesystem_error`. Any thread.
namespace vx::services::system {

/// Makes a directory that the user alone may enter; false where there is something of its name.
bool makeDirectory(const std::filesystem::path& directory);
/// Makes an empty file that the user alone may read; false where there is something of its name.
bool makeFile(const std::filesystem::path& file);
/// Makes what was made in `directory` survive a power cut, where the system can.
void sync(const std::filesystem::path& directory);

/// A lock that one process at a time has on a directory, until the object dies.
class DirectoryLock {
public:
    explicit DirectoryLock(const std::filesystem::path& directory);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

    /// False while another process has it.
    bool tryLock();

private:
    std::filesystem::path directory_;
    std::intptr_t handle_;
};

/// A path as UTF-8, for SQLite and for log lines.
std::string utf8(const std::filesystem::path& path);

/// Loads libcurl under the name that it has here. Null, and why in `problem`, where it cannot be
/// loaded.
void* loadCurl(std::string& problem);
/// The address of a function of a loaded library; null where it has none of that name.
void* functionOf(void* library, const char* name);

/// The IPv4 address that a text spells in four numbers; nothing where it spells none.
std::optional<std::uint32_t> ipv4Address(const std::string& text);

} // namespace vx::services::system
