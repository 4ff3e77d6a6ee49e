#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "tools/studio/world/ServedVendorList.h"
#include "tools/system/LoopbackServer.h"

namespace vx::tools::studio {

class EventStream;

/// The servers an application talks to, for development: configuration CDN, vendor list and
/// consent collector, on one loopback port. Other sites in the user's browser are refused. Tells
/// the stream of every other request ("request") and of every beacon that arrives ("beacon").
class Backend {
public:
    Backend(std::int32_t siteID, std::int32_t privacyID, ServedVendorLists vendorLists,
            EventStream& events);

    /// Chooses the address, on `port` if it is free, and brings the network up there. Beacons that
    /// wait in a store and offline copies keep the address, so it should be the same in every run.
    bool start(int port);
    /// The network comes up again at its address; false when that was taken meanwhile.
    bool connect() { return server_.running() || server_.start(server_.port()); }
    /// The network goes down: connections are refused.
    void disconnect() { server_.stop(); }
    bool connected() const { return server_.running(); }
    std::string address() const { return server_.address(); }

    /// Serves `document` as the privacy configuration from now on.
    void publish(std::shared_ptr<const std::string> document);
    std::shared_ptr<const std::string> published() const;

private:
    void addRoutes(httplib::Server& server);
    void answerVendorList(const httplib::Request& request, httplib::Response& response) const;
    void collect(const std::string& text);

    const std::string configurationPath_;
    const ServedVendorLists vendorLists_;
    EventStream& events_;
    mutable std::mutex mutex_; // guards document_
    std::shared_ptr<const std::string> document_ = std::make_shared<const std::string>();
    std::atomic<std::uint64_t> arrived_ = 0; // beacons
    system::LoopbackServer server_;
};

} // namespace vx::tools::studio
