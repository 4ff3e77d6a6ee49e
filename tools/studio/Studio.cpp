#include "tools/Commands.h"

#include <csignal>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "tools/studio/Browser.h"
#include "tools/studio/EventStream.h"
#include "tools/studio/Installation.h"
#include "tools/studio/Options.h"
#include "tools/studio/PageServer.h"
#include "tools/studio/Session.h"
#include "tools/studio/Transcript.h"
#include "tools/studio/VendorList.h"
#include "tools/studio/application/Application.h"

#include <CLI/CLI.hpp>

namespace vx::tools {

namespace {

using namespace studio;

[[noreturn]] void fail(const std::string& reason) {
    std::cerr << "vxprivacy studio: " << reason << '\n';
    throw CLI::RuntimeError(kUnusableInput);
}

// Signals that end the studio are taken by `waitForEnd`; every later thread inherits this.
sigset_t blockEndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a killed application or a closed page must not end the studio
    return signals;
}

void waitForEnd(const sigset_t& signals) {
    int signal = 0;
    sigwait(&signals, &signal);
}

void run(const Options& options) {
    const sigset_t signals = blockEndingSignals();
    EventStream events;
    Session session(options, options.gvl.empty() ? sampleVendorList() : readVendorList(options.gvl),
                    events);
    PageServer page(session, events);
    if (!page.start(options.port))
        fail("no free port from " + std::to_string(options.port));
    if (const Problem problem = session.start(options.port == 0 ? 0 : page.port() + 1))
        fail(*problem);

    std::thread transcript([&] { printTranscript(events, page.address(), page.token()); });
    if (!options.noBrowser)
        openBrowser(page.address());
    waitForEnd(signals);
    events.close();
    transcript.join();
    page.stop();
    session.stop();
}

void runOrFail(Options options) {
    options.iab |= !options.gvl.empty();
    try {
        run(options);
    } catch (const std::runtime_error& error) {
        fail(error.what());
    }
}

} // namespace

void addStudio(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand(
        "studio", "Run an application with consent on a development backend, and watch it");
    command->add_option("--config", options->config, "Privacy configuration to serve")
        ->type_name("FILE");
    command->add_option("--store", options->store, "SQLite file of the application")
        ->type_name("FILE");
    command->add_option("--port", options->port, "Port of the page (8480; 0: any)")
        ->check(CLI::Range(0, 65535));
    command->add_flag("--no-browser", options->noBrowser, "Do not open the page");
    command->add_flag("--iab", options->iab, "Begin in IAB mode");
    CLI::Option* gvl =
        command->add_option("--gvl", options->gvl, "Vendor list to serve; implies --iab")
            ->type_name("FILE");
    CLI::Option* live = command->add_flag("--live", options->live, "Use the real hosts");
    CLI::Option* site = command->add_option("--site", options->site, "Site ID, with --live");
    CLI::Option* privacy =
        command->add_option("--privacy", options->privacy, "Privacy ID, with --live");
    live->needs(site)->needs(privacy)->excludes("--config")->excludes(gvl);
    site->needs(live);
    privacy->needs(live);
    command->footer("The page's requests, for use with curl: docs/studio.md");
    command->callback([options] { runOrFail(*options); });

    app.add_subcommand(kApplicationCommand, "The application that the studio runs")
        ->group("") // not for users, so not in the help
        ->callback([] { runApplication(); });
}

} // namespace vx::tools
