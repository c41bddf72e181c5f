// What is wrong with the bytes of a NUMBER that somebody else wrote: its record is the one that the library
// would write for a value, or it is none.

#include <algorithm>

#include "../error.h"
#include "number_internal.h"

using namespace dv::impl;

namespace {

// A digit byte as a digit; outside 0..99 when it is none. A digit byte of a negative value is mirrored.
int digit_(uint8_t byte, bool negative) {
    return negative ? NUMBER_DIGIT_EXCESS - byte : byte - NUMBER_DIGIT_EXCESS;
}

// Is a record of 1 to 8 * Words digits, but no more than 19, without fault? No branch depends on their
// number.
template <int Words>
bool is_faultless_(const number_t &x, const number_head_t &head) {
    constexpr int most = std::min(COEF_WORD_DIGITS * Words, NUMBER_DIGITS_MAX - 1);
    if (static_cast<unsigned>(head.count) - 1 >= unsigned{most}) return false;
    // Of bytes that are no digits the last one borrows from those in front of it, and has its top bit set.
    uint64_t beyond = 0;
    for (const uint64_t digits : load_coef<Words>(x, head).word) {
        beyond |= digits | (digits + in_each_byte(0x80 - 100));
    }
    const bool is_terminated = (head.sign & (x.coef[head.count] ^ NUMBER_TOP)) == 0;
    const bool has_zeros = x.coef[0] == NUMBER_DIGIT_EXCESS || x.coef[head.count - 1] == NUMBER_DIGIT_EXCESS;
    return (beyond & in_each_byte(0x80)) == 0 && is_terminated && !has_zeros;
}

// Of any record. Not inline, so that the check of a short one saves no registers.
[[gnu::noinline]] const char *fault_of_any_(const number_t *x) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x))) return nullptr;
    if (is_faultless_<3>(*x, read_head(*x))) return nullptr;
    if (x->size == 0) return "a NUMBER needs its exponent";
    if (x->size == 1 && x->signexp == NUMBER_SIGNEXP_ZERO) return nullptr;
    const bool negative = number_is_negative(*x);
    const int count = x->size - 1 - (negative ? 1 : 0);
    if (count < 1) return "a NUMBER needs a digit";
    if (count > NUMBER_DIGITS_MAX) return "it is too long for a NUMBER";
    if (negative && x->coef[count] != NUMBER_TOP) return "a negative NUMBER needs its terminator";
    for (int i = 0; i < count; ++i) {
        const int digit = digit_(x->coef[i], negative);
        if (digit < 0 || digit > 99) return "a NUMBER digit is out of range";
    }
    const int first = digit_(x->coef[0], negative);
    const int last = digit_(x->coef[count - 1], negative);
    if (first == 0 || last == 0) return "a NUMBER neither begins nor ends with a zero digit";
    if (count == NUMBER_DIGITS_MAX && (first >= 10 || last % 10 != 0))
        return "a NUMBER has at most 38 digits";
    return nullptr;
}

}  // namespace

extern "C" const char *number_get_fault(const number_t *x) {
    if (x != nullptr && is_faultless_<1>(*x, read_head(*x))) [[likely]]
        return nullptr;
    return fault_of_any_(x);
}
