// Gathers findings, and finds the line and column of each at the end.

#include "tools/lint/Findings.h"

#include <algorithm>
#include <utility>

namespace vx::tools::lint {

namespace {

constexpr std::size_t kLongestQuotation = 60; // bytes

bool continuesCodePoint(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Walks through a text once, from one offset to a later one.
class Position {
public:
    explicit Position(std::string_view text) : text_(text) {}

    void moveTo(std::size_t offset) {
        for (; at_ < offset; ++at_)
            if (text_[at_] == '\n') {
                ++line;
                column = 1;
            } else if (!continuesCodePoint(text_[at_])) {
                ++column;
            }
    }

    std::size_t line = 1;
    std::size_t column = 1;

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

Place valueOf(const Node& node) {
    return {pathOf(node), node.offset};
}

Place keyOf(const Node& node) {
    return {pathOf(node), node.keyOffset};
}

Place missingIn(const Node& node, std::string_view name) {
    return {pathOf(node, name), node.offset};
}

std::string inQuotes(std::string_view text) {
    const bool isLong = text.size() > kLongestQuotation;
    if (isLong) {
        std::size_t end = kLongestQuotation;
        while (end > 0 && continuesCodePoint(text[end]))
            --end;
        text = text.substr(0, end);
    }
    std::string quotation = "\"";
    for (char c : text)
        quotation += static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? ' ' : c;
    return quotation + (isLong ? "...\"" : "\"");
}

void Findings::add(Severity severity, Place place, Advice advice) {
    if (isFull())
        return;
    paths_.insert(place.path);
    entries_.push_back({place.offset, {severity, std::move(place.path), 0, 0, std::move(advice)}});
}

std::vector<Finding> Findings::locatedIn(std::string_view text) && {
    std::ranges::stable_sort(entries_, {}, &Entry::offset);
    std::vector<Finding> findings;
    Position position(text);
    for (Entry& entry : entries_) {
        position.moveTo(entry.offset);
        Finding& finding = findings.emplace_back(std::move(entry.finding));
        finding.line = position.line;
        finding.column = position.column;
    }
    return findings;
}

} // namespace vx::tools::lint
