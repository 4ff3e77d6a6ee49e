#include "services/core/Outbox.h"

#include <algorithm>

#include <SQLiteCpp/VariadicBind.h>

namespace vx::services {

Outbox::Outbox(Database& database) : database_(database) {
    database.add(*this);
}

void Outbox::add(std::string_view url, std::string_view body, std::uint64_t now) {
    changed_.push_back(nextNumber_);
    requests_.push_back({nextNumber_++, 0, std::string(url), std::string(body), now, now});
    database_.changed();
}

void Outbox::postpone(std::uint64_t number, std::uint64_t nextTry) {
    Request* request = find(number);
    if (!request)
        return;
    request->nextTry = nextTry;
    ++request->attempts;
    changed_.push_back(number);
    database_.changed();
}

void Outbox::remove(std::uint64_t number) {
    Request* request = find(number);
    if (!request)
        return;
    if (request->isStored())
        removed_.push_back(request->id);
    std::erase(changed_, number);
    requests_.erase(requests_.begin() + (request - &requests_.front()));
    database_.changed();
}

Outbox::Request* Outbox::find(std::uint64_t number) {
    const auto found = std::ranges::lower_bound(requests_, number, {}, &Request::number);
    return found != requests_.end() && found->number == number ? &*found : nullptr;
}

void Outbox::rollBack(std::size_t mark) {
    while (!requests_.empty() && requests_.back().number >= mark)
        requests_.pop_back();
    std::erase_if(changed_, [&](std::uint64_t number) { return number >= mark; });
}

const char* Outbox::schema() const {
    return "CREATE TABLE outbox (id INTEGER PRIMARY KEY AUTOINCREMENT, url TEXT NOT NULL, "
           "body TEXT NOT NULL, created INTEGER NOT NULL, next_try INTEGER NOT NULL, "
           "attempts INTEGER NOT NULL)";
}

// Requests that are in memory alone come after those that the file holds.
void Outbox::load(Connection& file) {
    std::deque<Request> loaded;
    SQLite::Statement rows(
        file, "SELECT id, url, body, created, next_try, attempts FROM outbox ORDER BY id");
    while (rows.executeStep())
        loaded.push_back({nextNumber_++, rows.getColumn(0).getInt64(),
                          rows.getColumn(1).getString(), rows.getColumn(2).getString(),
                          static_cast<std::uint64_t>(rows.getColumn(3).getInt64()),
                          static_cast<std::uint64_t>(rows.getColumn(4).getInt64()),
                          rows.getColumn(5).getInt()});
    changed_.clear();
    std::erase_if(requests_, [](const Request& request) { return request.isStored(); });
    for (Request& request : requests_) {
        request.number = nextNumber_++;
        request.underWay = false; // its answer will not be recognised, so it is posted again
        changed_.push_back(request.number);
        loaded.push_back(std::move(request));
    }
    requests_.swap(loaded);
}

void Outbox::write(Connection& file, Contents) {
    stored_.clear();
    SQLite::Statement& removal = file.prepared("DELETE FROM outbox WHERE id = ?");
    for (std::int64_t id : removed_) {
        removal.bind(1, id);
        removal.exec();
        removal.reset();
    }
    std::ranges::sort(changed_);
    changed_.erase(std::unique(changed_.begin(), changed_.end()), changed_.end());
    for (std::uint64_t number : changed_)
        write(file, *find(number));
}

void Outbox::write(Connection& file, const Request& request) {
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

void Outbox::lost() {
    removed_.clear();
    changed_.clear();
    for (Request& request : requests_) {
        request.id = 0;
        changed_.push_back(request.number);
    }
}

} // namespace vx::services
