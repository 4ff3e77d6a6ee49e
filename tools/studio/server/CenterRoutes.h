#pragma once

#include <httplib.h>

namespace vx::tools::studio {

class StudioSession;

/// The privacy center's page, for a frame of the studio's: GET /center/ with its files, 404 while
/// no center is open, and POST /api/center/event, which takes an event of the page and answers with
/// the patch.
void addCenter(httplib::Server& server, StudioSession& session);

} // namespace vx::tools::studio
