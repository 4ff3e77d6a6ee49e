#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "services/core/Database.h"

namespace vx::services {

/// The requests that wait to be posted, oldest first. One that was added is in the file once its
/// scope is committed, and stays there until it is removed.
///
/// Only adding is part of a scope. That a request was delivered or tried is true whatever becomes
/// of the scope in which it was noted.
class Outbox : private Table {
public:
    struct Request {
        std::uint64_t number; // in this process
        std::int64_t id;      // in the file; 0 while it is not there
        std::string url;
        std::string body;
        std::uint64_t created; // milliseconds since 1970, like the next one
        std::uint64_t nextTry;
        int attempts = 0;
        bool underWay = false;
        bool letsPass = false; // while it waits, later ones may go first

        bool isStored() const { return id != 0; }
    };

    explicit Outbox(Database& database);

    /// Adds a request, to be tried at once.
    void add(std::string_view url, std::string_view body, std::uint64_t now);
    void postpone(std::uint64_t number, std::uint64_t nextTry);
    void remove(std::uint64_t number);

    /// The request of this number; null when it was removed.
    Request* find(std::uint64_t number);
    std::deque<Request>& requests() { return requests_; }

private:
    const char* schema() const override;
    void load(Connection& file) override;
    bool pending() const override { return !changed_.empty() || !removed_.empty(); }
    std::size_t mark() const override { return nextNumber_; }
    void rollBack(std::size_t mark) override;
    void write(Connection& file, Contents contents) override;
    void written() override;
    void lost() override;

    void write(Connection& file, const Request& request);

    Database& database_;
    std::deque<Request> requests_; // by number
    std::uint64_t nextNumber_ = 1;
    std::vector<std::uint64_t> changed_; // numbers of requests that the file does not hold so
    std::vector<std::int64_t> removed_;  // ids that the file still holds
    std::vector<std::pair<std::uint64_t, std::int64_t>> stored_; // numbers and ids of this writing
};

} // namespace vx::services
