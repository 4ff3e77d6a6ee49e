#include "tools/studio/Publication.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <limits>
#include <system_error>
#include <utility>

#include "tools/studio/Json.h"

namespace vx::tools::studio {

namespace {

constexpr std::int64_t kHighestVersion = std::numeric_limits<std::int32_t>::max();

Publication::Draft refused(std::string problem) {
    return {.text = {}, .version = 0, .problem = std::move(problem)};
}

std::int64_t versionOf(const Json& document) {
    const Json version = document["information"].value("version", Json());
    return version.is_number_integer() && version <= kHighestVersion ? version.get<std::int64_t>()
                                                                     : 0;
}

Publication::Draft read(const std::string& text, std::int64_t above) {
    std::string problem;
    Json document = parsed(text, &problem);
    if (document.is_discarded())
        return refused(problem);
    if (!document.is_object() || !document.contains("information") ||
        !document["information"].is_object())
        return refused("the document needs an object \"information\", which holds the version");
    if (const std::int64_t version = versionOf(document); version > above)
        return {.text = text, .version = version, .problem = {}};
    if (above >= kHighestVersion)
        return refused("no version number is left above the published one");
    document["information"]["version"] = above + 1;
    return {.text = document.dump(2) + "\n", .version = above + 1, .problem = {}};
}

} // namespace

Publication::Publication(const std::string& document) : inForce_(read(document, 0)) {}

Publication::Publication(std::filesystem::path file, const std::string& otherwise)
    : file_(std::move(file)) {
    std::error_code ignored;
    if (std::filesystem::exists(file_, ignored))
        inForce_ = read(readFile(file_), 0);
    if (inForce_.text.empty())
        inForce_ = read(otherwise, 0);
}

Publication::Draft Publication::publish(const std::string& text) {
    Draft draft = read(text, inForce_.version);
    if (!draft.problem.empty())
        return draft;
    inForce_ = draft;
    if (!file_.empty())
        std::ofstream(file_, std::ios::binary) << draft.text;
    return draft;
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (stream.peek(); stream.bad() || !stream.is_open()) // a directory opens, but is not read
        throw std::system_error(errno, std::generic_category(), file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace vx::tools::studio
