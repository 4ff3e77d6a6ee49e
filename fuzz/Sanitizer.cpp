// What AddressSanitizer keeps of each piece of memory, as little as runs need: the inputs are
// small, and the whole stack of an allocation costs more than the allocation. To see it, run a
// failed input again with ASAN_OPTIONS=malloc_context_size=30.

extern "C" const char* __asan_default_options(); // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __asan_default_options() {
    return "malloc_context_size=1:quarantine_size_mb=16:detect_stack_use_after_return=0";
}
