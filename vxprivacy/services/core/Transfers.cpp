#include "vxprivacy/services/core/Transfers.h"

#include <utility>

namespace vx::services {

Transfers::Transfers(const CurlLibrary& curl)
    : curl_(curl), multi_(curl.multiInit(), curl.multiCleanup) {}

Transfers::~Transfers() {
    for (const auto& [easy, transfer] : underWay_)
        curl_.multiRemoveHandle(multi_.get(), easy);
}

void Transfers::start(HTTPRequest request, const std::string& userAgent, Transfer::Done done) {
    auto transfer =
        std::make_unique<Transfer>(curl_, std::move(request), userAgent, std::move(done));
    CURL* easy = transfer->handle();
    curl_.multiAddHandle(multi_.get(), easy);
    underWay_.emplace(easy, std::move(transfer));
}

void Transfers::advance(const std::function<void(Transfer&)>& deliver) {
    int count = 0;
    curl_.multiPerform(multi_.get(), &count);
    while (CURLMsg* message = curl_.multiInfoRead(multi_.get(), &count)) {
        CURL* easy = message->easy_handle;
        const CURLcode outcome = message->data.result;
        const auto found = underWay_.find(easy);
        curl_.multiRemoveHandle(multi_.get(), easy);
        if (found->second->finish(outcome)) {
            curl_.multiAddHandle(multi_.get(), easy);
            continue;
        }
        deliver(*found->second);
        underWay_.erase(found);
    }
}

void Transfers::rest(std::chrono::milliseconds time) {
    curl_.multiPoll(multi_.get(), nullptr, 0, static_cast<int>(time.count()), nullptr);
}

bool Transfers::wake() {
    return curl_.multiWakeup(multi_.get()) == CURLM_OK;
}

} // namespace vx::services
