// The table of powers of ten, computed by the compiler.
//
// Positive powers are exact integers of up to 505 bits; negative ones are 2^1023 divided by ten again and
// again, so that the quotients keep hundreds of bits behind those that are stored. Of each, the 128 bits from
// the highest one on.

#include "power_of_ten.h"

#include <array>

using namespace dv::impl;

namespace {

constexpr int _word_count = 16;

// An unsigned integer, least significant word first.
struct wide_t {
    std::array<uint64_t, _word_count> word;
};

constexpr void multiply_by_ten_(wide_t &x) {
    uint64_t carry = 0;
    for (uint64_t &word : x.word) {
        const uint128_t product = uint128_t{word} * 10 + carry;
        word = static_cast<uint64_t>(product);
        carry = static_cast<uint64_t>(product >> 64);
    }
}

constexpr void divide_by_ten_(wide_t &x) {
    uint64_t rest = 0;
    for (size_t i = _word_count; i-- > 0;) {
        const uint128_t value = uint128_t{rest} << 64 | x.word[i];
        x.word[i] = static_cast<uint64_t>(value / 10);
        rest = static_cast<uint64_t>(value % 10);
    }
}

constexpr uint128_t leading_bits_(const wide_t &x) {
    size_t top = _word_count - 1;
    while (x.word[top] == 0) --top;
    const auto word = [&](size_t below) { return below <= top ? x.word[top - below] : 0; };
    const int shift = std::countl_zero(x.word[top]);
    const uint128_t high = uint128_t{word(0)} << 64 | word(1);
    return shift == 0 ? high : high << shift | word(2) >> (64 - shift);
}

}  // namespace

constexpr power_of_ten_table_t dv::impl::POWERS_OF_TEN = [] {
    power_of_ten_table_t table{};
    const auto set = [&](int n, const wide_t &x) {
        const uint128_t bits = leading_bits_(x);
        table.significand[n - POWER_OF_TEN_MIN] = {static_cast<uint64_t>(bits >> 64),
                                                   static_cast<uint64_t>(bits)};
    };
    wide_t power{{1}};
    for (int n = 0; n <= POWER_OF_TEN_MAX; ++n, multiply_by_ten_(power)) set(n, power);
    wide_t fraction{};
    fraction.word[_word_count - 1] = uint64_t{1} << 63;
    for (int n = -1; n >= POWER_OF_TEN_MIN; --n) {
        divide_by_ten_(fraction);
        set(n, fraction);
    }
    return table;
}();
