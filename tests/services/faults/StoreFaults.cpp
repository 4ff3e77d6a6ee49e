#include "tests/services/faults/StoreFaults.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;

// Without the capability the modes of files hold for root as for anybody. Of this thread and those
// that it begins.
void overrideModes(bool allowed) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> capabilities{};
    if (::syscall(SYS_capget, &header, capabilities.data()) != 0)
        throw std::system_error(errno, std::system_category(), "capget");
    auto& [effective, permitted, inheritable] = capabilities[CAP_TO_INDEX(CAP_DAC_OVERRIDE)];
    effective &= ~CAP_TO_MASK(CAP_DAC_OVERRIDE);
    if (allowed)
        effective |= permitted & CAP_TO_MASK(CAP_DAC_OVERRIDE);
    if (::syscall(SYS_capset, &header, capabilities.data()) != 0)
        throw std::system_error(errno, std::system_category(), "capset");
}

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
    fs::permissions(file_, fs::perms::owner_read);
    overrideModes(false);
}

ReadOnlyFile::~ReadOnlyFile() {
    makeWritable();
    overrideModes(true);
}

void ReadOnlyFile::makeWritable() const {
    fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write);
}

} // namespace vx::services::test
