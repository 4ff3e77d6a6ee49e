#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/MeasuredApplication.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/WebSurface.h"

namespace vx::bench {

namespace {

constexpr int kChildren = 4;

std::string member(int number, const std::string& more) {
    const std::string text = std::to_string(number);
    return R"({"ID":")" + text + R"(","name":"Purpose )" + text +
           R"(","description":"What is done for this purpose, in a sentence of common length.")" +
           more + "}";
}

std::string configuration(int categories) {
    std::string text = R"({"information":{"version":1,"content":"You decide."},)"
                       R"("global_consent":{"name":"All","description":"All of them"},)"
                       R"("categories":[)";
    for (int category = 1; category <= categories; ++category) {
        std::string children;
        for (int child = 1; child <= kChildren; ++child)
            children += (child > 1 ? "," : "") + member(category * 10 + child, "");
        text += (category > 1 ? "," : "") +
                member(category * 10, R"(,"subcategories":[)" + children + "]");
    }
    return text + "]}";
}

// The engine, started with a configuration. What it posts is heard by nobody: a beacon's way to the
// disk is no part of a screen.
class CategoryMode {
public:
    explicit CategoryMode(int categories)
        : services_(packaged(categories)), runtime_(deaf(services_.platform())) {
        VXMobilePrivacy::sharedInstance().setSiteID(12, 5);
    }

private:
    static services::Settings packaged(int categories) {
        const auto directory = freshDirectory("screen");
        std::ofstream(directory / "privacy.json") << configuration(categories);
        services::Settings made = settings(directory / "choices.sqlite");
        made.packaged = directory;
        return made;
    }

    Platform deaf(const Platform& usual) {
        return {.store = usual.store,
                .documents = usual.documents,
                .notifications = nobody_,
                .logger = usual.logger,
                .clock = usual.clock,
                .coreVariables = usual.coreVariables,
                .predefinedVariables = usual.predefinedVariables,
                .hosts = usual.hosts};
    }

    services::Services services_;
    NotificationCenter nobody_;
    Runtime runtime_;
};

// The allocator leaves small pieces of a screen that is gone as they are until it is asked for a
// large one. That joins them, which is no part of the next screen's time.
void tidyUpHeap() {
    benchmark::DoNotOptimize(std::make_unique<char[]>(100'000));
}

void buildScreen(benchmark::State& state, int categories) {
    const CategoryMode mode(categories);
    std::optional<VXPrivacyCenterViewController> center;
    for ([[maybe_unused]] auto iteration : state) {
        center.emplace();
        center->view()->setSize(390, 844);
        center->viewDidLoad();
        state.PauseTiming();
        if (center->numberOfViews() != categories * (kChildren + 1) + 1)
            return state.SkipWithError("the screen has not every row");
        center.reset();
        tidyUpHeap();
        state.ResumeTiming();
    }
}

std::string between(const std::string& text, std::size_t from, const std::string& begin) {
    const auto at = text.find(begin, from) + begin.size();
    return text.substr(at, text.find('"', at) - at);
}

// The first category's switch, back and forth.
void tapCategory(benchmark::State& state) {
    const CategoryMode mode(60);
    VXPrivacyCenterViewController center;
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    web::WebSurface surface(center.view());
    const std::string page = surface.render();
    const std::string control = between(page, page.find(">Purpose 10<"), "id=\"");
    const std::string event =
        R"({"page":")" + between(page, 0, "data-page=\"") + R"(","tap":")" + control + "\"}";
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state)
        bytes = surface.dispatch(event).size();
    if (bytes < 40)
        state.SkipWithError("the tap changed nothing");
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK_CAPTURE(buildScreen, 300, 60)->Name("screen/300 rows");
BENCHMARK_CAPTURE(buildScreen, 3000, 600)->Name("screen/3000 rows");
BENCHMARK(tapCategory)->Name("screen/tap");

} // namespace

} // namespace vx::bench
