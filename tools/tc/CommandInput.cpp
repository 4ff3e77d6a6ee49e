#include "tools/tc/CommandInput.h"

#include <iostream>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/system/Input.h"
#include "vxprivacy/services/iab/Decoder.h"

namespace vx::tools::tc {

namespace {

void removeLineEnd(std::string& text) {
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.pop_back();
}

} // namespace

void fail(const std::string& why, int status) {
    std::cerr << "vxprivacy tc: " << why << '\n';
    throw CLI::RuntimeError(status);
}

std::string readInput(const std::string& name, std::size_t most) {
    system::Input input(name);
    auto text = input.read(most);
    if (!text)
        fail("cannot read " + input.title(), kUnusableInput);
    return *std::move(text);
}

std::string stringOf(const std::string& argument) {
    if (argument != "-")
        return argument;
    std::string text = readInput("-", services::tcf::kLongestString);
    removeLineEnd(text);
    return text;
}

void forEachLine(const std::string& name, const std::function<bool(const std::string&)>& action) {
    system::Input input(name);
    if (!input.stream())
        fail("cannot read " + input.title(), kUnusableInput);
    bool isGood = true;
    for (std::string line; std::getline(input.stream(), line);) {
        removeLineEnd(line);
        isGood &= action(line);
    }
    std::cout.flush();
    if (!isGood)
        throw CLI::RuntimeError(kNotWellFormed);
}

} // namespace vx::tools::tc
