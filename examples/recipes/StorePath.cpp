#include <cstdlib>
#include <filesystem>
#include <optional>

namespace {

std::optional<std::filesystem::path> directoryNamed(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value ? std::optional<std::filesystem::path>(value) : std::nullopt;
}

} // namespace

// For Settings::store. Absent: the user has no home; ask, and keep nothing.
std::optional<std::filesystem::path> storePath() {
    std::optional<std::filesystem::path> base;
#if defined(_WIN32)
    base = directoryNamed("LOCALAPPDATA");
#elif defined(__APPLE__)
    if (auto home = directoryNamed("HOME"))
        base = *home / "Library/Application Support";
#else
    base = directoryNamed("XDG_DATA_HOME");
    if (auto home = directoryNamed("HOME"); home && !base)
        base = *home / ".local/share";
#endif
    return base ? std::optional(*base / "example-application/consent.sqlite") : std::nullopt;
}
