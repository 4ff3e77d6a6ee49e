#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

/// A dictionary from text to `Value` that is enumerated in the order in which its keys were first
/// set. Look-up takes constant time. References to values stay valid while the dictionary lives.
template <class Value>
class OrderedDictionary {
public:
    /// A key and its value.
    using Entry = std::pair<const std::string, Value>;

    OrderedDictionary() = default;
    /// Of these entries, in this order; a key that comes twice keeps its place and has the last
    /// value.
    OrderedDictionary(std::initializer_list<Entry> entries) { insertAll(entries); }
    /// Copies; references into `other` stay valid.
    OrderedDictionary(const OrderedDictionary& other)
        : entries_(other.entries_ ? std::make_unique<Entries>(*other.entries_) : nullptr),
          slots_(other.slots_) {}
    /// Moves, and leaves the other one empty; references to its values are valid here.
    OrderedDictionary(OrderedDictionary&&) noexcept = default;
    /// Takes over what `other` has.
    OrderedDictionary& operator=(OrderedDictionary other) noexcept {
        entries_.swap(other.entries_);
        slots_.swap(other.slots_);
        return *this;
    }
    ~OrderedDictionary() = default;

    /// Sets the value of `key`; a key that is there already keeps its place.
    void set(std::string_view key, Value value) {
        if (2 * size() >= slots_.size())
            grow();
        const std::uint32_t hash = hashOf(key);
        Slot& slot = slots_[placeOf(key, hash)];
        if (slot.number != 0) {
            (*entries_)[slot.number - 1].second = std::move(value);
            return;
        }
        if (!entries_)
            entries_ = std::make_unique<Entries>();
        entries_->emplace_back(std::string(key), std::move(value));
        slot = {hash, static_cast<std::uint32_t>(size())};
    }

    /// The value of `key`, or null when there is none.
    Value* find(std::string_view key) {
        const std::size_t number = numberOf(key);
        return number == 0 ? nullptr : &(*entries_)[number - 1].second;
    }
    const Value* find(std::string_view key) const {
        const std::size_t number = numberOf(key);
        return number == 0 ? nullptr : &(*entries_)[number - 1].second;
    }

    /// Whether there is a value of `key`.
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    /// The number of entries.
    bool empty() const { return size() == 0; }
    std::size_t size() const { return entries_ ? entries_->size() : 0; }
    auto begin() const { return entries_ ? entries_->begin() : Iterator(); }
    auto end() const { return entries_ ? entries_->end() : Iterator(); }

    friend bool operator==(const OrderedDictionary& left, const OrderedDictionary& right) {
        return std::ranges::equal(left, right);
    }

private:
    using Entries = std::deque<Entry>; // so that values stay where they are
    using Iterator = typename Entries::const_iterator;

    void insertAll(std::initializer_list<Entry> entries) {
        for (const auto& [key, value] : entries)
            set(key, value);
    }

    // Of an open hash table: each entry's hash beside its number, so that a look-up reads few keys
    // and growing none. Screens have thousands of names, more than the processor's cache holds.
    // With std::unordered_map a screen of 3,000 rows takes 1.3 times as long (median of seven runs
    // in turns, Intel Xeon, 2 MiB of second-level cache).
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; // counted from 1; 0: free
    };

    static std::uint32_t hashOf(std::string_view key) {
        return static_cast<std::uint32_t>(std::hash<std::string_view>{}(key));
    }

    // Where the key is, or the free slot where it belongs; there always is a free one.
    std::size_t placeOf(std::string_view key, std::uint32_t hash) const {
        std::size_t place = hash & (slots_.size() - 1);
        while (slots_[place].number != 0 && !holds(slots_[place], key, hash))
            place = (place + 1) & (slots_.size() - 1);
        return place;
    }

    bool holds(const Slot& slot, std::string_view key, std::uint32_t hash) const {
        return slot.hash == hash && (*entries_)[slot.number - 1].first == key;
    }

    // The number of the entry with this key; 0: none.
    std::size_t numberOf(std::string_view key) const {
        return slots_.empty() ? 0 : slots_[placeOf(key, hashOf(key))].number;
    }

    void grow() {
        std::vector<Slot> grown(slots_.empty() ? 8 : 2 * slots_.size()); // a power of 2
        for (const Slot& slot : slots_) {
            std::size_t place = slot.hash & (grown.size() - 1);
            while (slot.number != 0 && grown[place].number != 0)
                place = (place + 1) & (grown.size() - 1);
            if (slot.number != 0)
                grown[place] = slot;
        }
        slots_ = std::move(grown);
    }

    // Null while there are none, since even an empty deque holds 600 bytes.
    std::unique_ptr<Entries> entries_;
    std::vector<Slot> slots_; // half of them free at least
};

/// Consent keys ("PRIVACY_CAT_3") to consent values ("1" accepted, "0" refused).
using ConsentDictionary = OrderedDictionary<std::string>;

} // namespace vx
