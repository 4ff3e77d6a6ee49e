#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "vxprivacy/services/core/Connection.h"

namespace vx::services {

/// The store's file as the file system sees it: its directory, its permissions, and whether it is
/// ours at all.
///
/// All may throw what SQLite or the file system has to say.
class StoreFile {
public:
    explicit StoreFile(const std::filesystem::path& path);

    /// A connection to the file, which is made, with its directory, when it is not there. Only the
    /// user may read it.
    std::unique_ptr<Connection> connect();
    /// Sees that what was connected to is ours and can be read, and says how SQLite is to keep it.
    void check(Connection& file) const;
    /// Marks an empty file as ours.
    static void claim(SQLite::Database& database);

    /// Gives the file another name, which nothing has yet, and says which; nothing where another
    /// process did so since it was connected to. Ends the connection: Windows moves no open file.
    std::optional<std::filesystem::path> moveAside(std::unique_ptr<Connection> file);

    /// Whether what SQLite said when it read the file means that the file itself is at fault: it is
    /// damaged or belongs to another program.
    static bool meansDamage(const SQLite::Exception& problem);

    const std::filesystem::path& path() const { return path_; }

private:
    void makeDirectory();
    void tighten() const;
    std::filesystem::path reserveName() const;
    std::filesystem::path beside(std::string_view suffix) const;

    std::filesystem::path path_;
    bool hasGarbageLog_ = false; // when it was connected to
};

} // namespace vx::services
