#include "vxprivacy/testing/MemoryStore.h"

#include <utility>

namespace vx::recording {

std::optional<std::string> MemoryStore::get(std::string_view key) const {
    const auto found = entries_.find(key);
    return found == entries_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryStore::set(std::string_view key, std::string_view value) {
    entries_.insert_or_assign(std::string(key), std::string(value));
}

void MemoryStore::remove(std::string_view key) {
    if (const auto found = entries_.find(key); found != entries_.end())
        entries_.erase(found);
}

void MemoryStore::beginTransaction() {
    before_.push_back(entries_);
}

void MemoryStore::commitTransaction() {
    before_.pop_back();
}

void MemoryStore::rollBackTransaction() {
    entries_ = std::move(before_.back());
    before_.pop_back();
}

} // namespace vx::recording
