#include "tools/studio/Publication.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "tools/studio/Json.h"

namespace vx::tools::studio {

namespace {

Publication::Draft refused(std::string problem) {
    return {.text = {}, .version = 0, .problem = std::move(problem)};
}

// "[json.exception.parse_error.101] parse error at line 3, column 5: ..." without the bracket.
std::string withoutCode(const std::string& message) {
    const std::size_t end = message.find("] ");
    return end == std::string::npos ? message : message.substr(end + 2);
}

std::int64_t versionOf(const Json& document) {
    const Json& version = document["information"]["version"];
    return version.is_number_integer() ? version.get<std::int64_t>() : 0;
}

Publication::Draft read(const std::string& text, std::int64_t above) {
    Json document;
    try {
        document = Json::parse(text);
    } catch (const Json::parse_error& error) {
        return refused(withoutCode(error.what()));
    }
    if (!document.is_object() || !document.contains("information") ||
        !document["information"].is_object())
        return refused("the document needs an object \"information\", which holds the version");
    if (const std::int64_t version = versionOf(document); version > above)
        return {.text = text, .version = version, .problem = {}};
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
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream)
        throw std::system_error(errno, std::generic_category(), file.string());
    return text;
}

} // namespace vx::tools::studio
