#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "bench/MeasuredApplication.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

namespace vx::bench {

/// The engine in IAB mode, started on the real services with the documents that it ships.
class IABApplication {
public:
    struct Documents {
        std::string vendorList;
        /// Empty: none.
        std::string configuration;
    };

    /// `name` of its directory. `listener` hears what the engine tells others; null: the services.
    IABApplication(std::string_view name, const Documents& documents,
                   NotificationCenter* listener = nullptr,
                   services::TCFLibrary::Settings settings = {});

    VXMobilePrivacy& engine() { return VXMobilePrivacy::sharedInstance(); }
    std::filesystem::path store() const { return directory_ / "choices.sqlite"; }

private:
    Platform platform(NotificationCenter* listener);

    std::filesystem::path directory_;
    services::Services services_;
    services::TCFLibrary iab_;
    Runtime runtime_;
};

} // namespace vx::bench
