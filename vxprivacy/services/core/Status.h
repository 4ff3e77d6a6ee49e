#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::services {

/// Where a document came from that is in use.
enum class Origin {
    Nowhere,   ///< there is none
    Packaged,  ///< it ships with the application
    Downloaded ///< now or by an earlier process
};

/// How the services are at one moment. Times are milliseconds since 1970, UTC; problems are one
/// line each, in English, and empty where there is none.
struct VXPRIVACY_EXPORT Status {
    /// Of one registered configuration file.
    struct Document {
        std::string name;                ///< of the configuration file: "privacy"
        std::int32_t version = 0;        ///< 0 where it says none, or one beyond 32 bits
        Origin origin = Origin::Nowhere; ///< of the document in use
        /// What went wrong when it was last loaded or asked for.
        std::string problem;
    };

    /// Since when changes wait to be durable. Absent: all that was saved is. What a transaction
    /// that is still open saves counts only when it ends.
    std::optional<std::uint64_t> pendingSince;
    /// Why the store could not be read or written at the last attempt.
    std::string storeProblem;

    /// How many beacons the collector has not taken yet.
    std::size_t waitingBeacons = 0;
    /// When the oldest of them was made; absent: none waits.
    std::optional<std::uint64_t> oldestBeacon;

    /// The registered configuration files, by name.
    std::vector<Document> documents;
    /// Why the last request failed that did, and its address: no answer came, or one of HTTP 400
    /// and above. It stays when later ones succeed.
    std::string networkProblem;
};

} // namespace vx::services
