#include "vxprivacy/services/core/EntryMap.h"

#include <algorithm>

namespace vx::services {

EntryMap::Entry* EntryMap::find(std::string_view key) const {
    Entry* found = last_ ? last_->second.next : nullptr;
    if (!found || found->first != key) {
        const auto searched = entries_.find(key);
        if (searched == entries_.end())
            return nullptr;
        found = &*searched;
        if (last_)
            last_->second.next = found;
    }
    return last_ = found;
}

EntryMap::Entry& EntryMap::make(std::string_view key) {
    Entry* found = find(key);
    return found ? *found : *entries_.emplace(key, Content{}).first;
}

bool operator==(const EntryMap& left, const EntryMap& right) {
    const auto holdsAllOf = [](const EntryMap& one, const EntryMap& other) {
        return std::ranges::all_of(other.entries_, [&](const EntryMap::Entry& entry) {
            const auto found = one.entries_.find(entry.first);
            return found == one.entries_.end() ? !entry.second.value
                                               : found->second.value == entry.second.value;
        });
    };
    return holdsAllOf(left, right) && holdsAllOf(right, left);
}

} // namespace vx::services
