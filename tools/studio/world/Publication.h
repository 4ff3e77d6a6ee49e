#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "tools/studio/shared/Result.h"

namespace vx::tools::studio {

/// One version of the privacy configuration.
struct Edition {
    /// Never null in one that was made; shared, since it may have 8 MiB.
    std::shared_ptr<const std::string> text;
    std::int64_t version = 0;
};

/// What `text` is published as: as it is when its "information/version" is higher than `above`,
/// else with that raised. A problem when it is no privacy configuration.
Result<Edition> editionOf(const std::string& text, std::int64_t above = 0);

/// The privacy configuration as its publisher sees it: the edition in force, and the way to a new
/// one.
class Publication {
public:
    /// Keeps a new edition in `file`, unless that is empty.
    explicit Publication(Edition inForce, std::filesystem::path file = {});

    const Edition& inForce() const { return inForce_; }
    /// Publishes `text` as a new version. What is wrong with it changes nothing.
    /// Throws std::system_error when it cannot be kept, which changes nothing either.
    Result<Edition> publish(const std::string& text);

private:
    Edition inForce_;
    std::filesystem::path file_;
};

} // namespace vx::tools::studio
