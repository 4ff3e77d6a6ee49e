#include "tests/services/faults/Faults.h"

#include <atomic>
#include <cerrno>

#include <dlfcn.h>
#include <netdb.h>
#include <pthread.h>
#include <unistd.h>

namespace vx::services::test {

namespace {

thread_local bool noThreads = false;
std::atomic<bool> silent = false;
std::atomic<int> asked = 0;

template <class Function>
Function* systems(Function*, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

NoDescriptors::NoDescriptors() {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const int free = ::dup(STDIN_FILENO); // the least that is
    ::close(free);
    const rlimit limit{static_cast<rlim_t>(free), before_.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

NoDescriptors::~NoDescriptors() {
    ::setrlimit(RLIMIT_NOFILE, &before_);
}

NoThreads::NoThreads() {
    noThreads = true;
}

NoThreads::~NoThreads() {
    noThreads = false;
}

SilentNameServer::SilentNameServer() {
    asked = 0;
    silent = true;
}

SilentNameServer::~SilentNameServer() {
    silent = false;
    silent.notify_all();
}

bool SilentNameServer::isAsked() {
    return asked > 0;
}

} // namespace vx::services::test

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*start)(void*), void* argument) noexcept {
    using namespace vx::services::test;
    static const auto system = systems(&pthread_create, "pthread_create");
    return noThreads ? EAGAIN : system(thread, attributes, start, argument);
}

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    using namespace vx::services::test;
    static const auto system = systems(&getaddrinfo, "getaddrinfo");
    ++asked;
    silent.wait(true);
    return system(name, service, hints, result);
}
