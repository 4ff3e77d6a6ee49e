// fault_times: how long the longest of ten saves takes, and the end of the services after them,
// under each fault of store and network. Prints a line a fault; fails where one takes a second,
// which is a hang: how long they really take, an idle machine tells.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

#include "tests/services/TestServices.h"
#include "tests/services/faults/Faults.h"
#include "tests/services/faults/StoreFaults.h"
#include "tests/support/LocalServer.h"
#include "tests/support/WaitUntil.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;
using Milliseconds = std::chrono::duration<double, std::milli>;
using Present = std::shared_ptr<void>; // a fault, as long as it lives

constexpr double kHang = 1000; // milliseconds

struct Fault {
    const char* name;
    std::function<Present(const fs::path& store)> make;
    std::string collector = "http://127.0.0.1:9"; // nobody listens
    std::function<void()> awaitWorker = [] {};    // until the worker is stuck in it
};

double timeOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

ConsentDictionary consentOf(int number) {
    ConsentDictionary consent;
    for (std::int32_t id = 1; id <= 200; ++id)
        consent.set("PRIVACY_CAT_" + std::to_string(id), number % 2 == 0 ? "0" : "1");
    return consent;
}

// A file where the directory should be.
Present takeAway(const fs::path& store) {
    fs::remove_all(store.parent_path());
    return std::make_shared<fs::path>(writeFile(store.parent_path(), ""));
}

std::vector<Fault> faults(const SilentServer& server) {
    return {
        {"none", [](const fs::path&) { return Present(); }},
        {"a locked file", [](const fs::path& it) { return std::make_shared<LockedFile>(it); }},
        {"a full disk", [](const fs::path& it) { return std::make_shared<FullDisk>(it); }},
        {"no file, nor a place for it", takeAway},
        {"no descriptors", [](const fs::path&) { return std::make_shared<NoDescriptors>(); }},
        {"no threads", [](const fs::path&) { return std::make_shared<NoThreads>(); }},
        {"a silent collector", [](const fs::path&) { return Present(); }, server.host(),
         [&] { server.awaitConnection(); }},
        {"a silent name server",
         [](const fs::path&) { return std::make_shared<SilentNameServer>(); },
         "https://collector.example", [] { waitUntil(SilentNameServer::isAsked); }},
        {"a read-only file", [](const fs::path& it) { return std::make_shared<ReadOnlyFile>(it); }},
    };
}

bool measure(const Fault& fault) {
    const TemporaryDirectory directory;
    const fs::path store = directory / "private/store.db";
    World(store).store().set("a file", "is there");
    Settings settings;
    settings.hosts = {fault.collector, fault.collector, fault.collector};
    std::optional<World> world(std::in_place, store, settings);
    std::optional<Runtime> runtime(std::in_place, world->services.platform());
    VXMobilePrivacy::sharedInstance().setSiteID(12, 5);
    world->services.poll();
    const Present present = fault.make(store);
    double longest = 0;
    for (int number = 0; number < 10; ++number) {
        longest = std::max(longest, timeOf([&] {
                               VXMobilePrivacy::sharedInstance().saveConsent(consentOf(number));
                           }));
        world->services.poll();
    }
    fault.awaitWorker();
    runtime.reset();
    const double end = timeOf([&] { world.reset(); });
    std::printf("%-30s %8.1f ms %8.1f ms\n", fault.name, longest, end);
    return longest < kHang && end < kHang;
}

} // namespace

} // namespace vx::services::test

int main() {
    using namespace vx::services::test;
    const SilentServer silent;
    std::printf("%-30s %11s %11s\n", "", "save", "end");
    bool quick = true;
    for (const Fault& fault : faults(silent))
        if (::geteuid() == 0 || fault.name != std::string_view("a read-only file"))
            quick &= measure(fault);
    return quick ? 0 : 1;
}
