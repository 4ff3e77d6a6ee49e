#include <memory>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/Heap.h"
#include "bench/IABApplication.h"
#include "bench/LargeVendorList.h"
#include "bench/MeasuredPage.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"

namespace vx::bench {

namespace {

using Center = VXIABPrivacyCenterViewController;

// The engine with a vendor list and the sample's texts; nobody hears what it posts.
class IABMode {
public:
    explicit IABMode(const std::string& vendorList)
        : application_("IAB screens", {vendorList, contentOf(PROJECT_ROOT "/samples/iab.json")},
                       &nobody_) {}

private:
    NotificationCenter nobody_;
    IABApplication application_;
};

enum class First { PopUp, Vendors };

void load(Center& center, First first) {
    if (first == First::Vendors)
        center.startWithVendorScreen();
    center.view()->setSize(390, 844);
    center.viewDidLoad();
}

// All screens are built; the vendor list twice where it is the first.
void loadCenter(benchmark::State& state, First first) {
    const IABMode mode(largeVendorList().text);
    std::optional<Center> center;
    std::size_t allocations = 0;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        tidyUpHeap();
        const std::size_t allocationsBefore = allocationCount();
        const std::size_t bytesBefore = bytesInUse();
        state.ResumeTiming();
        load(center.emplace(), first);
        state.PauseTiming();
        allocations = allocationCount() - allocationsBefore;
        bytes = bytesInUse() - bytesBefore;
        center.reset();
        state.ResumeTiming();
    }
    state.counters["allocations"] = static_cast<double>(allocations);
    state.counters["bytes"] = static_cast<double>(bytes);
}

// From the purposes, a tap on the button that leads to the vendors: to the patch with the list.
void displayVendorList(benchmark::State& state) {
    const IABMode mode(largeVendorList().text);
    Center center;
    load(center, First::PopUp);
    center.displayPurposeScreen();
    web::WebSurface surface(center.view());
    const MeasuredPage page(surface);
    const std::string button = page.elementBefore(">Partners<");
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        bytes = page.tap(button).size();
        state.PauseTiming();
        center.displayPurposeScreen();
        page.update();
        tidyUpHeap();
        state.ResumeTiming();
    }
    if (bytes < 100'000)
        state.SkipWithError("the list has not every row");
    state.counters["bytes"] = static_cast<double>(bytes);
}

void tapVendor(benchmark::State& state) {
    const IABMode mode(largeVendorList().text);
    Center center;
    load(center, First::Vendors);
    web::WebSurface surface(center.view());
    const MeasuredPage page(surface);
    measureTaps(state, page, page.elementBefore("role=\"switch\""));
}

// From the model to the page.
void showVendors(benchmark::State& state, const std::string& vendorList) {
    const IABMode mode(vendorList);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto center = std::make_unique<Center>();
        load(*center, First::PopUp);
        auto before = center->vendorContentView(); // which does not go meanwhile
        state.ResumeTiming();
        center->displayVendorList();
        auto surface = std::make_unique<web::WebSurface>(center->view());
        benchmark::DoNotOptimize(surface->render());
        state.PauseTiming();
        surface.reset();
        before.reset();
        center.reset();
        tidyUpHeap();
        state.ResumeTiming();
    }
}

void showTenfold(benchmark::State& state) {
    static const std::string list = tenfoldVendorList();
    showVendors(state, list);
}

BENCHMARK(displayVendorList)->Name("IAB/vendor list");
BENCHMARK(tapVendor)->Name("IAB/tap");
BENCHMARK_CAPTURE(loadCenter, popup, First::PopUp)->Name("IAB/popup first");
BENCHMARK_CAPTURE(loadCenter, vendors, First::Vendors)->Name("IAB/vendors first");
BENCHMARK_CAPTURE(showVendors, 824, largeVendorList().text)->Name("IAB/824 vendors");
BENCHMARK(showTenfold)->Name("IAB/8240 vendors");

} // namespace

} // namespace vx::bench
