#include <fstream>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/Heap.h"
#include "bench/MeasuredApplication.h"
#include "bench/MeasuredPage.h"
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

// The engine, started with a configuration; nobody hears what it posts.
class CategoryMode {
public:
    explicit CategoryMode(int categories)
        : services_(packaged(categories)), runtime_(withListener(services_.platform(), nobody_)) {
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

    services::Services services_;
    NotificationCenter nobody_;
    Runtime runtime_;
};

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

// The first category's switch, back and forth.
void tapCategory(benchmark::State& state, int categories) {
    const CategoryMode mode(categories);
    VXPrivacyCenterViewController center;
    center.view()->setSize(390, 844);
    center.viewDidLoad();
    web::WebSurface surface(center.view());
    const MeasuredPage page(surface);
    measureTaps(state, page, page.elementAfter(">Purpose 10<"));
}

BENCHMARK_CAPTURE(buildScreen, 300, 60)->Name("screen/300 rows");
BENCHMARK_CAPTURE(buildScreen, 3000, 600)->Name("screen/3000 rows");
BENCHMARK_CAPTURE(tapCategory, 300, 60)->Name("screen/tap, 300 rows");
BENCHMARK_CAPTURE(tapCategory, 3000, 600)->Name("screen/tap, 3000 rows");

} // namespace

} // namespace vx::bench
