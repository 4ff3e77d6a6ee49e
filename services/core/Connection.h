#pragma once

#include <map>
#include <string_view>

#include <SQLiteCpp/SQLiteCpp.h>

namespace vx::services {

/// A connection to the store's file, which keeps the statements that every save runs: preparing
/// them takes longer than running them.
class Connection : public SQLite::Database {
public:
    using SQLite::Database::Database;

    /// The statement of this text (a literal), ready to be bound. Another call for the same text
    /// gives the same one. May throw.
    SQLite::Statement& prepared(const char* sql);

private:
    std::map<std::string_view, SQLite::Statement> statements_;
};

} // namespace vx::services
