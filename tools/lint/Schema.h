#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace vx::tools::lint {

/// A part of the schema: an object of keywords, or true or false.
using Schema = nlohmann::ordered_json;

/// The whole JSON Schema of the privacy configuration, docs/privacy-configuration.schema.json.
const Schema& privacyConfigurationSchema();

/// `schema` and all that speak of the same value with it: what "$ref" and "allOf" lead to.
std::vector<const Schema*> partsOf(const Schema& schema);

/// The schemas under which the schema's "properties" and "patternProperties" put a member `name`.
std::vector<const Schema*> schemasOfMember(const Schema& schema, const std::string& name);

/// Whether the regular expression `pattern` of the schema matches somewhere in `text`; the time
/// grows with the text's length.
bool matches(const std::string& pattern, std::string_view text);

} // namespace vx::tools::lint
