#include "tools/Input.h"

#include <fstream>
#include <iostream>

namespace vx::tools {

namespace {

std::optional<std::string> readText(std::istream& input, std::size_t most) {
    std::string text(most + 1, '\0');
    input.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (input.bad() || (input.fail() && !input.eof()))
        return {};
    text.resize(static_cast<std::size_t>(input.gcount()));
    return text;
}

} // namespace

std::optional<std::string> readInput(const std::string& name, std::size_t most) {
    if (name == "-") {
        std::ios::sync_with_stdio(false); // so that a failing read shows
        return readText(std::cin, most);
    }
    std::ifstream file(name, std::ios::binary);
    return file ? readText(file, most) : std::nullopt;
}

} // namespace vx::tools
