// The C library's allocation functions, replaced in the program so that each one
// counts and hands on to the C library's own implementation. glibc makes its
// internal allocations (strdup, stdio buffers, ...) through the replaced malloc,
// and every operator new (libstdc++'s, and the copy linked statically into
// Kalvora.xpl) ends in malloc, so nothing that reaches the heap goes uncounted.
#include "support/CountingAllocator.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

namespace {
std::atomic<long> gAllocations{0};
} // namespace

long kalvora_bench::HeapAllocations() {
    return gAllocations.load(std::memory_order_relaxed);
}

// A sanitizer brings its own allocator in place of the C library's: nothing is replaced there.
#if !defined(__SANITIZE_ADDRESS__)
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* p, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void* __libc_valloc(size_t size);
void* __libc_pvalloc(size_t size);
void __libc_free(void* p);
}

namespace {
void* Counted(void* p) {
    if (p) gAllocations.fetch_add(1, std::memory_order_relaxed);
    return p;
}
} // namespace

extern "C" {
void* malloc(size_t size) {
    return Counted(__libc_malloc(size));
}
void* calloc(size_t count, size_t size) {
    return Counted(__libc_calloc(count, size));
}
void* realloc(void* p, size_t size) {
    return Counted(__libc_realloc(p, size));
}
void* memalign(size_t alignment, size_t size) {
    return Counted(__libc_memalign(alignment, size));
}
void* aligned_alloc(size_t alignment, size_t size) {
    return Counted(__libc_memalign(alignment, size));
}
void* valloc(size_t size) {
    return Counted(__libc_valloc(size));
}
void* pvalloc(size_t size) {
    return Counted(__libc_pvalloc(size));
}
int posix_memalign(void** out, size_t alignment, size_t size) {
    // The alignment must be a power of two and a multiple of the size of a pointer.
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0) return EINVAL;
    void* p = Counted(__libc_memalign(alignment, size));
    if (!p) return ENOMEM;
    *out = p;
    return 0;
}
void free(void* p) {
    __libc_free(p);
}
}
#endif
