#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tools/lint/Document.h"
#include "tools/lint/Findings.h"

namespace vx::tools::lint {

// Each adds what it finds in a document; most need only its top.

/// What the schema says, but for places of which a check that knows better has already spoken.
void checkSchema(const Node& document, Findings& findings);
/// The version as the module reads it, and whether there is anything to decide about.
void checkInformation(const Node& document, Findings& findings);
/// IDs, and subcategories that are not read.
void checkCategories(const Node& document, Findings& findings);
/// Addresses that do not open, and links of which a half is missing.
void checkLinks(const Node& document, Findings& findings);
/// Titles and texts that are there and say nothing.
void checkTexts(const Node& document, Findings& findings);
/// Colours that are read as others than they look.
void checkColours(const Node& document, Findings& findings);
/// Colours that cannot be told apart, and the nearest that can.
void checkContrast(const Node& document, Findings& findings);
/// Texts in languages that the engine does not know, and texts that are missing altogether.
void checkLanguages(const Node& document, Findings& findings);
/// Unknown names that are almost those of the schema.
void checkNames(const Node& document, Findings& findings);
/// Names that occur twice in an object.
void checkDuplicates(const Document& document, Findings& findings);
/// The word that makes the engine forget the users' choices, wherever it stands in `text`.
void checkResetWord(const Document& document, std::string_view text, Findings& findings);

/// Purposes and features that have no name in a vendor list, whether the list has them or a vendor
/// names them.
void checkVendorList(const Node& list, Findings& findings);
/// Those of a vendor list that have no name in a translation of it.
void checkTranslation(const Node& translation, const Node& list, Findings& findings);

/// The categories and subcategories that the privacy center shows, in its order.
std::vector<const Node*> rowsOf(const Node& document);
/// The integer that the module takes a number or a string for; 0 for all else.
std::int32_t integerIn(const Node& node);

} // namespace vx::tools::lint
