#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "tools/lint/Finding.h"
#include "tools/lint/Node.h"

namespace vx::tools::lint {

/// Where a finding belongs: a path, and a byte of the text.
struct Place {
    std::string path;
    std::size_t offset;
};

Place valueOf(const Node& node);
/// The name of a member; of any other value the value itself.
Place keyOf(const Node& node);
/// A member that `node` lacks; it shows where `node` begins.
Place missingIn(const Node& node, std::string_view name);

/// `text` in quotation marks, for a sentence in one line: without control characters, and cut when
/// it is long.
std::string inQuotes(std::string_view text);

/// Gathers findings while the checks run over a document.
class Findings {
public:
    /// Ignored when it is full.
    void add(Severity severity, Place place, Advice advice);
    /// Whether no more are taken.
    bool isFull() const { return entries_.size() >= kMostFindings; }
    /// Whether there is a finding for exactly this path.
    bool speakOf(const std::string& path) const { return paths_.contains(path); }
    /// The findings in the order of the text, with lines and columns.
    std::vector<Finding> locatedIn(std::string_view text) &&;

private:
    struct Entry {
        std::size_t offset;
        Finding finding;
    };
    std::vector<Entry> entries_;
    std::unordered_set<std::string> paths_;
};

} // namespace vx::tools::lint
