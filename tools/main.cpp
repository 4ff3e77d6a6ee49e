#include <iostream>

#include "tools/Commands.h"

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    CLI::App app("Consent management for C++ applications: tools for developers", "vxprivacy");
    app.set_version_flag("--version", VXPRIVACY_VERSION);
    vx::tools::addPlay(app);
    vx::tools::addLint(app);
    vx::tools::addGVL(app);
#ifdef VXPRIVACY_TC
    vx::tools::addTC(app);
#endif
#ifdef VXPRIVACY_STUDIO
    vx::tools::addStudio(app);
#endif
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            throw CLI::RequiredError("A command (see --help)");
    } catch (const CLI::RuntimeError& failure) { // already reported
        return failure.get_exit_code();
    } catch (const CLI::Success& request) { // for help or the version
        return app.exit(request);
    } catch (const CLI::ParseError& error) {
        std::cerr << "vxprivacy: " << error.what() << '\n';
        return vx::tools::kUnusableInput;
    }
    return 0;
}
