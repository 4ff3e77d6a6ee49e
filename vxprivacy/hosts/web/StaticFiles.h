#pragma once

#include <span>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::web {

/// A file that is part of the program. Its texts live as long as the program.
struct VXPRIVACY_EXPORT StaticFile {
    std::string_view name;      ///< "surface.css"
    std::string_view mediaType; ///< "text/css"; the content is UTF-8
    std::string_view content;   ///< whole; may be empty
};

/// Files that are part of the program, for a server that gives them out.
class VXPRIVACY_EXPORT StaticFiles {
public:
    /// `files` must outlive this.
    explicit constexpr StaticFiles(std::span<const StaticFile> files) : files_(files) {}

    auto begin() const { return files_.begin(); }
    auto end() const { return files_.end(); }
    /// The content of the file named `name`; empty when there is none.
    std::string_view operator[](std::string_view name) const;

private:
    std::span<const StaticFile> files_;
};

/// The files that every page of a `WebSurface` needs.
VXPRIVACY_EXPORT StaticFiles staticFiles();

} // namespace vx::web
