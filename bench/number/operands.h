// The operands of the NUMBER benchmarks: shuffled, from a fixed seed, and the same texts for every library.

#ifndef DV_BENCH_NUMBER_OPERANDS_H
#define DV_BENCH_NUMBER_OPERANDS_H

#include <cstdint>
#include <string>
#include <vector>

#include "operand_count.h"

namespace dv::bench {

inline constexpr int sort_count = 1'000'000;

// SHORT: 2 to 8 significant digits, two decimals, a quarter negative: amounts.
// LONG: 30 to 38 significant digits, 5 to 20 of them before the point.
enum class operands_e { SHORT, LONG };
const char *name_of(operands_e kind);

std::vector<std::string> decimals(operands_e kind, int count, uint64_t seed);
std::vector<std::string> magnitudes(operands_e kind, int count, uint64_t seed);  // decimals without sign
std::vector<std::string> integers(operands_e kind, int count, uint64_t seed);    // the same digits, no point
std::vector<int64_t> machine_integers(operands_e kind, int count, uint64_t seed);
std::vector<double> machine_doubles(operands_e kind, int count,
                                    uint64_t seed);  // LONG: random bits, 1E-100..1E100

// Exponents of magnitudes: integers of 2..20 (SHORT) or 2..6 (LONG), for which no power leaves the range; and
// 0.001 to 2.999999 with 3 to 6 decimals.
std::vector<std::string> integral_exponents(operands_e kind, int count, uint64_t seed);
std::vector<std::string> fractional_exponents(int count, uint64_t seed);

}  // namespace dv::bench

#endif  // DV_BENCH_NUMBER_OPERANDS_H
