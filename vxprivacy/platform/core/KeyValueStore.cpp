#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx {

KeyValueStore::~KeyValueStore() = default;

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
