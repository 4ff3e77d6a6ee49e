#pragma once

#include <new>

#include "vxprivacy/c/vxprivacy.h"

namespace vx::c {

/// Thrown inside of the library only: the caller's mistake.
struct Misuse {
    vx_result result;
};

inline void require(bool condition, vx_result otherwise) {
    if (!condition)
        throw Misuse{otherwise};
}

/// Where the caller wants a result.
template <class T>
T& outOf(T* place) {
    require(place != nullptr, VX_INVALID_ARGUMENT);
    return *place;
}

/// Runs `action`, past which no exception goes.
template <class Action>
vx_result guarded(Action action) noexcept {
    try {
        action();
        return VX_OK;
    } catch (const Misuse& misuse) {
        return misuse.result;
    } catch (const std::bad_alloc&) {
        return VX_NO_MEMORY;
    } catch (...) {
        return VX_FAILED;
    }
}

} // namespace vx::c
