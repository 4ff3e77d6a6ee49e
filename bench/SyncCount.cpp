#include "bench/SyncCount.h"

#include <atomic>

#include <dlfcn.h>

namespace {

using Sync = int (*)(int);

std::atomic<int> count;

int countedSync(const char* name, int file) {
    ++count;
    return reinterpret_cast<Sync>(dlsym(RTLD_NEXT, name))(file);
}

} // namespace

extern "C" int fsync(int file) {
    return countedSync("fsync", file);
}

extern "C" int fdatasync(int file) {
    return countedSync("fdatasync", file);
}

int vx::bench::syncCount() {
    return count;
}
