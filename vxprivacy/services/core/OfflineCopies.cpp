#include "vxprivacy/services/core/OfflineCopies.h"

namespace vx::services {

namespace {

constexpr const char* kRow = "SELECT text, address, etag FROM documents WHERE name = ?";

} // namespace

OfflineCopies::OfflineCopies(Database& database) : database_(database) {
    database.add(*this);
}

void OfflineCopies::read(const std::string& name, const std::function<void(const Copy&)>& use) {
    for (auto last = changes_.rbegin(); last != changes_.rend(); ++last)
        if (last->name == name)
            return use({last->text, last->address, last->etag});
    if (!database_.connection())
        return;
    try {
        SQLite::Statement row(*database_.connection(), kRow);
        row.bindNoCopy(1, name);
        if (row.executeStep())
            use({bytes(row.getColumn(0)), bytes(row.getColumn(1)), bytes(row.getColumn(2))});
    } catch (const SQLite::Exception&) {
        // as if there were none: the next download puts another in its place
    }
}

void OfflineCopies::replace(const std::string& name, const Copy& copy) {
    change("REPLACE", name, copy);
}

void OfflineCopies::keepIfAbsent(const std::string& name, const Copy& copy) {
    change("INSERT OR IGNORE", name, copy);
}

void OfflineCopies::change(const char* verb, const std::string& name, const Copy& copy) {
    changes_.push_back(
        {name, std::string(copy.text), std::string(copy.address), std::string(copy.etag), verb});
    database_.changed();
}

const char* OfflineCopies::schema() const {
    return "CREATE TABLE documents (name TEXT PRIMARY KEY, address TEXT NOT NULL, "
           "etag TEXT NOT NULL, text TEXT NOT NULL)";
}

// Reads nothing, but finds out whether it could.
void OfflineCopies::load(Connection& file) {
    const SQLite::Statement row(file, kRow);
}

void OfflineCopies::write(Connection& file, Contents) {
    for (const Change& change : changes_) {
        SQLite::Statement statement(
            file, std::string(change.verb) +
                      " INTO documents (name, address, etag, text) VALUES (?, ?, ?, ?)");
        statement.bindNoCopy(1, change.name);
        statement.bindNoCopy(2, change.address);
        statement.bindNoCopy(3, change.etag);
        statement.bindNoCopy(4, change.text);
        statement.exec();
    }
}

} // namespace vx::services
