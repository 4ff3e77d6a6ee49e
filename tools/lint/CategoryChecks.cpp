// IDs of categories and subcategories: wrong, doubled, or not read at all.

#include <string>
#include <unordered_map>

#include "tools/lint/Checks.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::tools::lint {

namespace {

void appendRows(const Node& parent, std::string_view name, std::vector<const Node*>& rows) {
    const Node* list = parent.member(name);
    if (list && list->is(Node::Type::Array))
        rows.insert(rows.end(), list->children.begin(), list->children.end());
}

std::vector<const Node*> childrenOf(const Node& parent, std::string_view name) {
    std::vector<const Node*> rows;
    appendRows(parent, name, rows);
    return rows;
}

std::string asString(std::int32_t id) {
    return "\"" + std::to_string(id) + "\"";
}

// What is wrong with an ID that is a number or a string, if anything is.
std::optional<Advice> adviceOn(const Node& id) {
    const std::int32_t number = integerIn(id);
    if (number == 0)
        return Advice{"The ID counts as 0, which stands for the switch of everything.",
                      "The row's choice is not saved.",
                      "Write a string with a number from 1 to 999."};
    if (number < 0)
        return Advice{"The ID is " + std::to_string(number) + ", not above 0.",
                      "The choice is saved under a number that nobody asks for.",
                      "Write a string with a number from 1 to 999."};
    if (number >= kVXVendorOffset)
        return Advice{"The ID is " + std::to_string(number) + ", not below 1000.",
                      "The choice is taken for one about a vendor or a purpose of the IAB.",
                      "Write a string with a number from 1 to 999."};
    if (id.is(Node::Type::Number))
        return Advice{"The ID is a JSON number.",
                      "A category and its subcategories do not switch together.",
                      "Write it as a string: " + asString(number) + "."};
    if (id.text != std::to_string(number))
        return Advice{"The ID " + inQuotes(id.text) + " is not written as the plain number " +
                          std::to_string(number) + ".",
                      "A category and its subcategories do not switch together.",
                      "Write " + asString(number) + "."};
    return {};
}

class IDs {
public:
    explicit IDs(Findings& findings) : findings_(findings) {}

    void check(const Node& id) {
        if (!id.is(Node::Type::String) && !id.is(Node::Type::Number))
            return; // for the schema
        if (auto advice = adviceOn(id))
            findings_.add(Severity::Error, valueOf(id), std::move(*advice));
        const auto [first, isNew] = seen_.try_emplace(integerIn(id), &id);
        if (!isNew && first->first != 0)
            findings_.add(Severity::Error, valueOf(id),
                          {"The ID " + std::to_string(first->first) + " is that of " +
                               pathOf(*first->second->parent) + " too.",
                           "One choice is saved for both rows.", "Give each row its own ID."});
    }

private:
    Findings& findings_;
    std::unordered_map<std::int32_t, const Node*> seen_;
};

void checkDepth(const Node& document, Findings& findings) {
    for (const Node* category : childrenOf(document, "categories"))
        for (const Node* subcategory : childrenOf(*category, "subcategories"))
            if (const Node* deeper = subcategory->member("subcategories"))
                findings.add(Severity::Error, keyOf(*deeper),
                             {"Subcategories of a subcategory are not read.",
                              "Their rows are not shown and not saved.",
                              "Make them subcategories of the category above."});
}

} // namespace

std::vector<const Node*> rowsOf(const Node& document) {
    std::vector<const Node*> rows;
    for (const Node* category : childrenOf(document, "categories")) {
        rows.push_back(category);
        appendRows(*category, "subcategories", rows);
    }
    return rows;
}

std::int32_t integerIn(const Node& node) {
    if (node.is(Node::Type::String))
        return integerValue(node.text);
    if (node.is(Node::Type::Number))
        return JSONValue::parse("[" + node.text + "]").elements().front().integerValue();
    return 0;
}

void checkCategories(const Node& document, Findings& findings) {
    IDs ids(findings);
    for (const Node* row : rowsOf(document))
        if (const Node* id = row->member("ID"))
            ids.check(*id);
    checkDepth(document, findings);
}

} // namespace vx::tools::lint
