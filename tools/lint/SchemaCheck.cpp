// Compares a document with the JSON Schema of its format, and says what a user sees of each
// difference.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <unordered_set>
#include <vector>

#include "tools/lint/Checks.h"
#include "tools/lint/Schema.h"

namespace vx::tools::lint {

namespace {

constexpr const char* kEffect = "effect"; // our own keyword: what a user sees

std::string typeOf(const Node& node) {
    constexpr const char* kNames[] = {"null", "boolean", "number", "string", "array", "object"};
    return kNames[static_cast<std::size_t>(node.type)];
}

std::string withArticle(const std::string& type) {
    if (type == "null")
        return type;
    return (std::string_view("aio").find(type.front()) == std::string_view::npos ? "a " : "an ") +
           type;
}

bool isType(const Node& node, const std::string& wanted) {
    const double number = std::strtod(node.text.c_str(), nullptr);
    return typeOf(node) == wanted || (wanted == "integer" && node.is(Node::Type::Number) &&
                                      number == static_cast<double>(integerIn(node)));
}

std::string listed(const Schema& values) {
    std::string list;
    for (const Schema& value : values)
        list += (list.empty() ? "" : ", ") + value.dump();
    return list;
}

std::vector<std::string> typesIn(const Schema& schema) {
    const Schema& types = schema["type"];
    return types.is_array() ? types.get<std::vector<std::string>>()
                            : std::vector{types.get<std::string>()};
}

std::string effectOf(const Schema& schema, const std::string& otherwise) {
    for (const Schema* part : partsOf(schema))
        if (part->contains(kEffect))
            return (*part)[kEffect];
    return otherwise;
}

std::string nameOf(const Node& node) {
    if (!node.parent)
        return "The document";
    return node.isMember() ? inQuotes(node.key) : "This element";
}

// Carries out the keywords that the schema of the privacy configuration uses. Recursion goes as
// deep as the document, which has at most 1024 levels.
class SchemaCheck {
public:
    explicit SchemaCheck(Findings& findings) : findings_(findings) {}

    /// `effect`: what a user sees when `node` is wrong, unless the schema knows better.
    void check(const Node& node, const Schema& schema, const std::string& effect) {
        if (findings_.isFull())
            return;
        if (schema.is_boolean()) // always false
            return report(keyOf(node), nameOf(node) + " has no place here.", effect,
                          "Take it out.");
        const std::string own = effectOf(schema, effect);
        for (const Schema* part : partsOf(schema))
            if (checkType(node, *part, own))
                checkContent(node, *part, own);
    }

private:
    void report(Place place, std::string problem, std::string effect, std::string remedy) {
        if (!findings_.speakOf(place.path))
            findings_.add(Severity::Error, std::move(place),
                          {std::move(problem), std::move(effect), std::move(remedy)});
    }

    bool checkType(const Node& node, const Schema& schema, const std::string& effect) {
        if (!schema.contains("type"))
            return true;
        const std::vector<std::string> types = typesIn(schema);
        const bool fits =
            std::ranges::any_of(types, [&](const auto& type) { return isType(node, type); });
        if (!fits)
            report(valueOf(node),
                   nameOf(node) + " is " + withArticle(typeOf(node)) + ", not " +
                       withArticle(types.front()) + ".",
                   effect, "Write " + withArticle(types.front()) + ".");
        return fits;
    }

    void checkContent(const Node& node, const Schema& schema, const std::string& effect) {
        if (schema.contains("enum"))
            checkListed(node, schema["enum"], effect);
        if (node.is(Node::Type::Object))
            checkObject(node, schema, effect);
        else if (node.is(Node::Type::Array))
            checkArray(node, schema, effect);
        else
            checkScalar(node, schema, effect);
    }

    void checkObject(const Node& node, const Schema& schema, const std::string& effect) {
        if (schema.contains("required"))
            for (const std::string name : schema["required"])
                if (!node.member(name))
                    report(missingIn(node, name), inQuotes(name) + " is missing.",
                           effectOf(schema["properties"][name], effect),
                           "Add " + inQuotes(name) + ".");
        for (const Node* child : node.children) {
            const auto schemas = schemasOfMember(schema, child->key);
            for (const Schema* each : schemas)
                check(*child, *each, effect);
            if (schemas.empty() && schema.contains("additionalProperties"))
                check(*child, schema["additionalProperties"], effect);
        }
    }

    void checkArray(const Node& node, const Schema& schema, const std::string& effect) {
        if (schema.contains("items"))
            for (const Node* child : node.children)
                check(*child, schema["items"], effect);
        if (schema.contains("contains"))
            checkContains(node, schema["contains"], effect);
        if (schema.contains("uniqueItems"))
            checkUnique(node, effect);
    }

    // The schema asks only for strings in this way.
    void checkContains(const Node& node, const Schema& schema, const std::string& effect) {
        const std::string wanted = schema["const"];
        const bool isThere = std::ranges::any_of(node.children, [&](const Node* child) {
            return child->is(Node::Type::String) && child->text == wanted;
        });
        if (!isThere)
            report(valueOf(node), nameOf(node) + " lacks " + inQuotes(wanted) + ".",
                   effectOf(schema, effect), "Add " + inQuotes(wanted) + ".");
    }

    void checkUnique(const Node& node, const std::string& effect) {
        std::unordered_set<std::string_view> seen;
        for (const Node* child : node.children)
            if (child->is(Node::Type::String) && !seen.insert(child->text).second)
                report(valueOf(*child), inQuotes(child->text) + " is there a second time.", effect,
                       "Take it out.");
    }

    // The schema lists only strings.
    void checkListed(const Node& node, const Schema& values, const std::string& effect) {
        const bool isListed = std::ranges::any_of(values, [&](const Schema& value) {
            return node.is(Node::Type::String) && value.get<std::string>() == node.text;
        });
        if (!isListed)
            report(valueOf(node), nameOf(node) + " is none of the values that count.", effect,
                   "Write one of " + listed(values) + ".");
    }

    void checkScalar(const Node& node, const Schema& schema, const std::string& effect) {
        const bool isString = node.is(Node::Type::String);
        if (schema.contains("pattern") && isString && !matches(schema["pattern"], node.text))
            report(valueOf(node), inQuotes(node.text) + " is not in the form that is asked for.",
                   effect, "What is asked for: " + schema.value("description", ""));
        if (schema.contains("minimum") && node.is(Node::Type::Number))
            checkRange(node, schema, effect);
    }

    void checkRange(const Node& node, const Schema& schema, const std::string& effect) {
        const double number = std::strtod(node.text.c_str(), nullptr);
        if (number < schema["minimum"] || number > schema["maximum"])
            report(valueOf(node), node.text + " is out of range.", effect,
                   "Write a number from " + schema["minimum"].dump() + " to " +
                       schema["maximum"].dump() + ".");
    }

    Findings& findings_;
};

} // namespace

void checkSchema(const Node& document, Findings& findings) {
    SchemaCheck(findings).check(document, privacyConfigurationSchema(), "");
}

} // namespace vx::tools::lint
