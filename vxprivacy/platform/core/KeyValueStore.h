#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// Hears when entries change that this process did not set: another process, which shares the
/// store, saved, or the store can be read at last. Application's thread.
class VXPRIVACY_EXPORT KeyValueStoreObserver {
public:
    virtual ~KeyValueStoreObserver();

    /// The entries are about to change: what is asked now is still the old. May come several times,
    /// in the middle of a commit; nothing may be set.
    virtual void entriesWillChange() = 0;
    /// They changed. Comes after that, once, outside of any transaction.
    virtual void entriesChanged() = 0;
};

/// The door to the module's memory between two runs: text entries under text keys, both UTF-8.
///
/// Called on the application's thread only, so an implementation needs no lock. Nothing throws:
/// what cannot be written stays readable, is logged, and is written when it can be. Any text may be
/// a key, the empty one included, and the empty text is a value like any other.
class VXPRIVACY_EXPORT KeyValueStore {
public:
    virtual ~KeyValueStore();

    /// The entry under `key`, or nothing when there is none. Never waits for the disk: screens and
    /// saves ask for thousands of entries.
    virtual std::optional<std::string> get(std::string_view key) const = 0;

    /// Puts `value` under `key`, in place of what was there. `get` gives it at once. Durable when
    /// the outermost open transaction is committed, or on return when none is open.
    virtual void set(std::string_view key, std::string_view value) = 0;
    /// Takes the entry under `key` away, with the same durability; there need not be one.
    virtual void remove(std::string_view key) = 0;

    // What only a store has to mind that other processes share, or that cannot always be read.

    /// Sets `key` where it has no entry. A store that learns later that it had one keeps that. As
    /// it stands: looks and sets.
    virtual void setIfAbsent(std::string_view key, std::string_view value);
    /// Says that what is set in this transaction goes with the entry `key` at `value`, though it
    /// need not be set. A store sets it so where another process changed the entry since this
    /// process read it, lest two saves mix. As it stands: nothing.
    virtual void standBy(std::string_view key, std::string_view value);
    /// Who hears of other processes' changes, in place of an earlier one; null: nobody. It must be
    /// taken out before it dies. As it stands: nothing, for such changes do not come.
    virtual void setObserver(KeyValueStoreObserver* observer);

    // Transactions nest. Only the outermost one reaches the disk, whole or not at all. They are
    // opened and closed through `StoreTransaction`, the last opened first.

    virtual void beginTransaction() = 0;
    /// Of the outermost transaction: what was set is durable when this returns. Of an inner one:
    /// what was set belongs to the transaction around it.
    virtual void commitTransaction() = 0;
    /// Takes back everything set and removed since the matching `beginTransaction`, committed inner
    /// transactions included.
    virtual void rollBackTransaction() = 0;
};

/// A span of store writes that takes effect as one. It is rolled back where it ends, unless it was
/// committed before:
///
///     StoreTransaction transaction(store);
///     store.set("PRIVACY_CAT_1", "1");
///     store.set("SAVED_CATEGORIES", "PRIVACY_CAT_1;");
///     transaction.commit();   // on disk: both or neither
class VXPRIVACY_EXPORT StoreTransaction {
public:
    /// Begins. `store` must outlive the transaction.
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
