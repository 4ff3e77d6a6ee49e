// The waiting requests in memory, and the list of what the file does not hold yet.

#include "vxprivacy/services/core/Outbox.h"

#include <algorithm>

#include <SQLiteCpp/VariadicBind.h>

namespace vx::services {

namespace {

WaitingRequests rowsOf(Connection& file) {
    WaitingRequests requests;
    SQLite::Statement rows(
        file, "SELECT id, url, body, created, next_try, attempts FROM outbox ORDER BY id");
    while (rows.executeStep())
        requests.push_back({0, rows.getColumn(0).getInt64(), rows.getColumn(1).getString(),
                            rows.getColumn(2).getString(),
                            static_cast<std::uint64_t>(rows.getColumn(3).getInt64()),
                            static_cast<std::uint64_t>(rows.getColumn(4).getInt64()),
                            rows.getColumn(5).getInt()});
    return requests;
}

} // namespace

Outbox::Outbox(Database& database) : database_(database) {
    database.add(*this);
}

void Outbox::add(std::string_view url, std::string_view body, std::uint64_t now) {
    changed_.push_back(nextNumber_);
    requests_.push_back({nextNumber_++, 0, std::string(url), std::string(body), now, now});
    database_.changed();
}

void Outbox::postpone(std::uint64_t number, std::uint64_t nextTry) {
    WaitingRequest* request = find(number);
    if (!request)
        return;
    request->nextTry = nextTry;
    ++request->attempts;
    changed_.push_back(number);
    database_.changed();
}

void Outbox::remove(std::uint64_t number) {
    const WaitingRequest* request = find(number);
    if (!request)
        return;
    if (request->isStored())
        removed_.push_back({request->id, request->created});
    std::erase(changed_, number);
    requests_.remove_if(
        [&](const WaitingRequest& candidate) { return candidate.number == number; });
    database_.changed();
}

WaitingRequest* Outbox::find(std::uint64_t number) {
    const auto found = std::ranges::find(requests_, number, &WaitingRequest::number);
    return found != requests_.end() ? &*found : nullptr;
}

bool Outbox::mayBePosted(const WaitingRequest& request) const {
    return request.isStored() || (database_.failing() && !database_.inScope());
}

void Outbox::rollBack(std::size_t mark) {
    requests_.remove_if([&](const WaitingRequest& request) { return request.number >= mark; });
    std::erase_if(changed_, [&](std::uint64_t number) { return number >= mark; });
}

const char* Outbox::schema() const {
    return "CREATE TABLE outbox (id INTEGER PRIMARY KEY AUTOINCREMENT, url TEXT NOT NULL, "
           "body TEXT NOT NULL, created INTEGER NOT NULL, next_try INTEGER NOT NULL, "
           "attempts INTEGER NOT NULL)";
}

// Requests that are in memory alone come after those that the file holds.
void Outbox::load(Connection& file) {
    WaitingRequests loaded = rowsOf(file);
    std::erase_if(loaded, [this](const WaitingRequest& row) {
        return std::ranges::find(removed_, Row{row.id, row.created}) != removed_.end();
    });
    for (WaitingRequest& row : loaded)
        takeOver(row);
    for (WaitingRequest& request : requests_) {
        request.id = 0;
        changed_.push_back(request.number);
    }
    loaded.splice(loaded.end(), requests_);
    requests_.swap(loaded);
}

// A request that is in memory already may be under way, and knows better when it is tried next.
void Outbox::takeOver(WaitingRequest& row) {
    const auto known = std::ranges::find_if(requests_, [&](const WaitingRequest& request) {
        return request.id == row.id && request.created == row.created;
    });
    if (known == requests_.end()) {
        row.number = nextNumber_++;
        return;
    }
    row = std::move(*known);
    requests_.erase(known);
}

void Outbox::write(Connection& file, Contents) {
    stored_.clear();
    SQLite::Statement& removal = file.prepared("DELETE FROM outbox WHERE id = ? AND created = ?");
    for (const Row& row : removed_) {
        SQLite::bind(removal, row.id, static_cast<std::int64_t>(row.created));
        removal.exec();
        removal.reset();
    }
    std::ranges::sort(changed_);
    changed_.erase(std::unique(changed_.begin(), changed_.end()), changed_.end());
    for (std::uint64_t number : changed_)
        write(file, *find(number));
}

void Outbox::write(Connection& file, const WaitingRequest& request) {
    const auto created = static_cast<std::int64_t>(request.created);
    const auto nextTry = static_cast<std::int64_t>(request.nextTry);
    if (request.isStored()) {
        SQLite::Statement& update =
            file.prepared("UPDATE outbox SET next_try = ?, attempts = ? WHERE id = ?");
        SQLite::bind(update, nextTry, request.attempts, request.id);
        update.exec();
        return;
    }
    SQLite::Statement& insertion =
        file.prepared("INSERT INTO outbox (url, body, created, next_try, attempts) "
                      "VALUES (?, ?, ?, ?, ?)");
    SQLite::bind(insertion, request.url, request.body, created, nextTry, request.attempts);
    insertion.exec();
    stored_.emplace_back(request.number, file.getLastInsertRowid());
}

void Outbox::written() {
    for (const auto& [number, id] : stored_)
        find(number)->id = id;
    stored_.clear();
    changed_.clear();
    removed_.clear();
}

// What the file held waits to be written again; whoever finds that file may post it too.
void Outbox::disconnected() {
    removed_.clear();
    changed_.clear();
    for (WaitingRequest& request : requests_) {
        request.id = 0;
        changed_.push_back(request.number);
    }
}

} // namespace vx::services
