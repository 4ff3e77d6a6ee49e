#include "tools/lint/Node.h"

namespace vx::tools::lint {

namespace {

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

} // namespace vx::tools::lint
