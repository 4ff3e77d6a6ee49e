#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// The module's memory between two runs: text entries under text keys, both UTF-8.
///
/// Called on the application's thread only, so an implementation needs no lock. Nothing throws:
/// what cannot be written stays readable, is logged, and is written when it can be.
class KeyValueStore {
public:
    virtual ~KeyValueStore();

    /// The entry under `key`, or nothing when there is none. Never waits for the disk.
    virtual std::optional<std::string> get(std::string_view key) const = 0;

    /// Puts `value` under `key`, at once for readers. Durable when the outermost open transaction
    /// is committed, or on return when none is open.
    virtual void set(std::string_view key, std::string_view value) = 0;
    /// Takes the entry under `key` away, with the same durability; there need not be one.
    virtual void remove(std::string_view key) = 0;

    /// Transactions nest; only the outermost one reaches the disk, whole or not at all. Opened and
    /// closed through `StoreTransaction`.
    virtual void beginTransaction() = 0;
    virtual void commitTransaction() = 0;
    /// Takes back everything set since the matching `beginTransaction`.
    virtual void rollBackTransaction() = 0;
};

/// A span of store writes that takes effect as one. Rolls back unless committed.
class StoreTransaction {
public:
    explicit StoreTransaction(KeyValueStore& store);
    ~StoreTransaction();
    StoreTransaction(const StoreTransaction&) = delete;
    StoreTransaction& operator=(const StoreTransaction&) = delete;

    /// Makes the writes durable (or part of the enclosing transaction). To be called once, last.
    void commit();

private:
    KeyValueStore& store_;
    bool open_ = true;
};

} // namespace vx
