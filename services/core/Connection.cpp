#include "services/core/Connection.h"

namespace vx::services {

SQLite::Statement& Connection::prepared(const char* sql) {
    auto found = statements_.find(sql);
    if (found == statements_.end())
        found = statements_.emplace(sql, SQLite::Statement(*this, sql)).first;
    found->second.tryReset(); // what became of its last run was said then
    return found->second;
}

} // namespace vx::services
