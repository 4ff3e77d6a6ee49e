#pragma once

#include "vxprivacy/engine/EngineState.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"

namespace vx {

/// A span of store writes in which the decision may change. Rolled back, because a callback threw,
/// it takes the decision back as well: the next one would else be none that changes anything, and
/// never be stored. What the tag SDK was told stays told.
class DecisionTransaction {
public:
    /// Begins. `state` must outlive the transaction.
    explicit DecisionTransaction(EngineState& state)
        : transaction_(VXUserDefaults::transaction()), state_(state), before_(state.privacyState) {}
    ~DecisionTransaction() {
        if (!committed_)
            state_.privacyState = before_;
    }
    DecisionTransaction(const DecisionTransaction&) = delete;
    DecisionTransaction& operator=(const DecisionTransaction&) = delete;

    /// As `StoreTransaction::commit`.
    void commit() {
        transaction_.commit();
        committed_ = true;
    }

private:
    StoreTransaction transaction_;
    EngineState& state_;
    const PrivacyState before_;
    bool committed_ = false;
};

} // namespace vx
