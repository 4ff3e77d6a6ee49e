#include "services/core/OfflineCopies.h"

namespace vx::services {

OfflineCopies::OfflineCopies(Database& database) : database_(database) {
    database.add(*this);
}

void OfflineCopies::read(const std::string& name, const std::function<void(const Copy&)>& use) {
    for (auto last = replacements_.rbegin(); last != replacements_.rend(); ++last)
        if (last->name == name)
            return use({last->text, last->address, last->etag});
    if (!database_.connection())
        return;
    try {
        SQLite::Statement row(*database_.connection(),
                              "SELECT text, address, etag FROM documents WHERE name = ?");
        row.bindNoCopy(1, name);
        if (row.executeStep())
            use({bytes(row.getColumn(0)), bytes(row.getColumn(1)), bytes(row.getColumn(2))});
    } catch (const SQLite::Exception&) {
        // as if there were none: the next download puts another in its place
    }
}

void OfflineCopies::replace(std::string name, const Copy& copy) {
    replacements_.push_back({std::move(name), std::string(copy.text), std::string(copy.address),
                             std::string(copy.etag)});
    database_.changed();
}

const char* OfflineCopies::schema() const {
    return "CREATE TABLE documents (name TEXT PRIMARY KEY, address TEXT NOT NULL, "
           "etag TEXT NOT NULL, text TEXT NOT NULL)";
}

void OfflineCopies::write(Connection& file, Contents) {
    for (const Replacement& replacement : replacements_) {
        SQLite::Statement upsert(file, "REPLACE INTO documents (name, address, etag, text) "
                                       "VALUES (?, ?, ?, ?)");
        upsert.bindNoCopy(1, replacement.name);
        upsert.bindNoCopy(2, replacement.address);
        upsert.bindNoCopy(3, replacement.etag);
        upsert.bindNoCopy(4, replacement.text);
        upsert.exec();
    }
}

} // namespace vx::services
