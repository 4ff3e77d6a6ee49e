#include "bench/MeasuredPage.h"

namespace vx::bench {

namespace {

std::string valueAt(const std::string& markup, std::size_t attribute) {
    const std::size_t begin = markup.find('"', attribute) + 1;
    return markup.substr(begin, markup.find('"', begin) - begin);
}

} // namespace

MeasuredPage::MeasuredPage(web::WebSurface& surface)
    : surface_(surface), markup_(surface.render()),
      id_(valueAt(markup_, markup_.find("data-page=\""))) {}

std::string MeasuredPage::elementBefore(std::string_view text) const {
    return valueAt(markup_, markup_.rfind(" id=\"", markup_.find(text)));
}

std::string MeasuredPage::elementAfter(std::string_view text) const {
    return valueAt(markup_, markup_.find(" id=\"", markup_.find(text)));
}

std::string MeasuredPage::dispatch(const char* what, const std::string& element) const {
    return surface_.dispatch(R"({"page":")" + id_ + R"(",")" + what + R"(":")" + element + "\"}");
}

void measureTaps(benchmark::State& state, const MeasuredPage& page, const std::string& element) {
    std::string patch;
    for ([[maybe_unused]] auto iteration : state)
        patch = page.tap(element);
    if (patch.find('"' + element + '"') == std::string::npos)
        state.SkipWithError("the tap changed nothing");
    state.counters["bytes"] = static_cast<double>(patch.size());
}

} // namespace vx::bench
