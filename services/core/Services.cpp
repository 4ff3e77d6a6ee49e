#include "services/core/Services.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "services/core/Documents.h"
#include "services/core/EntryStore.h"
#include "services/core/HTTPSender.h"
#include "services/core/Log.h"
#include "services/core/ServiceVariables.h"
#include "services/core/URLPolicy.h"

namespace vx::services {

struct Services::Parts {
    explicit Parts(Settings given);
    void poll();
    void schedule();

    Settings settings;
    std::unique_ptr<Logger> ownLog =
        settings.logger ? nullptr : std::make_unique<Log>(settings.logLevel, settings.logFile);
    Logger& logger = settings.logger ? *settings.logger : *ownLog;
    ServiceClock clock{settings.clock};
    NotificationCenter ownNotifications;
    NotificationCenter& notifications =
        settings.notifications ? *settings.notifications : ownNotifications;
    Database database{settings.store, logger};
    EntryStore entries{database};
    Outbox outbox{database};
    OfflineCopies copies{database};
    ServiceVariables variables{entries, settings.userAgent, settings.variables};
    HTTPClient http{settings.userAgent, logger};
    Shared shared{entries, http, clock, logger};
    Documents documents{shared, copies, settings.packaged, settings.hosts.configurationCDN};
    HTTPSender sender{shared, outbox, notifications};
};

namespace {

void warnOfRefused(const std::string& host, Logger& logger) {
    if (!mayRequest(host))
        logger.log("The host " + host + " is refused: it is neither https nor on this machine", 4);
}

} // namespace

Hosts defaultHosts() {
    return {"https://cdn.halvane.example", "https://vendor-list.consensu.org",
            "https://collect.halvane.example"};
}

Services::Parts::Parts(Settings given) : settings(std::move(given)) {
    for (const std::string& host : {settings.hosts.configurationCDN, settings.hosts.vendorList,
                                    settings.hosts.consentCollector})
        warnOfRefused(host, logger);
    database.open();
    database.setOnSettled([this] {
        sender.sendDue();
        schedule();
    });
}

// In one scope, so that whatever the answers change costs one commit.
void Services::Parts::poll() {
    StoreTransaction transaction(entries);
    http.poll();
    transaction.commit();
    sender.sendDue();
    database.retry();
    schedule();
}

void Services::Parts::schedule() {
    const auto retry = database.timeToRetry();
    const auto post = sender.timeToNext();
    http.wakeAfter(retry && post ? std::min(retry, post) : (retry ? retry : post));
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

} // namespace vx::services
