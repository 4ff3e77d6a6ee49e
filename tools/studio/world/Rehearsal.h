#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/studio/shared/Result.h"
#include "tools/studio/world/Publication.h"
#include "tools/studio/world/ServedVendorList.h"

namespace vx::tools::studio {

/// Finds what a new edition means to users who answered under the one in force, by doing it: an
/// application with a store and a backend of its own takes up the one, has it accepted and comes
/// back to the other. Nobody else hears of it. Any thread may call; one rehearsal runs at a time.
class Rehearsal {
public:
    Rehearsal(std::int32_t siteID, std::int32_t privacyID, ServedVendorLists vendorLists)
        : siteID_(siteID), privacyID_(privacyID), vendorLists_(std::move(vendorLists)) {}

    /// The decision after the new edition came ("decision", as the application reports it) and the
    /// callbacks that told the application of it ("callbacks"). Store and host of `launch` do not
    /// count. Takes about two launches.
    Result<Json> run(Launch launch, const Edition& inForce, const Edition& next);
    /// Ends what runs, and lets no other begin.
    void stop();

private:
    class Stage;

    Result<std::shared_ptr<Stage>> setUp();

    const std::int32_t siteID_;
    const std::int32_t privacyID_;
    const ServedVendorLists vendorLists_;
    std::mutex alone_; // held by what runs
    std::mutex mutex_; // guards what follows
    std::shared_ptr<Stage> stage_;
    bool stopped_ = false;
};

} // namespace vx::tools::studio
