#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/services/core/Database.h"

namespace vx::services {

/// The document last used of each configuration file that is downloaded. Texts stay in the file,
/// not in memory.
class OfflineCopies : private Table {
public:
    struct Copy {
        std::string_view text;
        /// The address that it came from, and the entity tag that it had there; both are empty when
        /// it shipped with the application.
        std::string_view address;
        std::string_view etag;
    };

    explicit OfflineCopies(Database& database);

    /// Hands the copy kept under `name` to `use`, which may look at it until it returns; without
    /// one, or where it cannot be read, `use` is not called.
    void read(const std::string& name, const std::function<void(const Copy&)>& use);
    /// Puts `copy` in place of the one kept under `name`.
    void replace(const std::string& name, const Copy& copy);
    /// Keeps `copy` under `name` unless the file has one there, which may show only when the file
    /// can be opened.
    void keepIfAbsent(const std::string& name, const Copy& copy);

private:
    struct Change {
        std::string name, text, address, etag;
        const char* verb = ""; // SQL's
    };

    const char* schema() const override;
    void load(Connection& file) override;
    bool pending() const override { return !changes_.empty(); }
    std::size_t mark() const override { return changes_.size(); }
    void rollBack(std::size_t mark) override { changes_.resize(mark); }
    void write(Connection& file, Contents contents) override;
    void written() override { changes_.clear(); }
    void lost() override {}

    void change(const char* verb, const std::string& name, const Copy& copy);

    Database& database_;
    std::vector<Change> changes_; // not yet in the file
};

} // namespace vx::services
