#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <SQLiteCpp/SQLiteCpp.h>

namespace vx::bench {

/// The least that keeps entries as the engine's store does: one SQLite table with the same pragmas
/// and a prepared statement.
class BareStore {
public:
    using Rows = std::vector<std::pair<std::string, std::string>>;

    explicit BareStore(std::string_view name);

    /// One transaction of these rows, durable on return.
    void upsert(const Rows& rows);

private:
    SQLite::Database database_;
    SQLite::Statement statement_;
};

} // namespace vx::bench
