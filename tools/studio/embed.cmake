# Writes OUTPUT, a C++ source that holds the FILES (separated by ",") under their names.
string(REPLACE "," ";" files "${FILES}")
set(arrays "")
set(entries "")
set(number 0)
foreach(file IN LISTS files)
    file(READ "${file}" bytes HEX)
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
    get_filename_component(name "${file}" NAME)
    string(APPEND arrays "constexpr char kFile${number}[] = {${bytes}};\n")
    string(APPEND entries "    {\"${name}\", {kFile${number}, sizeof kFile${number}}},\n")
    math(EXPR number "${number} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include \"tools/studio/Assets.h\"

#include <utility>

namespace vx::tools::studio {

namespace {

${arrays}
constexpr std::pair<std::string_view, std::string_view> kFiles[] = {
${entries}};

} // namespace

std::string asset(std::string_view name) {
    for (const auto& [key, content] : kFiles)
        if (key == name)
            return std::string(content);
    return {};
}

} // namespace vx::tools::studio
")
