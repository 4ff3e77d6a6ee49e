#include "tools/studio/world/Publication.h"

#include <limits>
#include <memory>
#include <utility>

#include "tools/studio/shared/Json.h"
#include "tools/system/Files.h"

namespace vx::tools::studio {

namespace {

constexpr std::int64_t kHighestVersion = std::numeric_limits<std::int32_t>::max();

std::int64_t versionOf(const Json& document) {
    const Json version = document["information"].value("version", Json());
    return version.is_number_integer() && version <= kHighestVersion ? version.get<std::int64_t>()
                                                                     : 0;
}

} // namespace

Result<Edition> editionOf(const std::string& text, std::int64_t above) {
    Result<Json> parsedText = parsed(text);
    if (!parsedText)
        return parsedText.problem();
    Json& document = *parsedText;
    if (!document.is_object() || !document.contains("information") ||
        !document["information"].is_object())
        return Problem{"the document needs an object \"information\", which holds the version"};
    if (const std::int64_t version = versionOf(document); version > above)
        return Edition{std::make_shared<const std::string>(text), version};
    if (above >= kHighestVersion)
        return Problem{"no version number is left above the published one"};
    document["information"]["version"] = above + 1;
    return Edition{std::make_shared<const std::string>(document.dump(2) + "\n"), above + 1};
}

Publication::Publication(Edition inForce, std::filesystem::path file)
    : inForce_(std::move(inForce)), file_(std::move(file)) {}

Result<Edition> Publication::publish(const std::string& text) {
    Result<Edition> edition = editionOf(text, inForce_.version);
    if (!edition)
        return edition;
    if (!file_.empty())
        system::writeFile(file_, *edition->text);
    inForce_ = *edition;
    return edition;
}

} // namespace vx::tools::studio
