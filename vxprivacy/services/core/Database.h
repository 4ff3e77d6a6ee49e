#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/services/core/StoreFile.h"

namespace vx::services {

/// Whether the file still holds what this process last read there and wrote there.
enum class Contents { Known, ChangedByOthers };

/// The bytes of a text, which may be any; until the next step of its statement.
inline std::string_view bytes(const SQLite::Column& column) {
    const auto* start = static_cast<const char*>(column.getBlob()); // null when there are none
    return {start, static_cast<std::size_t>(column.getBytes())};
}

/// A table of the store. It collects its changes in memory and writes them when the database says
/// so, all tables in one transaction.
class Table {
public:
    virtual ~Table();

    /// The statement that makes the table.
    virtual const char* schema() const = 0;
    /// Reads what the file holds; changes that wait to be written are kept. May throw.
    virtual void load(Connection& file) = 0;

    /// Whether any change waits to be written.
    virtual bool pending() const = 0;
    /// Drops what need not be remembered of changes that could not be written for long. No scope is
    /// open.
    virtual void compact() {}
    /// The state now, for `rollBack`; of no use any more once the changes after it were written.
    virtual std::size_t mark() const = 0;
    /// Undoes the changes made since `mark`.
    virtual void rollBack(std::size_t mark) = 0;

    /// Writes the waiting changes; the caller commits. May throw.
    virtual void write(Connection& file, Contents contents) = 0;
    /// What `write` wrote is durable.
    virtual void written() = 0;

    /// The file that it wrote to is gone, and perhaps another is in its place.
    virtual void disconnected() {}
    /// The file is a new, empty one: all that is in memory waits to be written.
    virtual void lost() = 0;
};

/// The store's one SQLite file, and the unit of work over its tables: the changes of a scope, of
/// all tables, reach the disk in one transaction, with one sync.
///
/// Nothing here throws. What cannot be written keeps waiting, and is tried again with the next
/// change and by `retry`. Application's thread.
class Database {
public:
    Database(const std::filesystem::path& file, Logger& logger);

    /// Before `open`; the table must outlive the database's use.
    void add(Table& table) { tables_.push_back(&table); }
    /// Reads the file. A damaged or foreign one is moved aside.
    void open();

    // Scopes nest; only the outermost one writes.
    void begin();
    void commit();
    void rollBack();
    /// A table has changes: writes them, unless a scope is open.
    void changed();

    /// Tries again what could not be written, when it is time.
    void retry();
    /// Whether the last attempt to read or write failed, and what changes waits.
    bool failing() const { return failing_; }
    /// Why it failed; empty when it did not.
    const std::string& problem() const { return problem_; }
    /// A last attempt, which waits for no other process.
    void finish();
    /// How long until `retry` has something to do; absent: it has nothing.
    std::optional<std::chrono::milliseconds> timeToRetry() const;

    /// Whether a scope is open.
    bool inScope() const { return !scopes_.empty(); }

    /// Called after each commit that wrote, and after each failure to.
    void setOnSettled(std::function<void()> onSettled) { onSettled_ = std::move(onSettled); }
    /// The connection, for reading; null while the file cannot be opened.
    Connection* connection() { return connection_.get(); }

private:
    using Steady = std::chrono::steady_clock;
    using Marks = std::vector<std::size_t>; // one for each table

    void flush();
    void connect();
    bool tryToConnect();
    void disconnect();
    bool makeTables(Connection& file);
    void write();
    void writeOrReplace();
    void moveAside(const std::exception& reason, std::unique_ptr<Connection> file);
    std::chrono::milliseconds patience() const;
    bool pending() const;
    void failed(const std::exception& reason);
    void succeeded();

    StoreFile file_;
    Logger& logger_;
    std::vector<Table*> tables_;
    std::unique_ptr<Connection> connection_;
    int dataVersion_ = 0; // SQLite's; differs when another process wrote
    std::vector<Marks> scopes_;
    std::function<void()> onSettled_;
    bool finishing_ = false;
    bool failing_ = false;
    std::string problem_;
    std::chrono::milliseconds pause_{};
    Steady::time_point nextTry_{};
};

} // namespace vx::services
