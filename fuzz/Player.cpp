// Any text as a session of the player.

#include "tools/play/Player.h"

#include <sstream>
#include <string>

#include "fuzz/Input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream script{std::string(vx::fuzz::text(data, size))};
    std::ostringstream printed;
    vx::tools::play::Player(printed).run(script);
    return 0;
}
