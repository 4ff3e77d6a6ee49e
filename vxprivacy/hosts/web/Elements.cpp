#include "vxprivacy/hosts/web/Elements.h"

#include <algorithm>
#include <charconv>

namespace vx::web {

std::string idOf(unsigned number) {
    return "v" + std::to_string(number);
}

Element& Elements::of(View& view) {
    Element* known = find(view.hostNumber());
    if (known && known->view.lock().get() == &view) // not the number of another host's
        return *known;
    if (++made_ / kBlock == blocks_.size())
        blocks_.push_back(std::make_unique<Block>());
    Element& element = *find(made_);
    element.number = made_;
    element.view = view.weak_from_this();
    view.setHostNumber(made_);
    return element;
}

std::shared_ptr<View> Elements::view(std::string_view id) const {
    unsigned number = 0;
    if (id.starts_with('v'))
        std::from_chars(id.data() + 1, id.data() + id.size(), number);
    const Element* element = find(number);
    return element && element->id() == id ? element->view.lock() : nullptr;
}

std::shared_ptr<View> Elements::view(unsigned number) const {
    const Element* element = find(number);
    return element ? element->view.lock() : nullptr;
}

void Elements::forgetGone() {
    for (auto& block : blocks_) {
        if (!block)
            continue;
        for (Element& element : *block)
            if (element.view.expired())
                element = {};
        const bool isGone = std::ranges::count(*block, 0U, &Element::number) == kBlock;
        if (isGone && &block != &blocks_.back())
            block.reset();
    }
}

Element* Elements::find(unsigned number) const {
    const std::size_t block = number / kBlock;
    return block < blocks_.size() && blocks_[block] ? &(*blocks_[block])[number % kBlock] : nullptr;
}

} // namespace vx::web
