#include "vxprivacy/testing/Event.h"

namespace vx::recording {

Event asObject(const OrderedDictionary<std::string>& dictionary) {
    Event object = Event::object();
    for (const auto& [key, value] : dictionary)
        object[key] = value;
    return object;
}

} // namespace vx::recording
