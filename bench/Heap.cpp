#include "bench/Heap.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

std::atomic<std::size_t> count;

} // namespace

void* operator new(std::size_t size) {
    count.fetch_add(1, std::memory_order_relaxed);
    if (void* piece = std::malloc(size != 0 ? size : 1))
        return piece;
    throw std::bad_alloc();
}

void operator delete(void* piece) noexcept {
    std::free(piece);
}

void operator delete(void* piece, std::size_t) noexcept {
    std::free(piece);
}

namespace vx::bench {

std::size_t allocationCount() {
    return count;
}

std::size_t bytesInUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void tidyUpHeap() {
    benchmark::DoNotOptimize(std::make_unique<char[]>(100'000));
}

} // namespace vx::bench
