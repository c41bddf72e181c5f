// Arithmetic, roots, powers and rounding against the long-hand twin. Input: a mode, two bytes of a position,
// then operands as a digit count, a byte of sign and exponent, and digits; all of them become canonical
// records of at most 38 significant digits.

#include "fuzz_input.h"
#include "number_properties.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

// The next byte of the input; 0 when it has run out.
uint8_t take_(std::string_view &input) {
    if (input.empty()) return 0;
    const char first = input.front();
    input.remove_prefix(1);
    return static_cast<uint8_t>(first);
}

number_t take_operand_(std::string_view &input) {
    const int count = take_(input) % 20;
    const uint8_t head = take_(input);
    decimal_t x{0, 2 * ((head & 0x7F) - 64 - count)};
    for (int i = 0; i < count; ++i)
        x.digits = x.digits * 100 + (i == 0 ? 1 + take_(input) % 99 : take_(input) % 100);
    if ((head & 0x80) != 0) x.digits = -x.digits;
    return encode(x);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view input(reinterpret_cast<const char *>(data), size);
    const int mode = take_(input) % 7;
    const int high = take_(input);
    const int pos = (high << 8 | take_(input)) % 320 - 180;
    const number_t x = take_operand_(input);
    const number_t y = take_operand_(input);
    for (const operation_t &operation : operations) require_none(arithmetic_fault(operation, x, y, mode));
    for (const operation_t &operation : power_operations) {
        require_none(arithmetic_fault(operation, x, y, mode));
    }
    require_none(rounding_fault(x, pos, mode));
    require_none(order_fault(x, y));
    return 0;
}
