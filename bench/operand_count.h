// How many operands a case runs over: so many that no branch predictor learns what comes next, and so few
// that they stay in the caches. A Zen 4 learns 4096: Intel's bid128_to_string, for one, takes half as long
// over 4096 long operands again and again as over 16384.

#ifndef DV_BENCH_OPERAND_COUNT_H
#define DV_BENCH_OPERAND_COUNT_H

namespace dv::bench {

inline constexpr int operand_count = 16'384;

}  // namespace dv::bench

#endif  // DV_BENCH_OPERAND_COUNT_H
