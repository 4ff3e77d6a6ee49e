#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/services/iab/TCFLibrary.h"
#include "vxprivacy/testing/MemoryStore.h"

namespace vx::tests {

/// An application that has the IAB library, on a store to look into.
struct IABApplication : private Logger {
    explicit IABApplication(const recording::Texts& entries = {},
                            services::TCDataSink* sink = nullptr)
        : store(entries), library(store, *this, sink) {}
    IABApplication(const recording::Texts& entries, services::TCFLibrary::Settings settings)
        : store(entries), library(store, *this, std::move(settings)) {}

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
    services::TCFLibrary library;

private:
    void log(std::string_view message, int level) override {
        lines.push_back(std::to_string(level) + " " + std::string(message));
    }
};

/// A save of the application.
inline void save(IABApplication& application, bool withPublisherTC) {
    const auto builder = application.builder();
    builder->setConsentRecordCreated(1'600'000'000);
    builder->setPurposesConsent(std::vector{1, 3});
    builder->setPurposesLITransparency(std::vector{2});
    builder->setVendorConsentSectionBitField(std::vector{1, 12});
    builder->setSpecialFeatureOptInts(std::vector{2});
    builder->buildConsentString(withPublisherTC);
    builder->writeTCData();
}

} // namespace vx::tests
