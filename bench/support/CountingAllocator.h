// Heap allocations of the whole process, for the benchmark programs' "allocations
// per frame / per call" figures. Every bench program links the counting
// allocator (CountingAllocator.cpp): the C library's malloc family is replaced
// in the program itself, so every library and every plug-in loaded with dlopen
// allocates through it.
#pragma once

namespace kalvora_bench {

/// Heap allocations made so far by the whole process: malloc, calloc, realloc, the aligned
/// allocators and operator new (which ends in malloc). Always 0 in a sanitizer build, whose
/// own allocator takes the place of this one.
long HeapAllocations();

} // namespace kalvora_bench
