#include "vxprivacy/hosts/web/Elements.h"

#include <charconv>
#include <utility>

namespace vx::web {

Element& Elements::of(View& view) {
    Element& element = elements_[&view];
    if (element.view.lock().get() != &view) { // new, or at the address of one that is gone
        byNumber_.erase(std::exchange(element, {}).number);
        element.number = ++made_;
        element.id = "v" + std::to_string(element.number);
        element.view = view.weak_from_this();
        byNumber_.emplace(element.number, &view);
    }
    return element;
}

std::shared_ptr<View> Elements::view(std::string_view id) const {
    unsigned number = 0;
    if (id.starts_with('v'))
        std::from_chars(id.data() + 1, id.data() + id.size(), number);
    const auto found = byNumber_.find(number);
    if (found == byNumber_.end())
        return nullptr;
    const Element& element = elements_.at(found->second);
    return element.id == id ? element.view.lock() : nullptr;
}

void Elements::forgetGone() {
    std::erase_if(elements_, [&](const auto& each) {
        if (!each.second.view.expired())
            return false;
        byNumber_.erase(each.second.number);
        return true;
    });
}

} // namespace vx::web
