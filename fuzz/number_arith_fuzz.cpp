// Arithmetic and rounding against the long-hand twin. Input: a mode, a position, then operands as a digit
// count, a byte of sign and exponent, and digits; all of them become canonical records of at most 38
// significant digits.

#include "fuzz_input.h"
#include "number_support.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

struct operation_t {
    const char *name;
    void (*library)(number_t *, const number_t *);
    decimal_t (*twin)(const decimal_t &, const decimal_t &, int);
};
constexpr operation_t _operations[] = {
    {"add", number_add, twin_add}, {"sub", number_sub, twin_sub}, {"mul", number_mul, twin_mul},
    {"div", number_div, twin_div}, {"mod", number_mod, twin_mod}, {"rem", number_rem, twin_rem},
};

number_t take_operand_(cursor &input) {
    int count = input.byte() % 21;
    const uint8_t head = input.byte();
    int digits[20] = {};
    for (int i = 0; i < count; ++i) digits[i] = input.byte() % 100;
    if (digits[0] == 0) digits[0] = 1 + head % 99;
    if (count == 20) {  // 39 decimal places, of which the record may use 38
        digits[0] = 1 + digits[0] % 9;
        digits[19] -= digits[19] % 10;
    }
    while (count > 0 && digits[count - 1] == 0) --count;
    decimal_t x{(head & 0x80) != 0, 0, 2 * ((head & 0x7F) - 64 - count)};
    for (int i = 0; i < count; ++i) x.digits = x.digits * 100 + static_cast<unsigned>(digits[i]);
    return with_stray_bytes(encode(x), head * 0x0123456789ABCDEFu);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    cursor input(data, size);
    const int mode = input.byte() % 7;
    const int pos = input.below(320) - 180;
    const number_t x = take_operand_(input);
    const number_t y = take_operand_(input);
    const rounding_mode in_mode(mode);
    for (const operation_t &operation : _operations) {
        const outcome_t got = ours(x, [&](number_t *r) { operation.library(r, &y); });
        const outcome_t want = theirs([&] { return operation.twin(decode(x), decode(y), mode); });
        require(got == want, describe(x) + operation.name + " " + describe(y) + "mode " +
                                 std::to_string(mode) + ": " + std::to_string(got.code) + " " +
                                 describe(got.value) + "want " + std::to_string(want.code) + " " +
                                 describe(want.value));
    }
    const outcome_t got = ours(x, [&](number_t *r) { number_round_at_withmode(r, pos, mode); });
    const outcome_t want = theirs([&] { return twin_round(decode(x), pos, mode); });
    require(got == want,
            "round " + describe(x) + "at " + std::to_string(pos) + " mode " + std::to_string(mode));
    const int order = number_cmp(&x, &y);
    const int value_order = compare(decode(x), decode(y));
    require((order > 0) == (value_order > 0) && (order < 0) == (value_order < 0),
            "cmp " + describe(x) + describe(y));
    return 0;
}
