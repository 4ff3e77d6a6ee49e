#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Mode.h"
#include "tools/studio/shared/Result.h"

// What the studio and its application, a process of its own, say to each other: JSON objects, one a
// line, commands on the application's standard input and reports on its standard output.

namespace vx::tools::studio {

/// The hidden subcommand under which the executable is the application.
inline constexpr const char* kApplicationCommand = "studio-application";

/// Tells the application to do something, or asks it for a text.
struct Command {
    std::string name;        ///< one of those below
    Json argument = nullptr; ///< what its comment says
    std::uint64_t id = 0;    ///< the report of its end has it too
};

namespace command {
inline constexpr const char* kStart = "start"; ///< the first of all; a `Launch`
inline constexpr const char* kAccept = "accept";
inline constexpr const char* kRefuse = "refuse";
inline constexpr const char* kHit = "hit";               ///< its name
inline constexpr const char* kMoveClock = "clock";       ///< milliseconds ahead of the system's
inline constexpr const char* kLanguage = "language";     ///< for `setLanguage`, a code
inline constexpr const char* kPublisherTC = "publisher"; ///< for `generatePublisherTC`, a boolean
inline constexpr const char* kPresent = "present";       ///< a `Presentation`
inline constexpr const char* kDismiss = "dismiss";
inline constexpr const char* kPage = "page";     ///< asks for the privacy center's page,
inline constexpr const char* kLayout = "layout"; ///< for its generated style sheet,
inline constexpr const char* kEvent = "event";   ///< for the patch for this event of the page
inline constexpr const char* kStep = "step";     ///< a step of `vxprivacy play`, as text on a line
} // namespace command

/// The publisher's, in strings of the framework in force.
inline constexpr const char* kPublisherCountry = "FR";

/// What an application starts with.
struct Launch {
    std::filesystem::path store;
    std::int32_t site = 0;
    std::int32_t privacy = 0;
    Mode mode = Mode::Category;
    std::chrono::milliseconds clockOffset{0};
    std::string host;           ///< in place of all hosts; empty: the real ones
    std::string vendorListHost; ///< the real one; empty: there is none

    // What an earlier process knew and the store does not keep.

    std::string cause;          ///< why the user must be asked, as far as it was told
    std::string tcStringBefore; ///< the one that the stored one took the place of

    // What its developer wrote for IAB mode.

    std::string language;           ///< for `setLanguage`; empty: not called
    bool publisherTC = false;       ///< `generatePublisherTC`
    bool inForce = false;           ///< `TCFProfile::InForce`, with lists of format 3
    std::filesystem::path packaged; ///< where the restrictions lie; empty: it ships none

    /// Of an application in a session that is played: the time at which its clock stands ("now"),
    /// the documents at hand, texts by name, in place of all others ("files"), "userAgent", when
    /// its TC string was created unless the store says so ("createdDate"), the entries of the store
    /// where that is to be made ("store"), and whether all that starts the engine is left to the
    /// session's steps ("bare"). Empty: none is played.
    Json played = Json::object();
};

/// How the application shows its privacy center.
struct Presentation {
    double width = 390; ///< of the display, in points
    /// In IAB mode: the screen that comes first, 0 popup, 1 purposes, 2 vendors; and whether the
    /// center is pushed onto the application's screens, else it is put over them.
    std::int32_t first = 0;
    bool pushed = false;
};

/// What a command gives: the text that was asked for, else an empty one.
using Reply = Result<std::string>;

/// Kinds of reports. Every other one is an entry of the timeline.
namespace kind {
inline constexpr const char* kState = "state";   ///< "body": how things stand, what changed
inline constexpr const char* kDone = "done";     ///< "id", "reply": a command's end
inline constexpr const char* kLaunch = "launch"; ///< "body": what the process began with
inline constexpr const char* kStep =
    "step"; ///< "body": what is done now, a step of `vxprivacy play`
} // namespace kind

Json asJSON(const Command& command);
Json asJSON(const Launch& launch);
Json asJSON(const Presentation& presentation);
Json asJSON(const Reply& reply);

// The same back; what is missing is empty or 0.

Command commandIn(const Json& json);
Launch launchIn(const Json& json);
Presentation presentationIn(const Json& json);
Reply replyIn(const Json& json);

} // namespace vx::tools::studio
