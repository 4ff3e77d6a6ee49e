#include "tools/lint/Document.h"

#include <string>

#include "tools/lint/TreeBuilder.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx::tools::lint {

namespace {

// What the module refuses, though the tree could be built.
std::optional<Fault> refusal(std::string_view text) {
    std::string error;
    if (JSONValue::parse(text, &error))
        return {};
    return Fault{error, 0};
}

} // namespace

Document::Document(std::string_view text) {
    TreeBuilder builder(text, nodes_);
    fault_ = builder.build();
    const bool isScalar =
        !fault_ && !nodes_.front().is(Node::Type::Object) && !nodes_.front().is(Node::Type::Array);
    if (!fault_ && !isScalar)
        fault_ = refusal(text);
    if (fault_)
        nodes_.clear();
}

} // namespace vx::tools::lint
