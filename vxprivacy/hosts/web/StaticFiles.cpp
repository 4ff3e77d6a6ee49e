#include "vxprivacy/hosts/web/StaticFiles.h"

#include <algorithm>

namespace vx::web {

std::string_view StaticFiles::operator[](std::string_view name) const {
    const auto file = std::ranges::find(files_, name, &StaticFile::name);
    return file == files_.end() ? std::string_view() : file->content;
}

} // namespace vx::web
