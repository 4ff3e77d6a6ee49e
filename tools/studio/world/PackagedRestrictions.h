#pragma once

#include <filesystem>
#include <string>

#include "tools/studio/shared/Result.h"

namespace vx::tools::studio {

/// The publisher's restrictions as they ship with the application: a document in the directory of
/// its packaged files, where there is one.
class PackagedRestrictions {
public:
    /// Takes up what an earlier run left in `directory`, which need not be there. Throws
    /// std::system_error when it cannot be read.
    explicit PackagedRestrictions(std::filesystem::path directory);

    /// The document; empty: none ships.
    const std::string& text() const { return text_; }
    /// Where the application finds it; empty: none ships.
    std::filesystem::path directory() const;

    /// Has the next launch ship `text`, or none where it is blank. The problem when it is no JSON
    /// object or cannot be written; all is as it was then.
    Result<std::string> ship(const std::string& text);

private:
    std::filesystem::path file() const;

    std::filesystem::path directory_;
    std::string text_;
};

} // namespace vx::tools::studio
