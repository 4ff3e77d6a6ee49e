#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/services/core/Database.h"
#include "vxprivacy/services/core/PostingOrder.h"

namespace vx::services {

/// The requests that wait to be posted, oldest first. One that was added is in the file once its
/// scope is committed, and stays there until it is removed.
///
/// Rolling a scope back takes back what was added in it, and nothing else: a request that was
/// delivered or tried stays so.
class Outbox : private Table {
public:
    explicit Outbox(Database& database);

    /// Adds a request, to be tried at once.
    void add(std::string_view url, std::string_view body, std::uint64_t now);
    void postpone(std::uint64_t number, std::uint64_t nextTry);
    void remove(std::uint64_t number);

    /// The request of this number; null when it was removed. It stays where it is until then.
    WaitingRequest* find(std::uint64_t number);
    WaitingRequests& requests() { return requests_; }
    /// Whether the request is as safe as can be: in the file, or refused by it for now. One that
    /// was added in an open scope is not.
    bool mayBePosted(const WaitingRequest& request) const;

private:
    const char* schema() const override;
    void load(Connection& file) override;
    bool pending() const override { return !changed_.empty() || !removed_.empty(); }
    std::size_t mark() const override { return static_cast<std::size_t>(nextNumber_); }
    void rollBack(std::size_t mark) override;
    void write(Connection& file, Contents contents) override;
    void written() override;
    void disconnected() override;
    void lost() override { disconnected(); }

    struct Row { // of the file; another file may have the same id
        std::int64_t id;
        std::uint64_t created;
        bool operator==(const Row&) const = default;
    };

    void takeOver(WaitingRequest& row);
    void write(Connection& file, const WaitingRequest& request);

    Database& database_;
    WaitingRequests requests_;
    std::uint64_t nextNumber_ = 1;
    std::vector<std::uint64_t> changed_; // numbers of requests that the file does not hold so
    std::vector<Row> removed_;           // those that the file still holds
    std::vector<std::pair<std::uint64_t, std::int64_t>> stored_; // numbers and ids of this writing
};

} // namespace vx::services
