#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx {

KeyValueStoreObserver::~KeyValueStoreObserver() = default;

KeyValueStore::~KeyValueStore() = default;

void KeyValueStore::setIfAbsent(std::string_view key, std::string_view value) {
    if (!get(key))
        set(key, value);
}

void KeyValueStore::standBy(std::string_view, std::string_view) {}

void KeyValueStore::setObserver(KeyValueStoreObserver*) {}

StoreTransaction::StoreTransaction(KeyValueStore& store) : store_(store) {
    store_.beginTransaction();
}

StoreTransaction::~StoreTransaction() {
    if (open_)
        store_.rollBackTransaction();
}

void StoreTransaction::commit() {
    open_ = false;
    store_.commitTransaction();
}

} // namespace vx
