#pragma once

#include <cstddef>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace vx {

/// A dictionary from text to `Value` that is enumerated in the order in which its keys were first
/// set. Look-up takes constant time. References to values stay valid while the dictionary lives.
template <class Value>
class OrderedDictionary {
public:
    using Entry = std::pair<const std::string, Value>;

    OrderedDictionary() = default;
    OrderedDictionary(std::initializer_list<Entry> entries) { insertAll(entries); }
    OrderedDictionary(const OrderedDictionary& other) { insertAll(other); }
    OrderedDictionary(OrderedDictionary&&) noexcept = default;
    OrderedDictionary& operator=(OrderedDictionary other) noexcept {
        entries_.swap(other.entries_);
        index_.swap(other.index_);
        return *this;
    }
    ~OrderedDictionary() = default;

    /// Sets the value of `key`; a key that is there already keeps its place.
    void set(std::string_view key, Value value) {
        if (Value* present = find(key)) {
            *present = std::move(value);
            return;
        }
        Entry& entry = entries_.emplace_back(std::string(key), std::move(value));
        index_.emplace(entry.first, &entry.second);
    }

    /// The value of `key`, or null when there is none.
    Value* find(std::string_view key) {
        auto found = index_.find(key);
        return found == index_.end() ? nullptr : found->second;
    }
    const Value* find(std::string_view key) const {
        auto found = index_.find(key);
        return found == index_.end() ? nullptr : found->second;
    }

    bool contains(std::string_view key) const { return find(key) != nullptr; }
    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    friend bool operator==(const OrderedDictionary& left, const OrderedDictionary& right) {
        return left.entries_ == right.entries_;
    }

private:
    template <class Entries>
    void insertAll(const Entries& entries) {
        for (const auto& [key, value] : entries)
            set(key, value);
    }

    std::deque<Entry> entries_; // a deque, so that the keys that index_ views never move
    std::unordered_map<std::string_view, Value*> index_;
};

/// Consent keys ("PRIVACY_CAT_3") to consent values ("1" accepted, "0" refused).
using ConsentDictionary = OrderedDictionary<std::string>;

} // namespace vx
