#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vx::tools::studio {

/// The privacy configuration as its publisher sees it: the document in force, its version, and the
/// way to a new one. Where it has a file it begins with that and keeps it up to date.
class Publication {
public:
    /// A version to be published: the text, or what is wrong with it in one line.
    struct Draft {
        std::string text;
        std::int64_t version = 0;
        std::string problem;
    };

    /// Begins with `document`; look at the problem of `inForce()`.
    explicit Publication(const std::string& document);
    /// Begins with the document in `file`, or with `otherwise` when there is no good one.
    Publication(std::filesystem::path file, const std::string& otherwise);

    const Draft& inForce() const { return inForce_; }
    /// Publishes `text` as a new version: "information/version" is raised above the one in force,
    /// unless it is higher already. What is wrong with the text changes nothing.
    Draft publish(const std::string& text);

private:
    std::filesystem::path file_;
    Draft inForce_;
};

/// The content of a file; throws std::system_error when it cannot be read.
std::string readFile(const std::filesystem::path& file);

} // namespace vx::tools::studio
