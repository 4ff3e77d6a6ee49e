#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>

#include "tools/studio/shared/Mode.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/studio/world/ApplicationProcess.h"
#include "tools/studio/world/Backend.h"
#include "tools/studio/world/Installation.h"
#include "tools/studio/world/Playback.h"
#include "tools/studio/world/Rehearsal.h"
#include "tools/studio/world/ScratchDirectory.h"
#include "tools/studio/world/ServedVendorList.h"
#include "tools/studio/world/SessionRecord.h"
#include "tools/studio/world/WorldOptions.h"

namespace vx::tools::studio {

class EventStream;

/// What can be done in the studio: to the application and to the world around it. May be called on
/// any thread; one thing happens at a time, and is done when the call returns. To kill the
/// application or to stop waits for nothing else. What has no text to give replies with an empty
/// one.
class StudioSession {
public:
    StudioSession(const WorldOptions& options, Installations installations,
                  ServedVendorLists vendorLists, EventStream& events);

    /// Brings the network up, with the backend on `port` if it is free, and launches the
    /// application.
    Reply start(int port);
    /// Ends the application and the network.
    void stop();

    Reply accept() { return perform({.name = command::kAccept}); }
    Reply refuse() { return perform({.name = command::kRefuse}); }
    /// Sends a hit through the tag SDK.
    Reply hit(const std::string& name) {
        return perform({.name = command::kHit, .argument = name});
    }
    Reply openCenter(const Presentation& presentation) {
        return perform({.name = command::kPresent, .argument = asJSON(presentation)});
    }
    /// Leaves the privacy center, which saves the choices. A process that ends leaves nothing.
    Reply dismissCenter() { return perform({.name = command::kDismiss}); }
    /// The page of the open privacy center and its generated style sheet.
    Reply centerPage() { return perform({.name = command::kPage}); }
    Reply centerLayout() { return perform({.name = command::kLayout}); }
    /// The patch for an event of that page.
    Reply centerEvent(const std::string& event) {
        return perform({.name = command::kEvent, .argument = event});
    }
    /// Ends the process and starts a new one on the same store.
    Reply relaunch();
    /// The same without giving the process a chance to finish.
    Reply killHard();
    /// A new installation: the store's file is deleted while no application runs. Where it cannot
    /// be, the application goes on with it.
    Reply reset();
    /// Puts the application's clock ahead of the system's by `offset`.
    Reply moveClock(std::chrono::milliseconds offset);
    std::chrono::milliseconds clockOffset() const;
    Reply setNetwork(bool on);
    /// Ends the process and starts one in that mode, on that mode's own store and configuration.
    Reply setMode(Mode mode);

    /// Has the application call `setLanguage:` with `code`, now and at each launch. "en", which the
    /// engine cannot be set back to, launches it anew without that call.
    Reply setLanguage(const std::string& code);
    /// Has it say whether strings have a publisher TC segment, now and at each launch.
    Reply setPublisherTC(bool on);
    /// Launches it anew with the IAB library's profile of the framework in force, which takes a
    /// vendor list of format 3, or without.
    Reply setInForce(bool on);
    /// The document of publisher restrictions that ships with the application; empty: none.
    std::string restrictions() const;
    /// Ships `text` with it, or none where that is blank, and launches it anew.
    Reply shipRestrictions(const std::string& text);

    /// The session so far, for `vxprivacy play`; a problem when it grew too long to be kept. While
    /// one is played: that one as it was played.
    Reply script() const { return record_.script(); }

    // Another session, opened to be played step by step. From its first step on the application has
    // a store and documents of its own, and a clock that stands.

    /// Opens the session in `script`, in place of one that is open. State "playback" then says how
    /// far it was played, as `Playback::state` does, with "opened", another number for each; it is
    /// null when none is open.
    Reply openScript(const std::string& script);
    /// Plays the next step.
    Reply playStep();
    /// Closes it: the application comes back on its own store, which is as it was.
    Reply closeScript();
    /// Its steps, as `Playback::steps` tells them; a problem when none is open.
    Result<Json> scriptSteps(std::size_t first) const;

    /// The published configuration; not that of the real hosts.
    Edition published() const;
    /// The sample configuration for the mode.
    std::string sample() const;
    /// What a publisher looked at: nothing else is to be published over. Absent: whatever it is.
    struct Seen {
        std::optional<std::int64_t> version;
        std::optional<Mode> mode;
    };
    /// Publishes `text` over what was seen: a conflict when another version is in force by now, a
    /// problem in another mode. Throws std::system_error when it cannot be kept.
    Result<Edition> publish(const std::string& text, const Seen& seen);
    /// What would be published for `text` ("version", "text"), over what ("over", the same of the
    /// edition in force), and what that means to users who have answered, as `Rehearsal` finds it,
    /// or the "problem" of finding it. Nothing changes.
    Result<Json> rehearse(const std::string& text);

private:
    // What a process knows and its store does not keep.
    struct Known {
        std::string cause; // to ask the user
        std::string tcStringBefore;
    };

    // An application in a session that is played, and what it left for it.
    struct Played {
        Json launch; // `Launch::played`
        Mode mode;
        bool inForce;
        std::chrono::milliseconds clockOffset;
        Known known;
        ScratchDirectory directory{};
        std::filesystem::path store() const { return directory.path() / "store.sqlite"; }
    };

    using Operation = std::lock_guard<std::shared_mutex>;

    Reply perform(Command command);
    Reply ship(const std::string& text);
    Reply launch(const Known& known);
    Launch launchOf(const Known& known) const;
    Reply launchAnew();
    Playback::Outcome play(const std::string& line);
    Reply perform(const play::Step& step, const std::string& line);
    Reply enterWorld(PlayedWorld world);
    Reply relaunchPlayed();
    Reply launchPlayed(const Known& known, Json beginning);
    Reply leavePlayed();
    void noteClock(std::uint64_t now);
    void reportPlayback();
    void reportClock();
    std::filesystem::path store() const;
    Known known() const;
    Installation& installation() { return installations_.in(mode_); }
    const Installation& installation() const { return installations_.in(mode_); }
    Reply deleteStore() const;
    void reportSession();
    void reportCode();
    void serveConfiguration();
    void reportNetwork();

    const WorldOptions options_;
    const Json format2_; // what the page tells of the served list of that format
    const Json format3_;
    const std::int64_t started_;
    EventStream& events_;
    // Held alone by what ends and starts the application, shared by what tells it something, which
    // the application takes one after the other.
    std::shared_mutex operation_;
    std::mutex playing_;       // held by what opens, plays or closes a session, before any other
    std::mutex network_;       // held by what turns the network on or off
    mutable std::mutex mutex_; // held to change installations, mode and clock, and to read them
                               // without the one above, and playback; never while anything waits
    Installations installations_;
    Mode mode_;
    std::string language_; // of the application's code; empty: it sets none
    bool publisherTC_ = false;
    bool inForce_ = false;
    std::uint64_t shipped_ = 0; // documents of restrictions
    Backend backend_;
    SessionRecord record_;
    ApplicationProcess application_;
    Rehearsal rehearsal_;
    std::chrono::milliseconds clockOffset_{0};
    std::optional<Playback> playback_;
    std::uint64_t opened_ = 0;     // sessions
    std::optional<Played> played_; // from the first step that was played on
};

} // namespace vx::tools::studio
