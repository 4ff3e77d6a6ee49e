#include <unordered_set>

#include "tools/lint/Checks.h"

namespace vx::tools::lint {

void checkDuplicates(const Document& document, Findings& findings) {
    std::unordered_set<std::string_view> names;
    for (const Node& node : document.nodes()) {
        if (!node.is(Node::Type::Object))
            continue;
        if (findings.isFull())
            return;
        names.clear();
        for (const Node* child : node.children)
            if (!names.insert(child->key).second)
                findings.add(Severity::Error, keyOf(*child),
                             {"The name " + inQuotes(child->key) + " occurs a second time here.",
                              "Only the first one counts.", "Take out one of the two."});
    }
}

} // namespace vx::tools::lint
