#pragma once

#include <string>

#include <curl/curl.h>

namespace vx::services {

/// libcurl, loaded at run time, when the network is first needed: loading it takes longer than all
/// else that happens at start-up.
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
    // A symbol's address, which takes the type of what it initialises.
    struct Symbol {
        void* address;
        template <class Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(address);
        }
    };

    CurlLibrary();
    void* open();
    Symbol symbol(const char* name);

    std::string problem_;    // why none of the functions may be called; empty: they may
    void* library_ = open(); // never closed: a thread that resolves a name may outlive its transfer

public:
    decltype(&curl_easy_init) easyInit = symbol("curl_easy_init");
    decltype(&curl_easy_cleanup) easyCleanup = symbol("curl_easy_cleanup");
    decltype(&curl_easy_setopt) easySetopt = symbol("curl_easy_setopt");
    decltype(&curl_easy_getinfo) easyGetinfo = symbol("curl_easy_getinfo");
    decltype(&curl_easy_header) easyHeader = symbol("curl_easy_header");
    decltype(&curl_easy_strerror) easyStrerror = symbol("curl_easy_strerror");
    decltype(&curl_free) free = symbol("curl_free");
    decltype(&curl_global_init) globalInit = symbol("curl_global_init");
    decltype(&curl_multi_init) multiInit = symbol("curl_multi_init");
    decltype(&curl_multi_cleanup) multiCleanup = symbol("curl_multi_cleanup");
    decltype(&curl_multi_add_handle) multiAddHandle = symbol("curl_multi_add_handle");
    decltype(&curl_multi_remove_handle) multiRemoveHandle = symbol("curl_multi_remove_handle");
    decltype(&curl_multi_info_read) multiInfoRead = symbol("curl_multi_info_read");
    decltype(&curl_multi_perform) multiPerform = symbol("curl_multi_perform");
    decltype(&curl_multi_poll) multiPoll = symbol("curl_multi_poll");
    decltype(&curl_multi_wakeup) multiWakeup = symbol("curl_multi_wakeup");
    decltype(&curl_slist_append) slistAppend = symbol("curl_slist_append");
    decltype(&curl_slist_free_all) slistFreeAll = symbol("curl_slist_free_all");
    decltype(&curl_url) url = symbol("curl_url");
    decltype(&curl_url_cleanup) urlCleanup = symbol("curl_url_cleanup");
    decltype(&curl_url_get) urlGet = symbol("curl_url_get");
    decltype(&curl_url_set) urlSet = symbol("curl_url_set");
};

} // namespace vx::services
