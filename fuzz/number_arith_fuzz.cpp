// Arithmetic, roots, powers and rounding against the long-hand twin. Input: a mode, what is done, two bytes
// of a position, then operands as a digit count, a byte of sign and exponent, and digits; all of them become
// canonical records of at most 38 significant digits.
//
// A run does one thing, so that inputs are many: an operation, rounding, or order. Roots and powers, whose
// twins take a thousand times as long, are done for 1, 2 and 3 alone, and of those for one input in sixteen.

#include <numeric>

#include "fuzz_input.h"
#include "number_properties.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

number_t take_operand_(input_t &input) {
    const int count = input.byte() % 20;
    const uint8_t head = input.byte();
    decimal_t x{0, 2 * ((head & 0x7F) - 64 - count)};
    for (int i = 0; i < count; ++i)
        x.digits = x.digits * 100 + (i == 0 ? 1 + input.byte() % 99 : input.byte() % 100);
    if ((head & 0x80) != 0) x.digits = -x.digits;
    return encode(x);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    input_t input(data, size);
    const int mode = input.byte() % 7;
    const size_t what = input.byte();
    const int high = input.byte();
    const int pos = (high << 8 | input.byte()) % 320 - 180;
    const number_t x = take_operand_(input);
    const number_t y = take_operand_(input);
    const bool may_be_slow = std::accumulate(data, data + size, 0u) % 16 == 0;
    const size_t which = what % (operations.size() + 2);
    if (may_be_slow && what - 1 < power_operations.size()) {
        require_none(arithmetic_fault(power_operations[what - 1], x, y, mode));
    } else if (which < operations.size()) {
        require_none(arithmetic_fault(operations[which], x, y, mode));
    } else {
        require_none(which == operations.size() ? rounding_fault(x, pos, mode) : order_fault(x, y));
    }
    return 0;
}
