// Kernels compiled once for each level of vector instructions, and the choice of those in use. Once a source:
//
//     #define DV_SSE2_KERNELS "NAME_kernels.h"
//     #define DV_AVX2_KERNELS "NAME_kernels.h"
//     #define DV_AVX512_KERNELS "NAME_kernels.h"
//     #include "kernels_by_level.h"
//
// The plain ones stand before: a struct of functions, the constant dv::impl::plain::kernels. A file of
// kernels has no include guard and defines another of that type in the namespace dv::impl::DV_LEVEL; what it
// includes has none either. DV_LANES is the width of a vector in bits. A level for which no file is named has
// the kernels of the level below.
//
// Everything else that kernels use is included before: what stands there is compiled for every machine, and
// may be inlined into a kernel; a copy that is not inlined must run everywhere.

#include "vector_level.h"

#define DV_PRAGMA(text) _Pragma(#text)
#ifdef __clang__
#define DV_BEGIN_TARGETS(targets) \
    DV_PRAGMA(clang attribute push(__attribute__((target(targets))), apply_to = function))
#define DV_END_TARGETS _Pragma("clang attribute pop")
#else
// Without a warning for the undefined operands that GCC 12's own intrinsics have (its bug 105593).
#define DV_BEGIN_TARGETS(targets)                                                             \
    _Pragma("GCC push_options") DV_PRAGMA(GCC target(targets)) _Pragma("GCC diagnostic push") \
        _Pragma("GCC diagnostic ignored \"-Wmaybe-uninitialized\"")
#define DV_END_TARGETS _Pragma("GCC diagnostic pop") _Pragma("GCC pop_options")
#endif

#if DV_HAS_VECTOR_BYTES && defined(DV_SSE2_KERNELS)
#define DV_LEVEL sse2
#define DV_LANES 128
#include DV_SSE2_KERNELS
#undef DV_LANES
#undef DV_LEVEL
#else
namespace dv::impl {
namespace sse2 = plain;
}
#endif
#undef DV_SSE2_KERNELS

#if DV_HAS_VECTOR_BYTES && defined(DV_AVX2_KERNELS)
#define DV_LEVEL avx2
#define DV_LANES 256
DV_BEGIN_TARGETS("avx2,bmi,bmi2,lzcnt,popcnt")
#include DV_AVX2_KERNELS
DV_END_TARGETS
#undef DV_LANES
#undef DV_LEVEL
#else
namespace dv::impl {
namespace avx2 = sse2;
}
#endif
#undef DV_AVX2_KERNELS

#if DV_HAS_VECTOR_BYTES && defined(DV_AVX512_KERNELS)
#define DV_LEVEL avx512
#define DV_LANES 512
// clang-format off
DV_BEGIN_TARGETS("avx2,bmi,bmi2,lzcnt,popcnt,avx512f,avx512cd,avx512bw,avx512dq,avx512vl,avx512ifma,avx512vbmi,avx512vbmi2")
// clang-format on
#include DV_AVX512_KERNELS
DV_END_TARGETS
#undef DV_LANES
#undef DV_LEVEL
#else
namespace dv::impl {
namespace avx512 = avx2;
}
#endif
#undef DV_AVX512_KERNELS

namespace dv::impl {
namespace {

inline const auto &kernels_in_use() {
    static constexpr const decltype(plain::kernels) *by_level[DV_VECTOR_LEVELS] = {
        &plain::kernels, &sse2::kernels, &avx2::kernels, &avx512::kernels};
    return *by_level[vector_level()];
}

}  // namespace
}  // namespace dv::impl

#undef DV_PRAGMA
#undef DV_BEGIN_TARGETS
#undef DV_END_TARGETS
