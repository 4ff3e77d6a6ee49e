#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "services/core/Connection.h"

namespace vx::services {

/// The store's file as the file system sees it: its directory, its permissions, and whether it is
/// ours at all.
class StoreFile {
public:
    explicit StoreFile(const std::filesystem::path& path);

    /// A connection to the file, which is made, with its directory, when it is not there. Only the
    /// user may read it. Throws what SQLite or the file system has to say; what `meansDamage` calls
    /// damage can be cured by `moveAside`.
    std::unique_ptr<Connection> connect();

    /// Marks an empty file as ours.
    static void claim(SQLite::Database& database);

    /// Gives the file another name, which nothing has yet. Where another process replaced the file
    /// since it was connected to, there is nothing to do. Throws where it cannot.
    std::filesystem::path moveAside();

    /// Whether the file itself is at fault: it is damaged or belongs to another program.
    static bool meansDamage(const SQLite::Exception& problem);

    const std::filesystem::path& path() const { return path_; }

private:
    void makeDirectory();
    void makeFile();
    void tighten() const;
    std::filesystem::path reserveName() const;
    std::filesystem::path beside(std::string_view suffix) const;

    std::filesystem::path path_;
    ino_t connected_ = 0; // the file that the last connection was made to
};

} // namespace vx::services
