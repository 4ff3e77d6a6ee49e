#pragma once

#include <memory>

#include "vxprivacy/services/core/CurlLibrary.h"

// One owning type for each kind of curl handle; each is given the function that ends it.

namespace vx::services {

using EasyHandle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using MultiHandle = std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)>;
using URLHandle = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;
using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

} // namespace vx::services
