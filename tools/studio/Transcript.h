#pragma once

#include <string>

namespace vx::tools::studio {

class EventStream;

/// Prints what the engine did at start-up on standard output: where the page is, what happened
/// until the privacy configuration was there (or ten seconds had passed), and how things stand.
/// Returns early when the stream is closed.
void printTranscript(EventStream& events, const std::string& address, const std::string& token);

} // namespace vx::tools::studio
