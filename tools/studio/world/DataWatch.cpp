#include "tools/studio/world/DataWatch.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/SessionRecord.h"

namespace vx::tools::studio {

namespace {

constexpr std::size_t kMostBytes = EventStream::kLongestEntry / 4; // an escaped text grows

// What is other between two lists of pairs, both sorted by key.
class Change {
public:
    Change(const Json& before, const Json& now) {
        auto old = before.begin();
        auto young = now.begin();
        while (old != before.end() || young != now.end()) {
            const bool isGone =
                young == now.end() || (old != before.end() && key(*old) < key(*young));
            const bool isNew =
                old == before.end() || (young != now.end() && key(*young) < key(*old));
            if (isGone || isNew || (*old)[1] != (*young)[1])
                add(isNew ? nullptr : &*old, isGone ? nullptr : &*young);
            old += isNew ? 0 : 1;
            young += isGone ? 0 : 1;
        }
    }

    bool isEmpty() const { return set_ + removed_ == 0; }
    Json body() const {
        Json body = {{"before", before_}, {"now", now_}};
        if (leftOut_ > 0)
            body["left out"] = leftOut_;
        return body;
    }
    std::string title(const std::string& what) const {
        std::string title = what + ": ";
        if (set_ > 0)
            title += std::to_string(set_) + " set";
        if (removed_ > 0)
            title += (set_ > 0 ? ", " : "") + std::to_string(removed_) + " removed";
        return title;
    }

private:
    static const std::string& key(const Json& pair) {
        return pair[0].get_ref<const std::string&>();
    }

    void add(const Json* before, const Json* now) {
        ++(now ? set_ : removed_);
        std::size_t size = 0;
        for (const Json* pair : {before, now})
            if (pair)
                size += key(*pair).size() + (*pair)[1].get_ref<const std::string&>().size();
        if (bytes_ + size > kMostBytes) {
            ++leftOut_;
            return;
        }
        bytes_ += size;
        if (before)
            addMember(before_, key(*before), (*before)[1]);
        if (now)
            addMember(now_, key(*now), (*now)[1]);
    }

    Json before_ = Json::object();
    Json now_ = Json::object();
    std::size_t bytes_ = 0;
    std::size_t set_ = 0;
    std::size_t removed_ = 0;
    std::size_t leftOut_ = 0;
};

} // namespace

void DataWatch::look(const Json& state) {
    if (state.contains("store") && !state["store"].is_null()) {
        const Change change(store_, state["store"]);
        store_ = state["store"];
        record_.stored(store_);
        if (!change.isEmpty()) {
            events_.append("store", change.title("Store"), change.body());
            record_.add({{"do", "store"}});
        }
    }
    if (state.contains("storeProblem"))
        record_.kept(state.value("storeProblem", "").empty());
    if (state.contains("sdk")) {
        const Change change(permanentData_, state["sdk"]["permanentData"]);
        permanentData_ = state["sdk"]["permanentData"];
        if (!change.isEmpty()) {
            events_.append("sdk", change.title("Permanent data"), change.body());
            record_.add({{"do", "sdkData"}});
        }
    }
}

} // namespace vx::tools::studio
