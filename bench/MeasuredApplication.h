#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/services/core/Services.h"

namespace vx::bench {

/// An empty directory on the disk that holds the build; one process at a time.
std::filesystem::path freshDirectory(std::string_view name);

std::string contentOf(const std::filesystem::path& file);

/// Settings of services whose hosts are on this machine and answer nothing.
services::Settings settings(const std::filesystem::path& store);

/// The doors of `usual`, with `nobody` to hear what the engine tells others: a beacon's way to the
/// disk is no part of a screen.
Platform withListener(const Platform& usual, NotificationCenter& nobody);

/// `size` entries as an IAB save has them, accepted and refused in turn; the values of the first
/// `flipped` of them are the other way round.
ConsentDictionary consent(std::size_t size, std::size_t flipped = 0);

/// The engine, started on the real services in a fresh directory, without a tag SDK.
class MeasuredApplication {
public:
    explicit MeasuredApplication(std::string_view name);

    VXMobilePrivacy& engine() { return VXMobilePrivacy::sharedInstance(); }

private:
    services::Services services_;
    Runtime runtime_;
};

} // namespace vx::bench
