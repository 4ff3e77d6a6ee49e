#pragma once

#include <httplib.h>

namespace vx::tools::studio {

class EventStream;
class StudioSession;

/// The requests that change something, or ask for work, each a POST. An action that was done is
/// answered with the state after it, one that could not be done with status 409 and {"error":
/// TEXT}.
void addActions(httplib::Server& server, StudioSession& session, const EventStream& events);

} // namespace vx::tools::studio
