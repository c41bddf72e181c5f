// The instructions that kernels may use: which level is in force, and how a kernel is compiled for each.
//
// A kernel's source has no include guard and stands in a header NAME_kernels.h, in the namespace
// dv::impl::DV_LEVEL. One source file includes it once for each level:
//
//     #define DV_LEVEL plain
//     #include "NAME_kernels.h"
//     #undef DV_LEVEL
//     #if DV_HAS_VECTOR_BYTES
//     #define DV_LEVEL avx2
//     DV_BEGIN_AVX2
//     #include "NAME_kernels.h"
//     DV_END_LEVEL
//     ...
//
// Everything that the kernels include is included before, outside of DV_BEGIN: what stands there is compiled
// for every machine, and may be inlined into a kernel; a copy that is not inlined must run everywhere.

#ifndef DV_COLUMN_VECTOR_LEVEL_H
#define DV_COLUMN_VECTOR_LEVEL_H

#include <atomic>

#include "../machine.h"
#include "dvtypes/column_record.h"

#if DV_HAS_VECTOR_BYTES
#include "../intrinsics.h"
#endif

// clang-format off
#define DV_AVX2_TARGETS "avx2,bmi,bmi2,lzcnt,popcnt"
#define DV_AVX512_TARGETS DV_AVX2_TARGETS ",avx512f,avx512cd,avx512bw,avx512dq,avx512vl,avx512ifma,avx512vbmi,avx512vbmi2"
// clang-format on

#define DV_PRAGMA(text) _Pragma(#text)
#ifdef __clang__
#define DV_BEGIN_TARGETS(targets) \
    DV_PRAGMA(clang attribute push(__attribute__((target(targets))), apply_to = function))
#define DV_END_LEVEL _Pragma("clang attribute pop")
#else
// Without a warning for the undefined operands that GCC 12's own intrinsics have (its bug 105593).
#define DV_BEGIN_TARGETS(targets)                                                             \
    _Pragma("GCC push_options") DV_PRAGMA(GCC target(targets)) _Pragma("GCC diagnostic push") \
        _Pragma("GCC diagnostic ignored \"-Wmaybe-uninitialized\"")
#define DV_END_LEVEL _Pragma("GCC diagnostic pop") _Pragma("GCC pop_options")
#endif
#define DV_BEGIN_AVX2 DV_BEGIN_TARGETS(DV_AVX2_TARGETS)
#define DV_BEGIN_AVX512 DV_BEGIN_TARGETS(DV_AVX512_TARGETS)

namespace dv::impl {

// So many bytes ahead kernels fetch memory: the processor's own fetching ends with a page. A million rows
// take 0.5 to 0.85 of the time without. Nothing is accessed there, so that it may lie behind the column.
inline constexpr int64_t FETCH_AHEAD = 2048;

// Fetches what lies FETCH_AHEAD behind bytes that are read or written.
inline void fetch_ahead(const char *p, int64_t bytes) {
    constexpr int64_t line = 64;
    for (int64_t i = 0; i < bytes; i += line) __builtin_prefetch(p + FETCH_AHEAD + i);
}

extern std::atomic<int> vector_level_in_use;  // a dv_vector_level_e

// Which row of a table of kernels, one a level, is to be used.
inline size_t vector_level() {
    return static_cast<size_t>(vector_level_in_use.load(std::memory_order_relaxed));
}

}  // namespace dv::impl

#endif  // DV_COLUMN_VECTOR_LEVEL_H
