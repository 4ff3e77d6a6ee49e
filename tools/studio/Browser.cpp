#include "tools/studio/Browser.h"

#include <cstdlib>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>

#include "tools/system/Descriptor.h"
#include "tools/system/Spawn.h"

namespace vx::tools::studio {

namespace {

bool hasDesktop() {
    return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
}

} // namespace

void openBrowser(const std::string& address) {
    if (!hasDesktop()) // or it might start a text browser in the user's terminal
        return;
    const system::Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
    try {
        const pid_t pid =
            system::spawn({"xdg-open", address}, {nowhere.get(), nowhere.get(), nowhere.get()});
        std::thread([pid] { ::waitpid(pid, nullptr, 0); }).detach();
    } catch (const std::system_error&) {
        return; // the address is on the terminal
    }
}

} // namespace vx::tools::studio
