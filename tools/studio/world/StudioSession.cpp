// Each operation changes application or world, and tells the event stream. None holds a lock that
// reading, killing or stopping needs while it waits for the application.

#include "tools/studio/world/StudioSession.h"

#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

namespace {

const Problem kIsPlayed{"a session is played, with documents of its own: close it first"};

// The vendor list's own language, for which nothing is called.
const std::string kEnglish = "en";

Json told(const ServedVendorList& list, const WorldOptions& options) {
    return {{"version", list.version},
            {"vendors", list.vendors},
            {"languages", languagesOf(list)},
            {"file", options.gvl.string()}};
}

std::int64_t currentTime() {
    return std::chrono::system_clock::now().time_since_epoch() / std::chrono::milliseconds(1);
}

} // namespace

StudioSession::StudioSession(const WorldOptions& options, Installations installations,
                             ServedVendorLists vendorLists, EventStream& events)
    : options_(options), format2_(told(vendorLists.format2, options)),
      format3_(told(vendorLists.format3, options)), started_(currentTime()), events_(events),
      installations_(std::move(installations)), mode_(options.mode),
      backend_(options.site, options.privacy, vendorLists, events), record_(events),
      application_(events, record_),
      rehearsal_(options.site, options.privacy, std::move(vendorLists)) {
    reportSession();
    reportCode();
    reportClock();
}

Reply StudioSession::start(int port) {
    const Operation operation(operation_);
    if (!options_.live) {
        serveConfiguration();
        if (!backend_.start(port))
            return Problem{"no port for the development backend"};
    }
    reportNetwork();
    return launch({});
}

void StudioSession::stop() {
    application_.close(); // ends what others wait for
    rehearsal_.stop();
    const std::lock_guard lock(network_);
    backend_.disconnect();
}

Reply StudioSession::relaunch() {
    const Operation operation(operation_);
    return launchAnew();
}

Reply StudioSession::killHard() {
    application_.kill(); // ends what others wait for
    const Operation operation(operation_);
    application_.kill();
    return launch(known());
}

Reply StudioSession::reset() {
    const Operation operation(operation_);
    application_.end();
    const Reply deleted = deleteStore();
    events_.append("studio", deleted ? "Fresh installation: the store was deleted"
                                     : "No fresh installation: " + deleted.problem().text);
    const Reply launched = launch(deleted ? Known() : known());
    return deleted ? launched : deleted;
}

Reply StudioSession::moveClock(std::chrono::milliseconds offset) {
    const Operation operation(operation_);
    {
        const std::lock_guard lock(mutex_);
        clockOffset_ = offset;
        if (played_)
            played_->launch["now"] = currentTime() + offset.count();
    }
    reportClock();
    events_.append("studio", "The application's clock was moved",
                   {{"milliseconds ahead of the system's", offset.count()}});
    return application_.perform({.name = command::kMoveClock, .argument = offset.count()});
}

std::chrono::milliseconds StudioSession::clockOffset() const {
    const std::lock_guard lock(mutex_);
    return clockOffset_;
}

Reply StudioSession::setNetwork(bool on) {
    const std::lock_guard lock(network_);
    if (options_.live)
        return Problem{"the network is the real one with --live"};
    if (!on)
        backend_.disconnect();
    else if (!backend_.connect())
        return Problem{"the backend's port " + backend_.address() + " was taken meanwhile"};
    reportNetwork();
    events_.append("studio", on ? "The network is on" : "The network is off");
    return std::string();
}

Reply StudioSession::setMode(Mode mode) {
    const Operation operation(operation_);
    if (mode == mode_)
        return std::string();
    if (played_)
        return kIsPlayed;
    application_.end();
    {
        const std::lock_guard lock(mutex_);
        mode_ = mode;
        if (!options_.live)
            serveConfiguration();
    }
    reportSession();
    events_.append("studio", mode == Mode::IAB
                                 ? "IAB mode: another installation, with a store of its own"
                                 : "Category mode: another installation, with a store of its own");
    return launch({});
}

Reply StudioSession::setLanguage(const std::string& code) {
    const Operation operation(operation_);
    const bool english = code == kEnglish;
    if (!english) {
        Reply reply = application_.perform({.name = command::kLanguage, .argument = code});
        if (!reply)
            return reply;
    }
    const bool isBack = english && !language_.empty();
    language_ = english ? "" : code;
    reportCode();
    events_.append("studio", "The application's language is \"" + code + '"');
    return isBack ? launchAnew() : std::string();
}

Reply StudioSession::setPublisherTC(bool on) {
    const Operation operation(operation_);
    publisherTC_ = on;
    reportCode();
    events_.append("studio", on ? "Strings get a publisher TC segment"
                                : "Strings get no publisher TC segment");
    return application_.perform({.name = command::kPublisherTC, .argument = on});
}

Reply StudioSession::setInForce(bool on) {
    const Operation operation(operation_);
    if (on == inForce_)
        return std::string();
    if (played_)
        return kIsPlayed;
    {
        const std::lock_guard lock(mutex_);
        inForce_ = on;
    }
    reportCode();
    reportSession();
    events_.append("studio", on ? "Strings are those of the framework in force"
                                : "Strings are those of policy version 2");
    return launchAnew();
}

std::string StudioSession::restrictions() const {
    const std::lock_guard lock(mutex_);
    return installations_.restrictions.text();
}

Reply StudioSession::shipRestrictions(const std::string& text) {
    const Operation operation(operation_);
    if (played_)
        return kIsPlayed;
    Reply shipped = ship(text);
    if (!shipped)
        return shipped;
    ++shipped_;
    reportCode();
    events_.append("studio",
                   shipped->empty() ? "The application ships no publisher restrictions"
                                    : "The application ships publisher restrictions",
                   *shipped);
    return launchAnew();
}

Reply StudioSession::ship(const std::string& text) {
    const std::lock_guard lock(mutex_);
    return installations_.restrictions.ship(text);
}

Edition StudioSession::published() const {
    const std::lock_guard lock(mutex_);
    return installation().publication.inForce();
}

std::string StudioSession::sample() const {
    const std::lock_guard lock(mutex_);
    return sampleFor(mode_);
}

Result<Edition> StudioSession::publish(const std::string& text, const Seen& seen) {
    const std::lock_guard lock(mutex_);
    if (options_.live)
        return Problem{"with --live the configuration is the host's"};
    if (played_)
        return kIsPlayed;
    if (seen.mode.value_or(mode_) != mode_)
        return Problem{"nothing was published: the mode was changed meanwhile"};
    if (const auto inForce = installation().publication.inForce().version;
        seen.version.value_or(inForce) != inForce)
        return Problem{.text = "version " + std::to_string(inForce) + " was published meanwhile",
                       .isConflict = true};
    const Result<Edition> edition = installation().publication.publish(text);
    if (!edition)
        return edition;
    serveConfiguration();
    events_.append("studio",
                   "Privacy configuration published, version " + std::to_string(edition->version));
    return edition;
}

Result<Json> StudioSession::rehearse(const std::string& text) {
    Edition inForce;
    Launch launch;
    {
        const std::shared_lock beside(operation_);
        const std::lock_guard lock(mutex_);
        if (options_.live)
            return Problem{"with --live the configuration is the host's"};
        if (played_)
            return kIsPlayed;
        inForce = installation().publication.inForce();
        launch = launchOf({});
    }
    const Result<Edition> next = editionOf(text, inForce.version);
    if (!next)
        return next.problem();
    Json answer = {{"version", next->version},
                   {"text", *next->text},
                   {"over", {{"version", inForce.version}, {"text", *inForce.text}}}};
    if (const Result<Json> outcome = rehearsal_.run(launch, inForce, *next))
        answer.update(*outcome);
    else
        answer["problem"] = outcome.problem().text;
    return answer;
}

Reply StudioSession::perform(Command command) {
    const std::shared_lock beside(operation_);
    return application_.perform(std::move(command));
}

Reply StudioSession::launchAnew() {
    application_.end();
    return launch(known());
}

Reply StudioSession::launch(const Known& known) {
    return application_.start(launchOf(known));
}

Launch StudioSession::launchOf(const Known& known) const {
    const bool iab = mode_ == Mode::IAB;
    return {.store = store(),
            .site = options_.site,
            .privacy = options_.privacy,
            .mode = mode_,
            .clockOffset = clockOffset_,
            .host = options_.live ? "" : backend_.address(),
            .vendorListHost = options_.vendorListHost,
            .cause = known.cause,
            .tcStringBefore = known.tcStringBefore,
            .language = language_,
            .publisherTC = publisherTC_,
            .inForce = inForce_,
            .packaged = iab ? installations_.restrictions.directory() : "",
            .played = played_ ? played_->launch : Json::object()};
}

StudioSession::Known StudioSession::known() const {
    const Json state = events_.state();
    const auto text = [&](const char* pointer) {
        return state.value(Json::json_pointer(pointer), "");
    };
    return {.cause = text("/application/decision/reason"),
            .tcStringBefore = text("/application/tcString/before/text")};
}

// The store itself first: what cannot be deleted is to stay whole.
Reply StudioSession::deleteStore() const {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
        const std::string file = store().string() + suffix;
        std::error_code error;
        std::filesystem::remove(file, error); // an absent one is no error
        if (error)
            return Problem{file + " cannot be deleted: " + error.message()};
    }
    return std::string();
}

void StudioSession::reportSession() {
    events_.setState("session", {{"started", started_},
                                 {"live", options_.live},
                                 {"site", options_.site},
                                 {"privacy", options_.privacy},
                                 {"iab", mode_ == Mode::IAB},
                                 {"vendorList", options_.live ? Json()
                                                : inForce_    ? format3_
                                                              : format2_},
                                 {"vendorListHost", options_.vendorListHost},
                                 {"store", store().string()}});
}

void StudioSession::reportClock() {
    events_.setState("clock", {{"offset", clockOffset_.count()}});
}

std::filesystem::path StudioSession::store() const {
    return played_ ? played_->store() : installation().store;
}

void StudioSession::reportCode() {
    events_.setState("code", {{"language", language_.empty() ? kEnglish : language_},
                              {"publisherTC", publisherTC_},
                              {"inForce", inForce_},
                              {"restrictionsShipped", shipped_}});
}

void StudioSession::serveConfiguration() {
    const Edition& edition = installation().publication.inForce();
    backend_.publish(edition.text);
    events_.setState("published", {{"version", edition.version}, {"iab", mode_ == Mode::IAB}});
}

void StudioSession::reportNetwork() {
    Json state = {{"on", options_.live || backend_.connected()}};
    if (!options_.live)
        state["address"] = backend_.address();
    events_.setState("network", std::move(state));
}

} // namespace vx::tools::studio
