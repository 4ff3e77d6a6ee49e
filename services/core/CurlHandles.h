#pragma once

#include <memory>

#include <curl/curl.h>

// One owning type for each kind of curl handle.

namespace vx::services {

struct CurlDeleter {
    struct Easy {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };
    struct Multi {
        void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
    };
    struct List {
        void operator()(curl_slist* handle) const { curl_slist_free_all(handle); }
    };
    struct URL {
        void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
    };
};

using EasyHandle = std::unique_ptr<CURL, CurlDeleter::Easy>;
using MultiHandle = std::unique_ptr<CURLM, CurlDeleter::Multi>;
using HeaderList = std::unique_ptr<curl_slist, CurlDeleter::List>;
using URLHandle = std::unique_ptr<CURLU, CurlDeleter::URL>;

} // namespace vx::services
