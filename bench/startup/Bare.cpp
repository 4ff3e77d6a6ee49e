// The least that a program has to do to have the same: reads the rows, parses the two documents.

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unordered_map>

#include <SQLiteCpp/SQLiteCpp.h>
#include <simdjson.h>

#include "bench/startup/Ready.h"

int main(int, char** arguments) {
    const std::filesystem::path directory = arguments[1];
    std::unordered_map<std::string, std::string> entries;
    SQLite::Database database(directory / "choices.sqlite");
    SQLite::Statement rows(database, "SELECT key, value FROM entries");
    while (rows.executeStep())
        entries.emplace(rows.getColumn(0).getText(), rows.getColumn(1).getText());

    simdjson::dom::parser configuration, vendorList; // a parser owns its document
    const bool whole = !configuration.load(directory / "privacy.json").error() &&
                       !vendorList.load(directory / "vendor-list.json").error();
    vx::bench::reportReady();
    return whole && entries.size() > 2200 ? EXIT_SUCCESS : EXIT_FAILURE;
}
