// Arithmetic, roots, powers and rounding against the long-hand twin. Input: a mode, what is done, two bytes
// of a position, then operands as a digit count, a byte of sign and exponent, and digits; all of them become
// canonical records of at most 38 significant digits.
//
// A run does all operations but roots and powers, whose twins take a thousand times as long: 1, 2 and 3 for
// what is done ask for one of these.

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
    const size_t slow = size_t{input.byte()} - 1;
    const int high = input.byte();
    const int pos = (high << 8 | input.byte()) % 320 - 180;
    const number_t x = take_operand_(input);
    const number_t y = take_operand_(input);
    if (slow < power_operations.size()) {
        require_none(arithmetic_fault(power_operations[slow], x, y, mode));
        return 0;
    }
    for (const operation_t &operation : operations) require_none(arithmetic_fault(operation, x, y, mode));
    require_none(rounding_fault(x, pos, mode));
    require_none(order_fault(x, y));
    return 0;
}
