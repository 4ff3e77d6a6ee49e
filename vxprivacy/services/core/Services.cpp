// The services in the order in which they need each other, and what `poll` does with them.

#include "vxprivacy/services/core/Services.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "vxprivacy/services/core/Documents.h"
#include "vxprivacy/services/core/EntryStore.h"
#include "vxprivacy/services/core/HTTPSender.h"
#include "vxprivacy/services/core/Log.h"
#include "vxprivacy/services/core/ServiceVariables.h"
#include "vxprivacy/services/core/URLPolicy.h"

namespace vx::services {

struct Services::Parts {
    explicit Parts(Settings given);
    void poll();
    void settled();
    void tellDurable();
    void schedule();
    Status status();

    Settings settings;
    std::unique_ptr<Logger> ownLog =
        settings.logger ? nullptr : std::make_unique<Log>(settings.logLevel, settings.logFile);
    Logger& logger = settings.logger ? *settings.logger : *ownLog;
    ServiceClock clock{settings.clock};
    NotificationCenter ownNotifications;
    NotificationCenter& notifications =
        settings.notifications ? *settings.notifications : ownNotifications;
    Database database{settings.store, logger};
    EntryStore entries{database, clock, logger};
    Outbox outbox{database};
    OfflineCopies copies{database};
    ServiceVariables variables{entries, settings.userAgent, settings.variables};
    HTTPClient http{settings.userAgent, logger};
    Shared shared{entries, http, clock, logger};
    Documents documents{shared, copies, settings.packaged, settings.hosts,
                        settings.vendorListFormat};
    HTTPSender sender{shared, outbox, notifications};
    std::optional<std::uint64_t> pendingSince; // milliseconds since 1970
    bool becameDurable = false;                // and nobody was told yet
    std::function<void()> onDurable;
};

namespace {

// Where a document has no host, that is said when it is registered.
void warnOfRefused(const Hosts& hosts, Logger& logger) {
    for (const std::string& host :
         {hosts.configurationCDN, hosts.vendorList, hosts.consentCollector})
        if (!host.empty() && !mayRequest(host))
            logger.log("The host " + host + " is refused: it is neither https nor on this machine",
                       kLogProblem);
    if (hosts.consentCollector.empty())
        logger.log("No beacon is posted: no host is named for the consent collector", kLogProblem);
}

} // namespace

Hosts defaultHosts() {
    return {"https://cdn.halvane.example", "", "https://collect.halvane.example"};
}

Services::Parts::Parts(Settings given) : settings(std::move(given)) {
    warnOfRefused(settings.hosts, logger);
    database.open();
    database.setOnSettled([this] { settled(); });
}

void Services::Parts::settled() {
    if (!database.failing())
        becameDurable |= std::exchange(pendingSince, std::nullopt).has_value();
    else if (!pendingSince)
        pendingSince = clock.nowMilliseconds();
    sender.sendDue();
    schedule();
}

// In one scope, so that whatever the answers change costs one commit.
void Services::Parts::poll() {
    StoreTransaction transaction(entries);
    http.poll();
    transaction.commit();
    sender.sendDue();
    database.retry();
    entries.tellObserver();
    tellDurable();
    schedule();
}

void Services::Parts::tellDurable() {
    if (pendingSince || !std::exchange(becameDurable, false))
        return;
    if (const auto told = onDurable) // a copy, as it may set another one
        told();
}

void Services::Parts::schedule() {
    if (becameDurable && onDurable)
        return http.wakeAfter(std::chrono::milliseconds(0));
    const auto retry = database.timeToRetry();
    const auto post = sender.timeToNext();
    http.wakeAfter(retry && post ? std::min(retry, post) : (retry ? retry : post));
}

Status Services::Parts::status() {
    Status status;
    status.pendingSince = pendingSince;
    status.storeProblem = database.problem();
    status.waitingBeacons = outbox.requests().size();
    if (status.waitingBeacons > 0)
        status.oldestBeacon = outbox.requests().front().created;
    status.documents = documents.status();
    status.networkProblem = http.lastProblem();
    return status;
}

Services::Services(Settings settings) : parts_(std::make_unique<Parts>(std::move(settings))) {}

Services::~Services() {
    parts_->database.finish();
}

Platform Services::platform() {
    return {parts_->entries, parts_->documents, parts_->notifications, parts_->logger,
            parts_->clock,   parts_->variables, parts_->variables,     parts_->settings.hosts};
}

void Services::poll() {
    parts_->poll();
}

void Services::setWakeUp(std::function<void()> wakeUp) {
    parts_->http.setWakeUp(std::move(wakeUp));
}

Status Services::status() const {
    return parts_->status();
}

void Services::setOnDurable(std::function<void()> onDurable) {
    parts_->onDurable = std::move(onDurable);
}

} // namespace vx::services
