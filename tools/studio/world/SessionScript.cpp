#include "tools/studio/world/SessionScript.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kHeading =
    "# A session of the VXPrivacy studio. Again: vxprivacy play FILE\n";

// Play prints these itself.
bool isPrinted(const EventStream::Entry& entry) {
    if (entry.kind == "notification" || entry.kind == "callback")
        return true;
    if (entry.kind != "log")
        return false;
    const Result<Json> log = parsed(entry.text);
    return log && log->value("source", "") == "engine";
}

std::string comment(const EventStream::Entry& entry) {
    std::string line = "# " + entry.kind + ": " + entry.title;
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line + '\n';
}

class Writer {
public:
    explicit Writer(const EventStream::Entries& timeline)
        : next_(timeline.begin()), end_(timeline.end()) {}

    void skipTo(std::uint64_t entry) {
        while (next_ != end_ && (*next_)->id <= entry)
            ++next_;
    }
    void commentTo(std::uint64_t entry) {
        for (; next_ != end_ && (*next_)->id <= entry; ++next_)
            if (!isPrinted(**next_))
                text += comment(**next_);
    }
    void line(const std::string& line) { text += line + '\n'; }

    std::string text = kHeading;

private:
    EventStream::Entries::const_iterator next_;
    EventStream::Entries::const_iterator end_;
};

// The installation makes its identifier at the first beacon, and has it from then on.
std::string sdkIdentifierFrom(std::deque<SessionChapter>::const_iterator chapter,
                              std::deque<SessionChapter>::const_iterator end) {
    const auto next = std::find_if(std::next(chapter), end,
                                   [](const SessionChapter& each) { return !each.isContinued; });
    const auto known = std::find_if(
        chapter, next, [](const SessionChapter& each) { return !each.sdkIdentifier.empty(); });
    return known == next ? "" : known->sdkIdentifier;
}

std::string worldWith(const std::string& world, const std::string& sdkIdentifier) {
    if (sdkIdentifier.empty())
        return world;
    Json step = Json::parse(world);
    step["coreVariables"]["kVXPredefinedVariable_SDKID"] = sdkIdentifier;
    return step.dump();
}

} // namespace

std::string sessionScript(const std::deque<SessionChapter>& chapters, std::uint64_t first,
                          const EventStream::Entries& timeline) {
    Writer writer(timeline);
    const auto begin = std::find_if(chapters.begin(), chapters.end(), [first](const auto& chapter) {
        return chapter.number >= first;
    });
    if (begin->number > first)
        writer.line("# Begins at launch " + std::to_string(begin->number) +
                    "; what came before it is no longer kept.");
    if (begin->number > 1)
        writer.skipTo(begin->after);
    for (auto chapter = begin; chapter != chapters.end(); ++chapter) {
        writer.commentTo(chapter->after);
        if (chapter->isContinued && chapter != begin) {
            writer.line(R"({"do":"clock","now":)" + std::to_string(chapter->now) + '}');
            writer.line(R"({"do":"relaunch"})");
        } else {
            writer.line(worldWith(chapter->world, sdkIdentifierFrom(chapter, chapters.end())));
        }
        for (const SessionChapter::Step& step : chapter->steps) {
            writer.commentTo(step.after);
            writer.line(step.line);
        }
    }
    if (!timeline.empty())
        writer.commentTo(timeline.back()->id);
    return std::move(writer.text);
}

} // namespace vx::tools::studio
