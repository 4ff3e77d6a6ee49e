// The subcommand studio: puts world, page and browser together and runs them until a signal.

#include <csignal>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include <CLI/CLI.hpp>
#include <malloc.h>

#include "tools/Commands.h"
#include "tools/studio/Browser.h"
#include "tools/studio/Transcript.h"
#include "tools/studio/application/ApplicationLoop.h"
#include "tools/studio/server/PageServer.h"
#include "tools/studio/shared/EventStream.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/studio/world/Installation.h"
#include "tools/studio/world/ServedVendorList.h"
#include "tools/studio/world/StudioSession.h"
#include "tools/studio/world/WorldOptions.h"

namespace vx::tools {

namespace {

using namespace studio;

struct Options {
    WorldOptions world;
    /// Of the page; the next free one is taken when it is in use. 0: any.
    int port = 8480;
    bool noBrowser = false;
    bool iab = false;
};

[[noreturn]] void fail(const std::string& reason) {
    std::cerr << "vxprivacy studio: " << reason << '\n';
    throw CLI::RuntimeError(kUnusableInput);
}

template <class Value>
Value valueOrFail(Result<Value> result) {
    if (!result)
        fail(result.problem().text);
    return std::move(*result);
}

bool isIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

// Signals that end the studio are taken by `waitForEnd`; every later thread inherits this. What
// nohup or a shell had us ignore does not end it.
sigset_t blockEndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

// Large bodies are rare: what they took goes back to the system, not to one of many arenas. It is
// five times as much otherwise (bench/README.md).
void keepLittleMemory() {
    ::mallopt(M_ARENA_MAX, 2);
    ::mallopt(M_MMAP_THRESHOLD, 128 << 10); // bytes
}

void waitForEnd(const sigset_t& signals) {
    int signal = 0;
    sigwait(&signals, &signal);
}

// A list that was named is served in place of both samples.
ServedVendorLists vendorListsOf(const WorldOptions& world) {
    if (world.gvl.empty())
        return sampleVendorLists();
    const ServedVendorList list = valueOrFail(readVendorList(world.gvl));
    return {.format2 = list, .format3 = list};
}

void run(const Options& options) {
    keepLittleMemory();
    const sigset_t signals = blockEndingSignals();
    EventStream events;
    const WorldOptions& world = options.world;
    const ServedVendorLists lists = vendorListsOf(world);
    StudioSession session(world, valueOrFail(makeInstallations(world, lists.format2.name)), lists,
                          events);
    PageServer page(session, events);
    if (!page.start(options.port))
        fail("no free port from " + std::to_string(options.port));
    valueOrFail(session.start(options.port == 0 ? 0 : page.port() + 1));

    std::thread transcript([&] { printTranscript(events, page.address(), page.token()); });
    if (!options.noBrowser)
        openBrowser(page.address());
    waitForEnd(signals);
    events.close();
    session.stop(); // before the page, whose requests may wait for the application
    page.stop();
    transcript.join();
}

void runOrFail(Options options) {
    if (options.iab || !options.world.gvl.empty())
        options.world.mode = Mode::IAB;
    try {
        run(options);
    } catch (const std::system_error& error) { // a file, a pipe or a process
        fail(error.what());
    }
}

} // namespace

void addStudio(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand(
        "studio", "Run an application with consent on a development backend, and watch it");
    command->add_option("--config", options->world.config, "Privacy configuration to serve")
        ->type_name("FILE");
    command->add_option("--store", options->world.store, "SQLite file of the application")
        ->type_name("FILE");
    command->add_option("--port", options->port, "Port of the page (8480; 0: any)")
        ->check(CLI::Range(0, 65535));
    command->add_flag("--no-browser", options->noBrowser, "Do not open the page");
    command->add_flag("--iab", options->iab, "Begin in IAB mode");
    CLI::Option* gvl =
        command->add_option("--gvl", options->world.gvl, "Vendor list to serve; implies --iab")
            ->type_name("FILE");
    CLI::Option* live = command->add_flag("--live", options->world.live, "Use the real hosts");
    CLI::Option* site = command->add_option("--site", options->world.site, "Site ID, with --live");
    CLI::Option* privacy =
        command->add_option("--privacy", options->world.privacy, "Privacy ID, with --live");
    command
        ->add_option("--vendor-list-host", options->world.vendorListHost,
                     "Where the vendor list is, with --live (none)")
        ->type_name("URL")
        ->needs(live);
    live->needs(site)->needs(privacy)->excludes("--config")->excludes(gvl);
    site->needs(live);
    privacy->needs(live);
    command->footer("The page's requests, for use with curl: docs/studio.md");
    command->callback([options] { runOrFail(*options); });

    app.add_subcommand(kApplicationCommand, "The application that the studio runs")
        ->group("") // not for users, so not in the help
        ->callback([] {
            keepLittleMemory();
            runApplication();
        });
}

} // namespace vx::tools
