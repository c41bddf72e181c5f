// Shared pieces of the NUMBER tests and fuzzers: guarded memory, equality and printing of records, records
// from text, the count of rounds, and a generator of operands that are hard on decimal arithmetic.

#ifndef DV_TEST_NUMBER_SUPPORT_H
#define DV_TEST_NUMBER_SUPPORT_H

#include <cstring>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "dvtypes/number.h"
#include "raise.h"
#include "reference_number.h"

// For GoogleTest: records are equal when their meaningful bytes are, and print as bytes and value.
bool operator==(const number_t &x, const number_t &y);
void PrintTo(const number_t &x, std::ostream *out);

namespace dv::test {

std::string hex(const number_t &x);       // "04:3d:7f:64:f0", at most 23 bytes
std::string describe(const number_t &x);  // the same and, where the size is one, the value

// Records from texts by the twin's reader, so that an error of the library's reader cannot hide.
number_t num(std::string_view text);
std::vector<number_t> nums(const std::string &texts);  // separated by blanks

// rounds times the environment variable DV_TEST_ROUNDS, where that is set.
long scaled(long rounds);

// A heap block among guard bytes. Builds with AddressSanitizer have none, so that the block ends where it
// ends, and reads beside it show too.
class guarded {
  public:
    explicit guarded(size_t size, const void *content = nullptr);
    explicit guarded(const number_t &x) : guarded(sizeof x, &x) {}
    char *text() const { return reinterpret_cast<char *>(bytes_.get()) + DV_TEST_GUARD_SIZE; }
    number_t *record() const { return reinterpret_cast<number_t *>(text()); }
    bool holds(const number_t &x) const { return std::memcmp(text(), &x, sizeof x) == 0; }
    bool intact() const;

  private:
    size_t size_;
    std::unique_ptr<uint8_t[]> bytes_;
};

// What an operation gave: a raised code, or 0 and the record.
struct outcome_t {
    int code = 0;
    number_t value{};
};
bool operator==(const outcome_t &x, const outcome_t &y);
std::string describe(const outcome_t &x);
void PrintTo(const outcome_t &x, std::ostream *out);

inline constexpr int BROKEN_RECORD = 1;  // code of an operation that wrote beside its record, or no record

// Runs fn(record) on a guarded copy of x.
template <typename F>
outcome_t ours(const number_t &x, F &&fn) {
    const guarded copy(x);
    const int code = raise_of([&] { fn(copy.record()); });
    if (!copy.intact() || !number_is_valid_ptr(copy.record())) return {BROKEN_RECORD, {}};
    return {code, code == 0 ? *copy.record() : number_t{}};
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

// Operands from a fixed seed. Digits come in runs (nines, zeros, fives, noise), so that carries, borrows,
// ties and cancellations are common; exponents come near 0, near each other, and near both ends of the range.
// What lies behind the meaningful bytes of a record is noise, which must not matter.
class number_source {
  public:
    explicit number_source(uint64_t seed) : engine_(seed) {}

    int pick(int low, int high);  // low..high, both included
    uint64_t bits() { return engine_(); }
    void fill(void *to, size_t size);  // with random bytes

    number_t any();
    number_t pair_for(const number_t &x);      // an operand that makes trouble beside x
    number_t with_digits(int count, int top);  // top is brought into the range
    number_t with_stray_bytes(number_t x);     // the same value

  private:
    std::string digits_(int count);
    number_t build_(const std::string &digits, int top);

    std::mt19937_64 engine_;
};

}  // namespace dv::test

#endif  // DV_TEST_NUMBER_SUPPORT_H
