#include "tools/studio/application/StoreView.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace vx::tools::studio {

namespace {

Json entries(SQLite::Database& file) {
    Json pairs = Json::array();
    SQLite::Statement rows(
        file, "SELECT key, value FROM entries WHERE key <> 'VXStoreDigest' ORDER BY key");
    while (rows.executeStep())
        pairs.push_back({rows.getColumn(0).getString(), rows.getColumn(1).getString()});
    return pairs;
}

} // namespace

std::optional<Json> storedState(const std::filesystem::path& store) {
    Json state = {{"entries", Json::array()}, {"waitingBeacons", 0}};
    try {
        SQLite::Database file(store.string(), SQLite::OPEN_READONLY);
        state["entries"] = entries(file);
        state["waitingBeacons"] = file.execAndGet("SELECT count(*) FROM outbox").getInt();
    } catch (const SQLite::Exception&) { // the next look may show more
        return exists(store) ? std::nullopt : std::optional(state);
    }
    return state;
}

std::map<std::string, std::string> storedDocuments(const std::filesystem::path& store,
                                                   bool inFormat3) {
    std::map<std::string, std::string> documents;
    try {
        SQLite::Database file(store.string(), SQLite::OPEN_READONLY);
        SQLite::Statement rows(file, "SELECT name, text FROM documents");
        while (rows.executeStep()) {
            // "12/5/privacy", "vendor-list", "v3/vendor-list"
            const std::string name = rows.getColumn(0).getString();
            const bool isFormat3 = name.starts_with("v3/");
            if (isFormat3 != inFormat3 && (isFormat3 || name.find('/') == std::string::npos))
                continue;
            documents[name.substr(name.rfind('/') + 1)] = rows.getColumn(1).getString();
        }
    } catch (const SQLite::Exception&) {
        return documents;
    }
    return documents;
}

} // namespace vx::tools::studio
