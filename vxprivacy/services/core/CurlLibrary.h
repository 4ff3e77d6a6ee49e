#pragma once

#include <string>

#include <curl/curl.h>

namespace vx::services {

/// libcurl, loaded at run time, when the network is first needed: loading it takes longer than all
/// else that happens at start-up. A build may link it instead, for who wants to see what is needed.
///
/// Without it nothing is downloaded or posted, and all else works.
class CurlLibrary {
public:
    /// The library. The first call loads it, which takes some milliseconds. Null, and why in
    /// `problem`, in one line, when it cannot be used; a later call tries again. Any thread.
    static const CurlLibrary* load(std::string& problem);

    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;

private:
    CurlLibrary();

    std::string problem_; // why none of the functions may be called; empty: they may

#ifdef VXPRIVACY_LINKS_CURL
#define VX_CURL(function) &::function
#else
#define VX_CURL(function) symbol(#function)
    // A symbol's address, which takes the type of what it initialises.
    struct Symbol {
        void* address;
        template <class Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(address);
        }
    };

    void* open();
    Symbol symbol(const char* name);

    void* library_ = open(); // never closed: a thread that resolves a name may outlive its transfer
#endif

public:
    decltype(&curl_easy_init) easyInit = VX_CURL(curl_easy_init);
    decltype(&curl_easy_cleanup) easyCleanup = VX_CURL(curl_easy_cleanup);
    decltype(&curl_easy_setopt) easySetopt = VX_CURL(curl_easy_setopt);
    decltype(&curl_easy_getinfo) easyGetinfo = VX_CURL(curl_easy_getinfo);
    decltype(&curl_easy_header) easyHeader = VX_CURL(curl_easy_header);
    decltype(&curl_easy_strerror) easyStrerror = VX_CURL(curl_easy_strerror);
    decltype(&curl_free) free = VX_CURL(curl_free);
    decltype(&curl_global_init) globalInit = VX_CURL(curl_global_init);
    decltype(&curl_multi_init) multiInit = VX_CURL(curl_multi_init);
    decltype(&curl_multi_cleanup) multiCleanup = VX_CURL(curl_multi_cleanup);
    decltype(&curl_multi_add_handle) multiAddHandle = VX_CURL(curl_multi_add_handle);
    decltype(&curl_multi_remove_handle) multiRemoveHandle = VX_CURL(curl_multi_remove_handle);
    decltype(&curl_multi_info_read) multiInfoRead = VX_CURL(curl_multi_info_read);
    decltype(&curl_multi_perform) multiPerform = VX_CURL(curl_multi_perform);
    decltype(&curl_multi_poll) multiPoll = VX_CURL(curl_multi_poll);
    decltype(&curl_multi_wakeup) multiWakeup = VX_CURL(curl_multi_wakeup);
    decltype(&curl_slist_append) slistAppend = VX_CURL(curl_slist_append);
    decltype(&curl_slist_free_all) slistFreeAll = VX_CURL(curl_slist_free_all);
    decltype(&curl_url) url = VX_CURL(curl_url);
    decltype(&curl_url_cleanup) urlCleanup = VX_CURL(curl_url_cleanup);
    decltype(&curl_url_get) urlGet = VX_CURL(curl_url_get);
    decltype(&curl_url_set) urlSet = VX_CURL(curl_url_set);
};

#undef VX_CURL

} // namespace vx::services
