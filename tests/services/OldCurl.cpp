// A libcurl of before curl_easy_header and much else.
extern "C" void* curl_easy_init() {
    return nullptr;
}
