#pragma once

namespace vx::tools::studio {

/// The hidden subcommand under which the executable is the application.
inline constexpr const char* kApplicationCommand = "studio-application";

/// An application with the engine, its services and a tag SDK, for the studio to watch. It is told
/// what to do by JSON objects on standard input, one a line, with "do" and "id":
///
///     {"do":"start","id":1,"store":FILE,"site":S,"privacy":P,"iab":MODE,"clockOffset":MS,
///      "host":ADDRESS,"cause":TEXT}
///     {"do":"accept"|"refuse"} {"do":"hit","name":TEXT} {"do":"clock","offset":MS}
///     {"do":"present","width":POINTS} {"do":"dismiss"}
///     {"do":"page"|"layout"} {"do":"event","text":TEXT}
///
/// and reports on standard output what happens: {"kind":"log"|"notification"|"callback"|"hit"|
/// "screen","title":TEXT,"body":...}, {"kind":"state","body":...} when something changed, and
/// {"kind":"done","id":N,"reply":{...}} after each command; the reply has "text" where something
/// was asked for and "problem" where it cannot be done. Returns when its input ends.
void runApplication();

} // namespace vx::tools::studio
