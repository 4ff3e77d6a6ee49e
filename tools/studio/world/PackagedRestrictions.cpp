#include "tools/studio/world/PackagedRestrictions.h"

#include <optional>
#include <system_error>
#include <utility>

#include "tools/studio/shared/Json.h"
#include "tools/system/Files.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kFile = "VXIABPublisherRestrictions.json"; // as the engine names it

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::optional<Problem> findProblem(const std::string& text) {
    const Result<Json> document = parsed(text);
    if (!document)
        return document.problem();
    if (!document->is_object())
        return Problem{"the document must be an object"};
    return {};
}

} // namespace

PackagedRestrictions::PackagedRestrictions(std::filesystem::path directory)
    : directory_(std::move(directory)) {
    if (exists(file()))
        text_ = system::readFile(file());
}

std::filesystem::path PackagedRestrictions::directory() const {
    return text_.empty() ? std::filesystem::path() : directory_;
}

Result<std::string> PackagedRestrictions::ship(const std::string& text) {
    const bool none = isBlank(text);
    if (!none)
        if (const std::optional<Problem> problem = findProblem(text))
            return *problem;
    try {
        if (none) {
            remove(file());
        } else {
            create_directories(directory_);
            system::writeFile(file(), text);
        }
    } catch (const std::system_error& error) {
        return Problem{std::string("they cannot be shipped: ") + error.what()};
    }
    return text_ = none ? "" : text;
}

std::filesystem::path PackagedRestrictions::file() const {
    return directory_ / kFile;
}

} // namespace vx::tools::studio
