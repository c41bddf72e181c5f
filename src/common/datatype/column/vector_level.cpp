// The level of vector instructions, chosen once when the library is loaded.

#include "vector_level.h"

#if DV_HAS_VECTOR_BYTES
#include <cpuid.h>
#endif

namespace dv::impl {

std::atomic<int> vector_level_in_use = DV_VECTOR_PLAIN;

}  // namespace dv::impl

using namespace dv::impl;

namespace {

#if DV_HAS_VECTOR_BYTES

// Not every compiler's __builtin_cpu_supports knows LZCNT.
bool has_lzcnt_() {
    unsigned a, b, c, d;
    return __get_cpuid(0x80000001, &a, &b, &c, &d) != 0 && (c & bit_LZCNT) != 0;
}

#endif

dv_vector_level_e highest_level_() {
#if DV_HAS_VECTOR_BYTES
    __builtin_cpu_init();  // what the processor has and the system saves
    const bool has_avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                          __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt") && has_lzcnt_();
    if (!has_avx2) return DV_VECTOR_SSE2;
    const bool has_avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512cd") &&
                            __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
                            __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512ifma") &&
                            __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vbmi2");
    return has_avx512 ? DV_VECTOR_AVX512 : DV_VECTOR_AVX2;
#else
    return DV_VECTOR_PLAIN;
#endif
}

[[gnu::constructor]] void choose_level_() { dv_vector_set_level(DV_VECTOR_AVX512); }

}  // namespace

extern "C" dv_vector_level_e dv_vector_level(void) {
    return static_cast<dv_vector_level_e>(vector_level_in_use.load(std::memory_order_relaxed));
}

extern "C" dv_vector_level_e dv_vector_set_level(dv_vector_level_e level) {
    const int highest = highest_level_();
    const int wanted = static_cast<int>(level);
    const int chosen = wanted < DV_VECTOR_PLAIN ? int{DV_VECTOR_PLAIN} : wanted > highest ? highest : wanted;
    vector_level_in_use.store(chosen, std::memory_order_relaxed);
    return dv_vector_level();
}
