#include "tools/studio/world/ServedVendorList.h"

#include <functional>
#include <limits>
#include <optional>
#include <regex>
#include <string>

#include "tools/samples/Samples.h"
#include "tools/studio/shared/Json.h"
#include "tools/system/Files.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx::tools::studio {

namespace {

const std::string kListName = "vendor-list.json";
const std::regex kTranslation("purposes-([a-z]{2})\\.json");
constexpr std::size_t kLongestList = 8u << 20; // what an application downloads

std::optional<Problem> findProblem(const JSONValue& vendors) {
    for (const auto& [key, vendor] : vendors.members()) {
        if (!vendor["id"].integer())
            return Problem{"/vendors/" + std::string(key) +
                           ": a vendor is an object with the number \"id\""};
        if (!vendor["name"].string())
            return Problem{"/vendors/" + std::string(key) + ": the vendor has no text \"name\""};
    }
    return {};
}

std::optional<Problem> findProblemInList(const JSONValue& list) {
    if (!list.isObject())
        return Problem{"a vendor list is an object"};
    const std::int64_t version = list["vendorListVersion"].integer().value_or(0);
    if (version < 1 || version > std::numeric_limits<std::int32_t>::max())
        return Problem{"/vendorListVersion: a vendor list has this number, 1 or more"};
    for (const char* section : {"purposes", "specialFeatures", "vendors"})
        if (!list[section].isObject())
            return Problem{std::string("/") + section + ": a vendor list has this object"};
    return findProblem(list["vendors"]);
}

Result<ServedVendorList> listIn(const std::string& text) {
    if (text.size() > kLongestList)
        return Problem{"an application takes at most 8 MiB"};
    const JSONValue list = JSONValue::parse(text);
    if (!list)
        if (const Result<Json> document = parsed(text); !document) // which says where
            return document.problem();
    if (const std::optional<Problem> problem = findProblemInList(list))
        return *problem;
    return ServedVendorList{.version = list["vendorListVersion"].integerValue(),
                            .vendors = list["vendors"].members().size(),
                            .name = {},
                            .documents = {{kListName, text}}};
}

} // namespace

std::vector<std::string> languagesOf(const ServedVendorList& list) {
    std::vector<std::string> codes;
    for (const auto& [name, document] : list.documents)
        if (std::smatch match; regex_match(name, match, kTranslation))
            codes.push_back(match[1]);
    return codes;
}

namespace {

ServedVendorList sampleIn(const std::string& folder) {
    ServedVendorList list = *listIn(std::string(samples()[folder + kListName]));
    for (const web::StaticFile& file : samples())
        if (file.name.starts_with(folder))
            list.documents[std::string(file.name.substr(folder.size()))] = file.content;
    return list;
}

} // namespace

ServedVendorLists sampleVendorLists() {
    return {.format2 = sampleIn("gvl/"), .format3 = sampleIn("gvl3/")};
}

Result<ServedVendorList> readVendorList(const std::filesystem::path& file) {
    const std::string text = system::readFile(file);
    Result<ServedVendorList> list = listIn(text);
    if (!list)
        return Problem{file.string() + ": " + list.problem().text};
    list->name = file.stem().string() + '-' + std::to_string(std::hash<std::string>{}(text));
    for (const auto& entry : std::filesystem::directory_iterator(absolute(file).parent_path()))
        if (const std::string name = entry.path().filename(); regex_match(name, kTranslation))
            list->documents[name] = system::readFile(entry.path());
    return list;
}

} // namespace vx::tools::studio
