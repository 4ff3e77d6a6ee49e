#include <ostream>

#include "vxprivacy/services/core/Services.h"

namespace {

void report(const vx::services::Status& status, std::ostream& out) {
    if (status.pendingSince)
        out << "not durable yet: " << status.storeProblem << '\n';
    if (status.oldestBeacon)
        out << status.waitingBeacons << " beacons wait; " << status.networkProblem << '\n';
    for (const auto& document : status.documents)
        if (document.origin == vx::services::Origin::Nowhere)
            out << "no document " << document.name << ": " << document.problem << '\n';
}

} // namespace

void reportWhenDurable(vx::services::Services& services, std::ostream& out) {
    report(services.status(), out);
    services.setOnDurable([&services, &out] { report(services.status(), out); });
}
