#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "services/core/Database.h"

namespace vx::services {

/// The last document downloaded for each configuration file. Texts stay in the file, not in memory.
class OfflineCopies : private Table {
public:
    struct Copy {
        std::string_view text;
        /// The address that it came from, and the entity tag that it had there.
        std::string_view address;
        std::string_view etag;
    };

    explicit OfflineCopies(Database& database);

    /// Hands the copy kept under `name` to `use`, which may look at it until it returns; without
    /// one, or where it cannot be read, `use` is not called.
    void read(const std::string& name, const std::function<void(const Copy&)>& use);
    /// Puts `copy` in place of the one kept under `name`.
    void replace(std::string name, const Copy& copy);

private:
    struct Replacement {
        std::string name, text, address, etag;
    };

    const char* schema() const override;
    void load(Connection&) override {}
    bool pending() const override { return !replacements_.empty(); }
    std::size_t mark() const override { return replacements_.size(); }
    void rollBack(std::size_t mark) override { replacements_.resize(mark); }
    void write(Connection& file, Contents contents) override;
    void written() override { replacements_.clear(); }
    void lost() override {}

    Database& database_;
    std::vector<Replacement> replacements_; // not yet in the file
};

} // namespace vx::services
