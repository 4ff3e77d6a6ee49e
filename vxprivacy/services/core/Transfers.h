#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "vxprivacy/services/core/Transfer.h"

namespace vx::services {

/// The requests on their way, all at the same time. The worker's thread only, but for `wake`; the
/// end may come on any thread, once the worker has ended.
class Transfers {
public:
    explicit Transfers(const CurlLibrary& curl);
    /// What is under way is dropped.
    ~Transfers();
    Transfers(const Transfers&) = delete;
    Transfers& operator=(const Transfers&) = delete;

    void start(HTTPRequest request, const std::string& userAgent, Transfer::Done done);
    /// Does what can be done without waiting; those that came to an end are handed to `deliver`.
    void advance(const std::function<void(Transfer&)>& deliver);
    /// Waits until the network has something for `advance`, at most `time`.
    void rest(std::chrono::milliseconds time);
    /// Ends the rest that is taken, or the next one; false when that is impossible, which is so
    /// from the beginning or never. Any thread.
    bool wake();

private:
    const CurlLibrary& curl_;
    MultiHandle multi_;
    std::map<CURL*, std::unique_ptr<Transfer>> underWay_;
};

} // namespace vx::services
