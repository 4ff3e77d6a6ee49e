// What a vendor list or a translation has no name for, so that screens would read "- (null)".

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tools/lint/Checks.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::tools::lint {

namespace {

// What vendors may name, and under which members of theirs.
struct Section {
    const char* name;
    const char* one;
    std::vector<const char*> lists;
    const char* effect = "Users read \"- (null)\" in its place."; // of a missing name
};

// Data categories are those of format 3.
const std::array<Section, 5>& sections() {
    static const std::array<Section, 5> all = {
        {{"purposes", "purpose", {"purposes", "legIntPurposes"}},
         {"specialPurposes", "special purpose", {"specialPurposes"}},
         {"features", "feature", {"features"}},
         {"specialFeatures", "special feature", {"specialFeatures"}},
         {"dataCategories", "data category", {"dataDeclaration"}, "Users are not told of it."}}};
    return all;
}

std::vector<const Node*> entriesOf(const Node& parent, const char* name) {
    const Node* child = parent.member(name);
    return child ? child->children : std::vector<const Node*>();
}

// The IDs in a section that have a text.
std::unordered_set<std::string> namedIn(const Node& texts, const Section& section) {
    std::unordered_set<std::string> ids;
    for (const Node* item : entriesOf(texts, section.name))
        if (item->string("name"))
            ids.insert(item->key);
    return ids;
}

// Where an ID is named first, and how often.
struct Use {
    const Node* first = nullptr;
    std::size_t times = 0;
};

std::map<std::string, Use> usesOf(const Node& list, const Section& section) {
    std::map<std::string, Use> uses;
    const auto add = [&](const Node& at, std::int32_t id) {
        Use& use = uses[std::to_string(id)];
        use.first = use.first ? use.first : &at;
        ++use.times;
    };
    for (const Node* vendor : entriesOf(list, "vendors")) {
        for (const char* name : section.lists)
            for (const Node* id : entriesOf(*vendor, name))
                if (id->is(Node::Type::Number)) // the module leaves all else out
                    add(*id, integerIn(*id));
        if (const Node* retention = vendor->member("dataRetention")) // by ID, in format 3
            for (const Node* days : entriesOf(*retention, section.name))
                if (days->is(Node::Type::Number))
                    add(*days, integerValue(days->key));
    }
    return uses;
}

std::string timesOf(const Use& use) {
    return use.times == 1 ? "here" : std::to_string(use.times) + " times, first here";
}

void addMissing(Place place, const Section& section, const std::string& problem,
                const std::string& remedy, Findings& findings) {
    findings.add(Severity::Error, std::move(place), {problem, section.effect, remedy});
}

void checkSection(const Node& list, const Section& section, Findings& findings) {
    const std::string what = section.one;
    const auto texts = namedIn(list, section);
    std::unordered_set<std::string> reported;
    for (const Node* item : entriesOf(list, section.name))
        if (!texts.contains(item->key) && reported.insert(item->key).second)
            addMissing(missingIn(*item, "name"), section, "The " + what + " has no name.",
                       "Add \"name\".", findings);
    const std::string remedy = "Take the number away, or add it to " + inQuotes(section.name) + ".";
    for (const auto& [id, use] : usesOf(list, section)) {
        if (texts.contains(id) || reported.contains(id))
            continue;
        std::string problem = "The list has no ";
        problem.append(what).append(" ").append(id);
        problem.append(", which is named ").append(timesOf(use)).append(".");
        addMissing(valueOf(*use.first), section, problem, remedy, findings);
    }
}

void checkTranslatedSection(const Node& translation, const Node& list, const Section& section,
                            Findings& findings) {
    const auto texts = namedIn(translation, section);
    std::unordered_set<std::string> reported;
    const auto check = [&](const std::string& id) {
        if (texts.contains(id) || !reported.insert(id).second)
            return;
        const Node* own = translation.member(section.name);
        addMissing(missingIn(own ? *own : translation, own ? id : section.name), section,
                   "The translation has no name for " + std::string(section.one) + " " + id + ".",
                   "Add it to " + inQuotes(section.name) + ".", findings);
    };
    for (const Node* item : entriesOf(list, section.name))
        check(item->key);
    for (const auto& [id, use] : usesOf(list, section))
        check(id);
}

} // namespace

void checkVendorList(const Node& list, Findings& findings) {
    for (const Section& section : sections())
        checkSection(list, section, findings);
}

// There is no fallback from a translation to the list.
void checkTranslation(const Node& translation, const Node& list, Findings& findings) {
    for (const Section& section : sections())
        checkTranslatedSection(translation, list, section, findings);
}

} // namespace vx::tools::lint
