#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

#include "tools/studio/ApplicationProcess.h"
#include "tools/studio/Backend.h"
#include "tools/studio/Installation.h"
#include "tools/studio/Options.h"
#include "tools/studio/VendorList.h"

namespace vx::tools::studio {

class EventStream;

/// What can be done in the studio: to the application and to the world around it. May be called on
/// any thread; one thing happens at a time, and is done when the call returns.
class Session {
public:
    /// Throws std::runtime_error when what the options name cannot be used.
    Session(const Options& options, VendorList vendorList, EventStream& events);

    /// Brings the network up, with the backend on `port` if it is free, and launches the
    /// application.
    Problem start(int port);
    /// Ends the application and the network.
    void stop();

    Problem accept() { return tell({{"do", "accept"}}); }
    Problem refuse() { return tell({{"do", "refuse"}}); }
    /// Sends a hit through the tag SDK.
    Problem hit(const std::string& name) { return tell({{"do", "hit"}, {"name", name}}); }
    /// Opens the privacy center on a display `width` points wide.
    Problem openCenter(double width) { return tell({{"do", "present"}, {"width", width}}); }
    /// Leaves the privacy center, which saves the choices. A process that ends leaves nothing.
    Problem dismissCenter() { return tell({{"do", "dismiss"}}); }
    /// The page of the open privacy center and its generated style sheet.
    Reply centerPage() { return ask({{"do", "page"}}); }
    Reply centerLayout() { return ask({{"do", "layout"}}); }
    /// The patch for an event of that page.
    Reply centerEvent(const std::string& event) { return ask({{"do", "event"}, {"text", event}}); }
    /// Ends the process and starts a new one on the same store.
    Problem relaunch();
    /// The same without giving the process a chance to finish.
    Problem killHard();
    /// A new installation: the store's file is deleted while no application runs.
    Problem reset();
    /// Puts the application's clock ahead of the system's by `offset`.
    Problem moveClock(std::chrono::milliseconds offset);
    std::chrono::milliseconds clockOffset() const;
    Problem setNetwork(bool on);
    /// Ends the process and starts one in that mode, on that mode's own store and configuration.
    Problem setMode(bool iab);

    /// The published document. Empty with real hosts.
    Publication::Draft published() const;
    /// The sample configuration for the mode.
    std::string sample() const;
    Publication::Draft publish(const std::string& text);

private:
    Problem tell(Json command) { return ask(std::move(command)).problem; }
    Reply ask(Json command);
    Problem launch(const std::string& cause);
    std::string causeToAsk() const;
    Installation& installation() { return installations_[iab_]; }
    const Installation& installation() const { return installations_[iab_]; }
    void deleteStore() const;
    void reportSession();
    void serveConfiguration();
    void reportNetwork();

    const Options options_;
    const Json vendorList_; // what the page tells of it
    const std::int64_t started_;
    EventStream& events_;
    mutable std::mutex mutex_;                  // one operation at a time; guards what follows
    std::array<Installation, 2> installations_; // in category mode, in IAB mode
    bool iab_;
    Backend backend_;
    ApplicationProcess application_;
    std::chrono::milliseconds clockOffset_{0};
};

} // namespace vx::tools::studio
