#include "vxprivacy/hosts/web/OpenPages.h"

#include <algorithm>
#include <iterator>
#include <random>

namespace vx::web {

namespace {

// A page that is reloaded does not say that it is gone, so these keep the memory in bounds.
constexpr std::size_t kMostPages = 16;
constexpr std::size_t kMostPending = 50'000;

// A page must not be taken for one of the process before.
std::string randomName() {
    std::random_device random;
    return std::to_string((std::uint64_t{random()} << 32) | random());
}

} // namespace

OpenPages::OpenPages() : name_(randomName()) {}

OpenPage& OpenPages::add() {
    if (pages_.size() == kMostPages)
        pages_.pop_front();
    return pages_.emplace_back(OpenPage{.id = name_ + "-" + std::to_string(++made_)});
}

OpenPage* OpenPages::find(std::string_view id, std::string_view run) {
    const auto page = std::ranges::find(pages_, id, &OpenPage::id);
    if (page == pages_.end())
        return nullptr;
    if (page->run.empty())
        page->run = run;
    if (page->run != run)
        return nullptr;
    pages_.splice(pages_.end(), pages_, page);
    return &pages_.back();
}

void OpenPages::note(const std::vector<ViewChange>& changes) {
    for (OpenPage& page : pages_)
        page.pending.insert(page.pending.end(), changes.begin(), changes.end());
    std::erase_if(pages_, [](const OpenPage& page) { return page.pending.size() > kMostPending; });
}

} // namespace vx::web
