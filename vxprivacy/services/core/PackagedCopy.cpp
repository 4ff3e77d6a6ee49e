#include "vxprivacy/services/core/PackagedCopy.h"

#include <fstream>
#include <system_error>

#include "vxprivacy/services/core/Transfer.h"
#include "vxprivacy/services/system/System.h"

namespace vx::services {

PackagedCopy readPackagedCopy(const VXConfigurationFile& file, const std::filesystem::path& usual) {
    const std::filesystem::path directory =
        file.bundle().empty() ? usual : std::filesystem::path(file.bundle());
    const std::filesystem::path path = directory / (file.offlineName() + ".json");
    if (directory.empty())
        return {system::utf8(path), false, {}, "no directory of packaged files is given"};
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error)
        return {
            system::utf8(path), error != std::errc::no_such_file_or_directory, {}, error.message()};
    if (size > kLargestAnswer)
        return {system::utf8(path), true, {}, "it is larger than 8 MiB"};
    std::string text(static_cast<std::size_t>(size), '\0');
    std::ifstream stream(path, std::ios::binary);
    if (!stream.read(text.data(), static_cast<std::streamsize>(size)))
        return {system::utf8(path), true, {}, "it cannot be read"};
    return {system::utf8(path), true, std::move(text), {}};
}

} // namespace vx::services
