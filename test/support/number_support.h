// Shared pieces of the NUMBER tests: equality and printing of records, records from text, the count of
// rounds, and a generator of operands that are hard on decimal arithmetic.

#ifndef DV_TEST_NUMBER_SUPPORT_H
#define DV_TEST_NUMBER_SUPPORT_H

#include <array>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include "dvtypes/number.h"
#include "raise.h"
#include "reference_number.h"

// For GoogleTest: records are equal when their meaningful bytes are, and print as bytes and value.
bool operator==(const number_t &x, const number_t &y);
void PrintTo(const number_t &x, std::ostream *out);

namespace dv::test {

inline constexpr int _all_modes[] = {0, 1, 2, 3, 4, 5, 6};

std::string describe(const number_t &x);

// A record from text by the twin's reader, so that an error of the library's reader cannot hide.
number_t num(std::string_view text);

// rounds times the environment variable DV_TEST_ROUNDS, where that is set.
long scaled(long rounds);

// What an operation gave: a raised code, or 0 and the record.
struct outcome_t {
    int code = 0;
    number_t value{};
};
bool operator==(const outcome_t &x, const outcome_t &y);
void PrintTo(const outcome_t &x, std::ostream *out);

// Runs fn(record) on a copy of x.
template <typename F>
outcome_t ours(number_t x, F &&fn) {
    const int code = raise_of([&] { fn(&x); });
    return {code, code == 0 ? x : number_t{}};
}

// The twin's side: fn() returns a decimal_t or throws twin_raise.
template <typename F>
outcome_t theirs(F &&fn) {
    try {
        return {0, encode(fn())};
    } catch (const twin_raise &raised) {
        return {raised.code, {}};
    }
}

// Sets the rounding mode for the life of the object.
class rounding_mode {
  public:
    explicit rounding_mode(int mode) : before_(number_get_roundmode()) { number_set_roundmode(mode); }
    ~rounding_mode() { number_set_roundmode(before_); }
    rounding_mode(const rounding_mode &) = delete;
    rounding_mode &operator=(const rounding_mode &) = delete;

  private:
    int before_;
};

// A record among guard bytes: what an operation may write, and nothing else.
class guarded_number {
  public:
    explicit guarded_number(const number_t &x);
    number_t *get() { return reinterpret_cast<number_t *>(bytes_.data() + guard_size); }
    bool intact() const;

  private:
    static constexpr size_t guard_size = 16;
    std::array<uint8_t, 2 * guard_size + sizeof(number_t)> bytes_;
};

// Operands from a fixed seed. Digits come in runs (nines, zeros, fives, noise), so that carries, borrows,
// ties and cancellations are common; exponents come near 0, near each other, and near both ends of the range.
class number_source {
  public:
    explicit number_source(uint64_t seed) : engine_(seed) {}

    int pick(int low, int high);  // low..high, both included
    uint64_t bits() { return engine_(); }

    number_t any();                           // any of the kinds below, zero now and then
    number_t with_digits(int low, int high);  // that many significant digits, near 1
    number_t pair_for(const number_t &x);     // an operand that makes trouble beside x
    number_t hostile();                       // 23 random bytes under a size byte of 0..255

  private:
    std::string digits_(int count);
    number_t build_(std::string digits, int top);

    std::mt19937_64 engine_;
};

// Fills what lies behind the meaningful bytes with noise that must not matter.
number_t with_stray_bytes(number_t x, uint64_t noise);

}  // namespace dv::test

#endif  // DV_TEST_NUMBER_SUPPORT_H
