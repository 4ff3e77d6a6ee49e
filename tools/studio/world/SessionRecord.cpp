#include "tools/studio/world/SessionRecord.h"

#include <functional>
#include <utility>

#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kSDKIdentifier = "VXSDKIdentifier";

// The module's own: the IAB library of a played session has a store of its own.
Json moduleEntries(const Json& entries) {
    Json store = Json::object();
    for (const Json& entry : entries)
        if (const auto& key = entry[0].get_ref<const std::string&>();
            key != kSDKIdentifier && !key.starts_with("IABTCF_"))
            addMember(store, key, entry[1]);
    return store;
}

std::string sdkIdentifierIn(const Json& entries) {
    for (const Json& entry : entries)
        if (entry[0] == kSDKIdentifier)
            return entry[1].get<std::string>();
    return "";
}

std::size_t digestOf(const Json& value) {
    return std::hash<Json>()(value);
}

Json worldOf(const Json& start) {
    Json world = {{"do", "world"},
                  {"now", start["now"]},
                  {"iab", start["iab"]},
                  {"width", Presentation().width},
                  {"store", moduleEntries(start["store"])},
                  {"files", start["files"]},
                  {"coreVariables", {{"kVXPredefinedVariable_UserAgent", start["userAgent"]}}}};
    if (const std::string country = start.value("inForce", ""); !country.empty())
        world["inForce"] = country;
    if (const std::string created = start.value("createdDate", ""); !created.empty())
        world["createdDate"] = created;
    return world;
}

} // namespace

void SessionRecord::launched(Json start) {
    const std::lock_guard lock(mutex_);
    std::map<std::string, std::size_t> files;
    for (const auto& [name, text] : start["files"].items())
        files[name] = digestOf(text);
    const bool isContinued = !chapters_.empty() && !start.value("isFresh", false) && isKept_ &&
                             iab_ == start["iab"] && inForce_ == start.value("inForce", "") &&
                             store_ == digestOf(start["store"]) && files_ == files;
    chapters_.push_back({.number = ++launches_,
                         .after = events_.lastEntry(),
                         .isContinued = isContinued,
                         .now = start["now"].get<std::uint64_t>(),
                         .world = dumped(worldOf(start)),
                         .sdkIdentifier = sdkIdentifierIn(start["store"]),
                         .steps = {}});
    iab_ = start["iab"] == true;
    inForce_ = start.value("inForce", "");
    store_ = digestOf(start["store"]);
    files_ = std::move(files);
    add(chapters_.back().world.size());
    isKept_ = true;
}

void SessionRecord::add(const Json& step) {
    const std::lock_guard lock(mutex_);
    if (chapters_.empty())
        return;
    if (step.is_object() && step.value("do", "") == "install")
        files_[step.value("name", "")] = digestOf(step["text"]);
    std::string line = step.is_string() ? "# " + step.get<std::string>() : dumped(step);
    const std::size_t size = sizeof(SessionChapter::Step) + line.size();
    chapters_.back().steps.push_back({events_.lastEntry(), std::move(line)});
    add(size);
}

// Without a world that it begins with a session cannot be played: launches go whole.
void SessionRecord::add(std::size_t bytes) {
    chapters_.back().bytes += bytes;
    bytes_ += bytes;
    while (bytes_ > kMostBytes) {
        bytes_ -= chapters_.front().bytes;
        chapters_.pop_front();
    }
}

void SessionRecord::stored(const Json& entries) {
    const std::lock_guard lock(mutex_);
    store_ = digestOf(entries);
    if (!chapters_.empty())
        chapters_.back().sdkIdentifier = sdkIdentifierIn(entries);
}

void SessionRecord::kept(bool isKept) {
    const std::lock_guard lock(mutex_);
    isKept_ = isKept;
}

void SessionRecord::begin() {
    const std::lock_guard lock(mutex_);
    first_ = launches_ + 1;
}

void SessionRecord::end() {
    const std::lock_guard lock(mutex_);
    first_ = 1;
}

Reply SessionRecord::script() const {
    const std::lock_guard lock(mutex_);
    if (chapters_.empty() || chapters_.back().number < first_)
        return Problem{"the session since the last launch is longer than what is kept of one, "
                       "8 MiB: relaunch the application to begin anew"};
    return sessionScript(chapters_, first_, events_.entriesAfter(0));
}

} // namespace vx::tools::studio
