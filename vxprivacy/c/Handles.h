#pragma once

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "vxprivacy/c/Guard.h"

namespace vx::c {

/// Owns the objects of one kind that callers hold by pointers, and knows a pointer that is none of
/// them. Any thread.
template <class T>
class Handles {
public:
    T* add(std::unique_ptr<T> object) {
        const std::lock_guard lock(mutex_);
        return objects_.emplace_back(std::move(object)).get();
    }
    /// Throws `Misuse` where `handle` is none.
    T& operator[](const T* handle) {
        const std::lock_guard lock(mutex_);
        return **find(handle);
    }
    std::unique_ptr<T> remove(const T* handle) {
        const std::lock_guard lock(mutex_);
        auto found = find(handle);
        std::unique_ptr<T> object = std::move(*found);
        objects_.erase(found);
        return object;
    }

    bool empty() {
        const std::lock_guard lock(mutex_);
        return objects_.empty();
    }

private:
    auto find(const T* handle) {
        auto found = std::ranges::find(objects_, handle, &std::unique_ptr<T>::get);
        require(found != objects_.end(), VX_INVALID_HANDLE);
        return found;
    }

    std::mutex mutex_;
    std::vector<std::unique_ptr<T>> objects_;
};

/// The handles of the process. Never destroyed: what a caller forgot to end must not end after the
/// rest of the program.
template <class T>
Handles<T>& handles() {
    static auto& all = *new Handles<T>;
    return all;
}

} // namespace vx::c
