// What the studio prints: where it is, what the engine does at start-up, how things stand then.

#include "tools/studio/Transcript.h"

#include <chrono>
#include <iomanip>
#include <iostream>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/shared/Json.h"
#include "vxprivacy/engine/ConsentEntry.h"

namespace vx::tools::studio {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

// Only a start-up that finds no newer document, or a slow one, takes that long.
constexpr std::chrono::seconds kPatience{10};

std::ostream& field(const char* name) {
    return std::cout << "  " << std::left << std::setw(15) << name;
}

void printHeading(const EventStream& events, const std::string& address, const std::string& token) {
    const Json state = events.state();
    std::cout << "VXPrivacy studio" << (state["session"]["iab"] == true ? ", IAB mode\n" : "\n");
    field("page") << address << "/\n";
    if (state["session"]["live"] == false)
        field("backend") << state["network"].value("address", "")
                         << " (configuration CDN, vendor list, consent collector)\n";
    else if (state["session"].value("vendorListHost", "none").empty())
        field("vendor list") << "no host; name one by --vendor-list-host\n";
    field("store") << state["session"].value("store", "") << '\n';
    field("token") << token << '\n';
    field("try") << "curl -d '' -H 'X-Studio-Token: " << token << "' " << address
                 << "/api/accept\n";
    std::cout << "\nStart-up\n";
}

void printEntry(const EventStream::Entry& entry) {
    field(entry.kind.c_str()) << entry.title << '\n';
}

std::int64_t configurationVersion(const Json& state) {
    const Json::json_pointer version("/application/configuration/version");
    return state.contains(version) ? state[version].get<std::int64_t>() : 0;
}

std::int64_t vendorListVersion(const Json& state) {
    const Json::json_pointer version("/application/vendorList/version");
    return state.contains(version) ? state[version].get<std::int64_t>() : 0;
}

bool isUpToDate(const Json& state) {
    const std::int64_t version = configurationVersion(state);
    return version > 0 && version >= state.value(Json::json_pointer("/published/version"), 0) &&
           (state["session"]["iab"] == false || vendorListVersion(state) > 0);
}

// Prints the entries as they come.
void printStartUp(EventStream& events) {
    EventStream::Position position;
    for (const auto end = SteadyClock::now() + kPatience; SteadyClock::now() < end;) {
        const EventStream::News news = events.waitAfter(position, 100ms);
        position = news.position;
        for (const auto& entry : news.entries)
            printEntry(*entry);
        if (news.closed || (news.entries.empty() && isUpToDate(events.state())))
            return;
    }
}

void printVendorList(const Json& state) {
    const std::int64_t version = vendorListVersion(state);
    if (version == 0)
        field("vendor list") << "none yet\n";
    else
        field("vendor list") << "version " << version << ", "
                             << state["application"]["vendorList"]["vendors"].size()
                             << " vendors\n";
}

void printOutcome(const Json& state) {
    const Json application = state.value("application", Json::object());
    const Json engine = application.value("engine", Json::object());
    const Json decision = application.value("decision", Json::object());
    std::cout << "\nNow\n";
    if (const std::int64_t version = configurationVersion(state); version > 0)
        field("configuration") << "version " << version << '\n';
    else
        field("configuration") << "none yet\n";
    if (state["session"]["iab"] == true)
        printVendorList(state);
    field("display flag") << (decision.value("mustAsk", true) ? kMustDisplay : kNeedNotDisplay)
                          << ", " << decision.value("text", "") << '\n';
    field("state") << engine.value("privacyState", 0) << ", "
                   << decision.value("state", "no decision known") << '\n';
    std::cout << "\nCtrl-C ends the studio." << std::endl;
}

} // namespace

void printTranscript(EventStream& events, const std::string& address, const std::string& token) {
    printHeading(events, address, token);
    printStartUp(events);
    printOutcome(events.state());
    if (!std::cout) // while it runs, and not only at its end
        std::cerr << "vxprivacy studio: the output cannot be written; the page is at " << address
                  << '/' << std::endl;
}

} // namespace vx::tools::studio
