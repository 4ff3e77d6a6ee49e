#include "tools/system/Input.h"

#include <iostream>

#include <unistd.h>

#include "tools/system/Files.h"

namespace vx::tools::system {

namespace {

std::istream& standardInput() {
    std::ios::sync_with_stdio(false); // so that a failing read shows
    return std::cin;
}

} // namespace

Input::Input(const std::string& name)
    : title_(name == "-" ? "standard input" : name),
      stream_(name == "-" ? standardInput() : file_) {
    if (name != "-")
        file_.open(name, std::ios::binary);
    else if (::isatty(STDIN_FILENO) == 1)
        std::cerr << "Reading standard input; Ctrl-D ends it.\n";
}

std::optional<std::string> Input::read(std::size_t most) {
    return readAll(stream_, most);
}

} // namespace vx::tools::system
