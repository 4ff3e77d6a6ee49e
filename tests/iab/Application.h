#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "services/iab/TCFLibrary.h"
#include "tools/recording/MemoryStore.h"

namespace vx::tests {

/// An application that has the IAB library, on a store to look into.
struct Application : private Logger {
    explicit Application(const recording::Texts& entries = {}) : store(entries) {}

    /// A builder with this module's fixed fields, and vendors 1 to 12.
    std::unique_ptr<CoreStringBuilder> builder() {
        auto made = library.makeCoreStringBuilder();
        made->setCmpID(90);
        made->setCmpVersion(471);
        made->setTcfPolicyVersion(2);
        made->setConsentLanguage("de");
        made->setPublisherCC("de");
        made->setVendorConsentSectionMaxVendorId(12);
        made->setVendorLegitimateInterestSectionMaxVendorId(12);
        return made;
    }

    std::string stored(std::string_view key) const {
        return store.get("IABTCF_" + std::string(key)).value_or("absent");
    }

    std::vector<std::string> lines; ///< "level message"
    recording::MemoryStore store;
    services::TCFLibrary library{store, *this};

private:
    void log(std::string_view message, int level) override {
        lines.push_back(std::to_string(level) + " " + std::string(message));
    }
};

} // namespace vx::tests
