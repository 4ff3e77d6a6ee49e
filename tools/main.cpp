#include <iostream>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"

int main(int argc, char** argv) {
    CLI::App app("Consent management for C++ applications: tools for developers", "vxprivacy");
    app.set_version_flag("--version", VXPRIVACY_VERSION);
    vx::tools::addPlay(app);
    vx::tools::addLint(app);
    vx::tools::addGVL(app);
    vx::tools::addTC(app);
    vx::tools::addStudio(app);
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
