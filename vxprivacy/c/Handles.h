#pragma once

#include <algorithm>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "vxprivacy/c/Guard.h"

namespace vx::c {

/// Owns the objects of one kind that callers hold by pointers, and knows a pointer that is none of
/// them. An object belongs to the thread that added it, which alone may use and remove it: so
/// nobody holds one that goes. Any thread.
template <class T>
class Handles {
public:
    T* add(std::unique_ptr<T> object) {
        const std::lock_guard lock(mutex_);
        return entries_.emplace_back(std::move(object)).object.get();
    }
    /// Throws `Misuse` where `handle` is none, or another thread's.
    T& operator[](const T* handle) {
        const std::lock_guard lock(mutex_);
        return *find(handle)->object;
    }
    /// The same.
    std::unique_ptr<T> remove(const T* handle) {
        const std::lock_guard lock(mutex_);
        const auto found = find(handle);
        std::unique_ptr<T> object = std::move(found->object);
        entries_.erase(found);
        return object;
    }

private:
    struct Entry {
        explicit Entry(std::unique_ptr<T> added) : object(std::move(added)) {}

        std::unique_ptr<T> object;
        std::thread::id thread = std::this_thread::get_id();
    };

    auto find(const T* handle) {
        const auto found = std::ranges::find_if(
            entries_, [&](const Entry& entry) { return entry.object.get() == handle; });
        require(found != entries_.end(), VX_INVALID_HANDLE);
        require(found->thread == std::this_thread::get_id(), VX_WRONG_THREAD);
        return found;
    }

    std::mutex mutex_;
    std::vector<Entry> entries_; // guarded by mutex_
};

/// The handles of the process. Never destroyed: what a caller forgot to end must not end after the
/// rest of the program.
template <class T>
Handles<T>& handles() {
    static auto& all = *new Handles<T>;
    return all;
}

} // namespace vx::c
