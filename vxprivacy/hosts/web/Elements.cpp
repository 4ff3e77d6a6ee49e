#include "vxprivacy/hosts/web/Elements.h"

#include <utility>

namespace vx::web {

Element& Elements::of(View& view) {
    Element& element = elements_[&view];
    if (element.view.lock().get() != &view) { // new, or at the address of one that is gone
        byId_.erase(element.id);
        element = {};
        element.id = "v" + std::to_string(++made_);
        element.view = view.weak_from_this();
        byId_.emplace(element.id, &view);
    }
    return element;
}

std::shared_ptr<View> Elements::view(std::string_view id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : elements_.at(found->second).view.lock();
}

void Elements::forgetGone() {
    std::erase_if(elements_, [&](const auto& each) {
        if (!each.second.view.expired())
            return false;
        byId_.erase(each.second.id);
        return true;
    });
}

} // namespace vx::web
