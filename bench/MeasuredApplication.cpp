#include "bench/MeasuredApplication.h"

#include <fstream>
#include <iterator>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::bench {

namespace {

constexpr std::size_t kPurposes = 200;
constexpr const char* kNobody = "http://127.0.0.1:9";

std::string key(std::size_t index) {
    const auto number = static_cast<std::int32_t>(index) + 1;
    return index < kPurposes ? numberedKey(kVXCategoryPrefix, kVXPurposeOffset + number)
                             : numberedKey(kVXVendorPrefix, kVXVendorOffset + number);
}

} // namespace

std::filesystem::path freshDirectory(std::string_view name) {
    std::filesystem::path directory = std::filesystem::path(BENCH_DATA) / name;
    std::filesystem::remove_all(directory);
    std::filesystem::create_directories(directory);
    return directory;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

services::Settings settings(const std::filesystem::path& store) {
    return {
        .store = store,
        .hosts = {.configurationCDN = kNobody, .vendorList = kNobody, .consentCollector = kNobody},
        .logLevel = 5};
}

Platform withListener(const Platform& usual, NotificationCenter& nobody) {
    return {.store = usual.store,
            .documents = usual.documents,
            .notifications = nobody,
            .logger = usual.logger,
            .clock = usual.clock,
            .coreVariables = usual.coreVariables,
            .predefinedVariables = usual.predefinedVariables,
            .hosts = usual.hosts};
}

ConsentDictionary consent(std::size_t size, std::size_t flipped) {
    ConsentDictionary entries;
    for (std::size_t i = 0; i < size; ++i)
        entries.set(key(i), (i % 2 == 0) != (i < flipped) ? "1" : "0");
    return entries;
}

MeasuredApplication::MeasuredApplication(std::string_view name)
    : services_(settings(freshDirectory(name) / "choices.sqlite")), runtime_(services_.platform()) {
    engine().setSiteID(12, 5);
}

} // namespace vx::bench
