#pragma once

#include <filesystem>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sys/resource.h>

// What is wrong with a store's file for a while.

namespace vx::services::test {

/// Another process writes and does not come to an end.
class LockedFile {
public:
    explicit LockedFile(const std::filesystem::path& file);

private:
    SQLite::Database file_;
};

/// Every write beyond the present size of `file` fails, in all files of this process.
class FullDisk {
public:
    explicit FullDisk(const std::filesystem::path& file);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
};

/// This thread, and those that it begins, may read `file` but not write it, also as root.
class ReadOnlyFile {
public:
    explicit ReadOnlyFile(std::filesystem::path file);
    ~ReadOnlyFile();
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    /// Ends the fault alone; the modes of other files still hold.
    void makeWritable() const;

private:
    const std::filesystem::path file_;
};

} // namespace vx::services::test
