#include "vxprivacy/services/core/CurlLibrary.h"

#include <memory>
#include <mutex>

#include <dlfcn.h>

namespace vx::services {

namespace {

// The one library under its two names on Debian, after the TLS library that it was built with.
constexpr const char* kNames[] = {"libcurl.so.4", "libcurl-gnutls.so.4"};

} // namespace

// Not destroyed, as whatever uses it may be destroyed at the very end of the process.
const CurlLibrary* CurlLibrary::load(std::string& problem) {
    static std::mutex mutex;
    static const CurlLibrary* loaded = nullptr;
    const std::lock_guard lock(mutex);
    if (loaded)
        return loaded;
    std::unique_ptr<CurlLibrary> library(new CurlLibrary);
    problem = library->problem_;
    if (problem.empty())
        loaded = library.release();
    return loaded;
}

CurlLibrary::CurlLibrary() {
    if (problem_.empty() && globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        problem_ = "libcurl cannot be used: it does not initialise";
}

void* CurlLibrary::open() {
    std::string failure;
    for (const char* name : kNames) {
        if (void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL))
            return library;
        if (failure.empty())
            failure = dlerror();
    }
    problem_ = "libcurl cannot be loaded: " + failure;
    return nullptr;
}

CurlLibrary::Symbol CurlLibrary::symbol(const char* name) {
    void* address = library_ ? dlsym(library_, name) : nullptr;
    if (!address && problem_.empty())
        problem_ = std::string("libcurl is too old: it has no ") + name;
    return {address};
}

} // namespace vx::services
