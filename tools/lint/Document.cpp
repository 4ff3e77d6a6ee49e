#include "tools/lint/Document.h"

#include "tools/lint/TreeBuilder.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx::tools::lint {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string escaped(std::string_view name) {
    std::string token;
    for (char c : name)
        if (c == '~')
            token += "~0";
        else if (c == '/')
            token += "~1";
        else
            token += c;
    return token;
}

// What the module refuses, though the tree could be built.
std::optional<Fault> refusal(std::string_view text) {
    std::string error;
    if (JSONValue::parse(text, &error))
        return {};
    if (text.starts_with(kByteOrderMark))
        error = "it begins with a byte-order mark";
    return Fault{error, 0};
}

} // namespace

const Node* Node::member(std::string_view name) const {
    if (type == Type::Object)
        for (const Node* child : children)
            if (child->key == name)
                return child;
    return nullptr;
}

std::optional<std::string_view> Node::string(std::string_view name) const {
    const Node* node = member(name);
    if (!node || !node->is(Type::String))
        return {};
    return node->text;
}

std::string pathOf(const Node& node) {
    std::vector<const Node*> steps;
    for (const Node* step = &node; step->parent; step = step->parent)
        steps.push_back(step);
    std::string path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        path +=
            '/' + ((*step)->isMember() ? escaped((*step)->key) : std::to_string((*step)->index));
    return path;
}

std::string pathOf(const Node& node, std::string_view name) {
    return pathOf(node) + '/' + escaped(name);
}

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
