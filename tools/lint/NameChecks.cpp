// Finds names that are almost those of the schema.

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

#include "tools/lint/Checks.h"
#include "tools/lint/Schema.h"

namespace vx::tools::lint {

namespace {

using Schemas = std::vector<const Schema*>;

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// How many letters must be put in, taken out, replaced or exchanged with their neighbour to make
// one text the other; the case of letters and underscores do not matter.
std::size_t distance(const std::string& left, const std::string& right) {
    std::vector<std::size_t> before(right.size() + 1);
    std::vector<std::size_t> last(right.size() + 1);
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last[right.size()];
}

// A name without what is easily confused.
std::string plain(std::string_view name) {
    std::string letters;
    for (char c : name)
        if (c != '_' && c != '-' && c != ' ')
            letters += lowerCase(c);
    return letters;
}

bool areAlike(const std::string& name, const std::string& known) {
    const std::size_t most = known.size() < 5 ? 1 : 2;
    if (name.size() > known.size() + most || known.size() > name.size() + most)
        return false; // however long the name is, this is soon known
    return distance(name, known) <= most;
}

// The names that the schema has for members of `object` and that are not there.
std::vector<std::string> unusedNames(const Node& object, const Schemas& parts) {
    std::vector<std::string> names;
    for (const Schema* part : parts)
        if (part->contains("properties"))
            for (const auto& [name, schema] : (*part)["properties"].items())
                if (!object.member(name))
                    names.push_back(name);
    return names;
}

Schemas allPartsOf(const Schemas& schemas) {
    Schemas parts;
    for (const Schema* schema : schemas)
        for (const Schema* part : partsOf(*schema))
            parts.push_back(part);
    return parts;
}

void checkSpelling(const Node& member, const std::vector<std::string>& unused, Findings& findings) {
    const std::string name = plain(member.key);
    for (const std::string& known : unused)
        if (areAlike(name, plain(known)) && !findings.speakOf(pathOf(member)))
            return findings.add(Severity::Warning, keyOf(member),
                                {"The name " + inQuotes(member.key) +
                                     " is unknown, but is almost " + inQuotes(known) + ".",
                                 "It does nothing.", "Write " + inQuotes(known) + "."});
}

void checkMembers(const Node& node, const Schemas& parts, Findings& findings);

// Nothing is known of a value without schemas.
void checkValue(const Node& node, const Schemas& schemas, Findings& findings) {
    const Schemas parts = allPartsOf(schemas);
    if (node.is(Node::Type::Object))
        checkMembers(node, parts, findings);
    if (node.is(Node::Type::Array))
        for (const Node* child : node.children) {
            Schemas items;
            for (const Schema* part : parts)
                if (part->contains("items"))
                    items.push_back(&(*part)["items"]);
            if (!items.empty())
                checkValue(*child, items, findings);
        }
}

void checkMembers(const Node& node, const Schemas& parts, Findings& findings) {
    const std::vector<std::string> unused = unusedNames(node, parts);
    for (const Node* child : node.children) {
        if (findings.isFull())
            return;
        Schemas schemas;
        for (const Schema* part : parts)
            for (const Schema* schema : schemasOfMember(*part, child->key))
                schemas.push_back(schema);
        if (schemas.empty())
            checkSpelling(*child, unused, findings);
        else
            checkValue(*child, schemas, findings);
    }
}

} // namespace

void checkNames(const Node& document, Findings& findings) {
    checkValue(document, {&privacyConfigurationSchema()}, findings);
}

} // namespace vx::tools::lint
