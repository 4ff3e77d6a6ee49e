#include "tools/lint/Schema.h"

#include <map>
#include <memory>
#include <string>

#include <re2/re2.h>

#include "tools/lint/SchemaFiles.h"

namespace vx::tools::lint {

namespace {

void appendParts(const Schema& schema, std::vector<const Schema*>& parts) {
    parts.push_back(&schema);
    if (schema.contains("$ref")) { // "#/definitions/..."
        const Schema::json_pointer target(schema["$ref"].get<std::string>().substr(1));
        appendParts(privacyConfigurationSchema()[target], parts);
    }
    if (schema.contains("allOf"))
        for (const Schema& part : schema["allOf"])
            appendParts(part, parts);
}

} // namespace

const Schema& privacyConfigurationSchema() {
    static const Schema schema = Schema::parse(schemaFiles()["privacy-configuration.schema.json"]);
    return schema;
}

std::vector<const Schema*> partsOf(const Schema& schema) {
    std::vector<const Schema*> parts;
    appendParts(schema, parts);
    return parts;
}

bool matches(const std::string& pattern, std::string_view text) {
    // Compiled once for each thread: the schema has a handful.
    thread_local std::map<std::string, std::unique_ptr<re2::RE2>> compiled;
    auto& expression = compiled[pattern];
    if (!expression)
        expression = std::make_unique<re2::RE2>(pattern);
    return re2::RE2::PartialMatch(re2::StringPiece(text.data(), text.size()), *expression);
}

std::vector<const Schema*> schemasOfMember(const Schema& schema, const std::string& name) {
    std::vector<const Schema*> found;
    const auto properties = schema.find("properties");
    if (properties != schema.end() && properties->contains(name))
        found.push_back(&(*properties)[name]);
    if (schema.contains("patternProperties"))
        for (const auto& [pattern, member] : schema["patternProperties"].items())
            if (matches(pattern, name))
                found.push_back(&member);
    return found;
}

} // namespace vx::tools::lint
