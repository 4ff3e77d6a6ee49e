#pragma once

#include <deque>
#include <optional>
#include <string_view>

#include "tools/lint/Node.h"

namespace vx::tools::lint {

/// A JSON text as a tree with positions. It accepts exactly what the module accepts; besides, a
/// scalar at the top.
class Document {
public:
    /// `text` must outlive the call only.
    explicit Document(std::string_view text);

    /// Absent when the text was accepted.
    const std::optional<Fault>& fault() const { return fault_; }
    /// Every value in the order of the text, the top first. Empty with a fault.
    const std::deque<Node>& nodes() const { return nodes_; }

private:
    std::deque<Node> nodes_;
    std::optional<Fault> fault_;
};

} // namespace vx::tools::lint
