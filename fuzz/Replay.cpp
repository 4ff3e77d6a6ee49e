// Hands each file of the folder that it is given to the fuzz target, once.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include "tools/system/Files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
    std::size_t files = 0;
    if (count == 2)
        for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
            const std::string input = vx::tools::system::readFile(entry.path());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()),
                                   input.size());
            ++files;
        }
    std::cout << files << " inputs\n";
    return files > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
