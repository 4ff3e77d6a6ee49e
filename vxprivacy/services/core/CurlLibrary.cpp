#include "vxprivacy/services/core/CurlLibrary.h"

#include <memory>
#include <mutex>

#include "vxprivacy/services/system/System.h"

namespace vx::services {

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

#ifndef VXPRIVACY_LINKS_CURL
void* CurlLibrary::open() {
    std::string failure;
    void* library = system::loadCurl(failure);
    if (!library)
        problem_ = "libcurl cannot be loaded: " + failure;
    return library;
}

CurlLibrary::Symbol CurlLibrary::symbol(const char* name) {
    void* address = library_ ? system::functionOf(library_, name) : nullptr;
    if (!address && problem_.empty())
        problem_ = std::string("libcurl is too old: it has no ") + name;
    return {address};
}
#endif

} // namespace vx::services
