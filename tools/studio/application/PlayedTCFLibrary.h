#pragma once

#include <string>
#include <utility>

#include "vxprivacy/services/iab/TCFLibrary.h"

namespace vx::tools::studio {

/// The IAB library of an application whose session may be one that is played. Such a session does
/// not bring the TC string that was stored before it, only when that was created.
class PlayedTCFLibrary : public services::TCFLibrary {
public:
    /// `created` is in seconds since 1970; empty: there was no such string.
    PlayedTCFLibrary(KeyValueStore& store, Logger& logger, Settings settings, std::string created)
        : TCFLibrary(store, logger, std::move(settings)), created_(std::move(created)) {}

    std::string getCreatedDate() const override {
        const std::string stored = TCFLibrary::getCreatedDate();
        return stored.empty() ? created_ : stored;
    }
    void resetTCData() override {
        created_.clear();
        TCFLibrary::resetTCData();
    }

private:
    std::string created_;
};

} // namespace vx::tools::studio
