#include "tests/services/faults/StoreFaults.h"

#include <csignal>
#include <stdexcept>
#include <utility>

#include <unistd.h>

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

} // namespace

LockedFile::LockedFile(const fs::path& file) : file_(file.string(), SQLite::OPEN_READWRITE, 1000) {
    file_.exec("BEGIN IMMEDIATE");
}

FullDisk::FullDisk(const fs::path& file) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{fs::file_size(file), before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
}

ReadOnlyFile::ReadOnlyFile(fs::path file) : file_(std::move(file)) {
    const fs::path directory = file_.parent_path();
    for (const fs::path& path : {directory.parent_path(), directory, file_})
        if (::chown(path.c_str(), kNobody, kNobody) != 0)
            throw std::runtime_error("only root can give a file to another user");
    fs::permissions(file_, fs::perms::owner_read);
    if (::seteuid(kNobody) != 0)
        throw std::runtime_error("only root can become another user");
}

ReadOnlyFile::~ReadOnlyFile() {
    makeWritable();
    if (::seteuid(0) != 0)
        std::terminate();
}

void ReadOnlyFile::makeWritable() const {
    fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write);
}

} // namespace vx::services::test
