#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string_view>

#include <SQLiteCpp/SQLiteCpp.h>

namespace vx::services {

/// A connection to the store's file. It stays where it is in memory.
class Connection : public SQLite::Database {
public:
    /// Connects to `file`, which must be there and no link. It waits for no other process until it
    /// is given patience, and leaves SQLite's log as it is when it closes. May throw.
    explicit Connection(const std::filesystem::path& file);

    /// How long, from now on and over all statements, it waits for other processes.
    void setPatience(std::chrono::milliseconds patience);
    /// The file is in order: SQLite's log may be worked in when the connection closes.
    void trust();

    /// Whether the path leads to another file than the one connected to, or to none.
    bool hasMoved() const;
    /// Whether the file's header names a later format of writing: SQLite reads such a file and
    /// never writes it.
    bool isOfLaterFormat() const;

    /// The statement of this text (a literal), ready to be bound; it is kept, for preparing takes
    /// longer than running. Another call for the same text gives the same one. May throw.
    SQLite::Statement& prepared(const char* sql);

private:
    static int waitForOthers(void* connection, int count);

    std::map<std::string_view, SQLite::Statement> statements_;
    std::chrono::steady_clock::time_point deadline_ = std::chrono::steady_clock::now();
};

} // namespace vx::services
