#include <map>
#include <memory>
#include <string>
#include <vector>

#include "vxprivacy/platform/core/KeyValueStore.h"

namespace {

// Forgets everything when the process ends: for a kiosk, or a test.
class MemoryStore : public vx::KeyValueStore {
    using Entries = std::map<std::string, std::string, std::less<>>;

public:
    std::optional<std::string> get(std::string_view key) const override {
        auto found = entries_.find(key);
        return found == entries_.end() ? std::nullopt : std::optional(found->second);
    }
    void set(std::string_view key, std::string_view value) override {
        entries_.insert_or_assign(std::string(key), std::string(value));
    }
    void remove(std::string_view key) override {
        if (auto found = entries_.find(key); found != entries_.end())
            entries_.erase(found);
    }
    void beginTransaction() override { before_.push_back(entries_); }
    void commitTransaction() override { before_.pop_back(); }
    void rollBackTransaction() override {
        entries_ = before_.back();
        before_.pop_back();
    }

private:
    Entries entries_;
    std::vector<Entries> before_; // one for each open transaction
};

} // namespace

std::unique_ptr<vx::KeyValueStore> makeStore() {
    return std::make_unique<MemoryStore>();
}
