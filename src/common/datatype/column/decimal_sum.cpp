// Exact sums of decimals in 192 bits.
//
// Kernels sum words; a decimal of 64 bits is one word, one of 128 bits two, whose sums are put together at
// the end. They sum without a sign, and so over words less -2^63 where the word has one.

#include "../error.h"
#include "column_bits.h"
#include "decimal_kernels.h"
#include "decimal_rows.h"
#include "dvtypes/number_sum.h"
#include "exact_integer.h"

using namespace dv::impl;

namespace {

constexpr uint64_t _sign_bit = uint64_t{1} << 63;

// sum += addend 2^(64 * place)
void add_at_(dv_decimal_sum_t &sum, int128_t addend, int place) {
    const uint64_t sign = addend < 0 ? ~uint64_t{0} : 0;
    const uint64_t words[] = {static_cast<uint64_t>(addend), static_cast<uint64_t>(addend >> 64), sign};
    uint64_t carry = 0;
    for (int i = place; i < 3; ++i) carry = add_words(sum.words[i], words[i - place], carry, sum.words[i]);
}

// Rows [begin, begin + count) that all have a value and lie side by side.
void sum_side_by_side_(const dv_decimal_column_t &x, int64_t begin, int64_t count, dv_decimal_sum_t &sum) {
    const auto *place = static_cast<const char *>(value_at(x.column, begin));
    const bool is_narrow = x.bytes == sizeof(int64_t);
    constexpr bool is_low_first = std::endian::native == std::endian::little;
    const uint64_t even_bias = is_narrow || !is_low_first ? _sign_bit : 0;
    const uint64_t odd_bias = is_narrow || is_low_first ? _sign_bit : 0;
    sum.count += count;
    if (is_narrow && count % 2 != 0) {
        add_at_(sum, load_decimal(x, begin + --count), 0);
    }
    int64_t words = count * (x.bytes / int64_t{sizeof(int64_t)});
    while (words > 0) {
        const int64_t piece = words < WORD_SUM_MAX ? words : WORD_SUM_MAX;
        const word_sums_t sums = decimal_kernels().sum(place, piece, even_bias, odd_bias);
        const int128_t bias = int128_t{piece / 2} << 63;
        const auto even = static_cast<int128_t>(sums.even) - (even_bias != 0 ? bias : 0);
        const auto odd = static_cast<int128_t>(sums.odd) - (odd_bias != 0 ? bias : 0);
        add_at_(sum, even, is_narrow || is_low_first ? 0 : 1);
        add_at_(sum, odd, is_narrow || !is_low_first ? 0 : 1);
        place += piece * int64_t{sizeof(int64_t)};
        words -= piece;
    }
}

// The rows of a block that have a value. Sixty-four integers of 64 bits are summed in 128.
void sum_rows_(const dv_decimal_column_t &x, int64_t begin, uint64_t valid, dv_decimal_sum_t &sum) {
    const bool is_narrow = x.bytes == sizeof(int64_t);
    int128_t narrow_sum = 0;
    sum.count += std::popcount(valid);
    for (; valid != 0; valid &= valid - 1) {
        const int128_t value = load_decimal(x, begin + std::countr_zero(valid));
        if (is_narrow) {
            narrow_sum += value;
        } else {
            add_at_(sum, value, 0);
        }
    }
    if (is_narrow) add_at_(sum, narrow_sum, 0);
}

// The whole blocks of integers of 64 bits side by side, some of which have no value; returns the rows of
// these.
int64_t sum_valid_blocks_(const dv_decimal_column_t &x, dv_decimal_sum_t &sum) {
    constexpr int64_t blocks_at_once = 64;
    uint64_t valid[blocks_at_once];
    int64_t row = 0;
    for (int64_t left = x.column.count / BLOCK_ROWS; left > 0;) {
        const int64_t blocks = left < blocks_at_once ? left : blocks_at_once;
        int64_t values = 0;
        for (int64_t i = 0; i < blocks; ++i) {
            valid[i] = valid_rows(x.column, row + i * BLOCK_ROWS, BLOCK_ROWS);
            values += std::popcount(valid[i]);
        }
        const auto *const place = static_cast<const char *>(value_at(x.column, row));
        const uint128_t biased = decimal_kernels().sum_valid(place, valid, blocks, _sign_bit);
        add_at_(sum, static_cast<int128_t>(biased) - (int128_t{values} << 63), 0);
        sum.count += values;
        row += blocks * BLOCK_ROWS;
        left -= blocks;
    }
    return row;
}

void sum_column_(const dv_decimal_column_t &x, dv_decimal_sum_t &sum) {
    const int64_t count = x.column.count;
    const bool is_side_by_side = x.column.stride == x.bytes;
    if (is_side_by_side && x.column.validity == nullptr) return sum_side_by_side_(x, 0, count, sum);
    const bool is_narrow = is_side_by_side && x.bytes == sizeof(int64_t);
    const int64_t first = is_narrow ? sum_valid_blocks_(x, sum) : 0;
    int64_t run = 0;  // rows in front of the block that all have a value
    for (int64_t begin = first; begin < count; begin += BLOCK_ROWS) {
        const int64_t size = count - begin < BLOCK_ROWS ? count - begin : int64_t{BLOCK_ROWS};
        const uint64_t valid = valid_rows(x.column, begin, size);
        if (is_side_by_side && valid == first_rows(size)) {
            run += size;
            continue;
        }
        if (run != 0) sum_side_by_side_(x, begin - run, run, sum);
        run = 0;
        sum_rows_(x, begin, valid, sum);
    }
    if (run != 0) sum_side_by_side_(x, count - run, run, sum);
}

// The magnitude in pieces that a NUMBER holds.
void add_to_number_sum_(const dv_decimal_sum_t &sum, int scale, number_sum_t &total) {
    constexpr int low_digits = 36;
    const bool negative = (sum.words[2] & _sign_bit) != 0;
    const wide_t all = {sum.words[2], uint128_t{sum.words[1]} << 64 | sum.words[0]};
    const wide_t magnitude = negative ? wide_t{uint128_t{1} << 64, 0} - all : all;
    const wide_t high = cut_digits(magnitude, low_digits).kept;  // at most 22 digits
    const wide_t low = magnitude - multiply_wide(high.low, ten_to(low_digits));
    number_t piece;
    cut_to_number(piece, {negative, high}, int64_t{scale} - low_digits);
    number_sum_add(&total, &piece);
    cut_to_number(piece, {negative, low}, scale);
    number_sum_add(&total, &piece);
}

// ---------------------------------------------------------------------------------------------------------
// Bytes
// ---------------------------------------------------------------------------------------------------------

constexpr uint8_t _version = 1;
constexpr uint8_t _is_of_decimals = 1;
constexpr int _head_size = 11;
static_assert(DV_DECIMAL_SUM_PACKED_MAX == _head_size + sizeof dv_decimal_sum_t{}.words);

struct packed_sum_t {
    dv_decimal_sum_t sum;
    int scale;
};

// Returns how many bytes are written, at most DV_DECIMAL_SUM_PACKED_MAX.
int pack_(const packed_sum_t &packed, uint8_t *bytes) {
    bytes[0] = _version;
    bytes[1] = _is_of_decimals;
    bytes[2] = static_cast<uint8_t>(packed.scale);
    store_be64(bytes + 3, static_cast<uint64_t>(packed.sum.count));
    exact_t integer = {0, 3, {}};
    memcpy(integer.limb, packed.sum.words, sizeof packed.sum.words);
    trim(integer);
    return _head_size + pack_integer(integer, bytes + _head_size);
}

// Whether so many values of 128 bits can have such a sum: below 2^127 each by magnitude, or -2^127.
bool can_be_(const dv_decimal_sum_t &sum) {
    const auto upper = static_cast<int128_t>(uint128_t{sum.words[2]} << 64 | sum.words[1]);
    const int128_t in_halves = upper >> 63;  // sum / 2^127, down
    if (sum.count == 0) return (sum.words[0] | sum.words[1] | sum.words[2]) == 0;
    return in_halves >= -int128_t{sum.count} && in_halves < sum.count;
}

// Whether bytes are those that pack_ writes.
bool read_(const uint8_t *bytes, int64_t size, packed_sum_t &packed) {
    if (size < _head_size || size > DV_DECIMAL_SUM_PACKED_MAX) return false;
    packed.scale = bytes[2] - (bytes[2] > INT8_MAX ? UINT8_MAX + 1 : 0);
    packed.sum.count = static_cast<int64_t>(load_be64(bytes + 3));
    const exact_t integer = unpack_integer(bytes + _head_size, static_cast<int>(size) - _head_size);
    const uint64_t extension = extension_of(integer.limb[integer.size - 1]);
    for (int i = 0; i < 3; ++i) packed.sum.words[i] = i < integer.size ? integer.limb[i] : extension;
    if (!is_decimal_scale(packed.scale) || !can_be_(packed.sum)) return false;
    uint8_t again[DV_DECIMAL_SUM_PACKED_MAX];
    return pack_(packed, again) == size && memcmp(again, bytes, static_cast<size_t>(size)) == 0;
}

}  // namespace

extern "C" void dv_decimal_column_sum(const dv_decimal_column_t *x, dv_decimal_sum_t *sum) {
    if (DV_ASSERT(is_decimal(x) && sum != NULL)) sum_column_(*x, *sum);
}

extern "C" void dv_decimal_sum_merge(dv_decimal_sum_t *sum, const dv_decimal_sum_t *other) {
    if (!DV_ASSERT(sum != NULL && other != NULL)) return;
    uint64_t carry = 0;
    for (int i = 0; i < 3; ++i) carry = add_words(sum->words[i], other->words[i], carry, sum->words[i]);
    sum->count += other->count;
}

extern "C" void dv_decimal_sum_quotient(const dv_decimal_sum_t *sum, int scale, int64_t divisor,
                                        number_t *x) {
    if (!DV_ASSERT(sum != NULL && x != NULL) || !DV_ASSERT(is_decimal_scale(scale)) ||
        !DV_ASSERT(divisor > 0))
        return;
    number_sum_t total = {};
    add_to_number_sum_(*sum, scale, total);
    number_sum_quotient(&total, divisor, x);
}

extern "C" int64_t dv_decimal_sum_pack(const dv_decimal_sum_t *sum, int scale, int64_t size, uint8_t *bytes) {
    if (!DV_ASSERT(sum != NULL && bytes != NULL) || !DV_ASSERT(is_decimal_scale(scale))) return 0;
    uint8_t packed[DV_DECIMAL_SUM_PACKED_MAX];
    const int length = pack_({*sum, scale}, packed);
    if (length <= size) memcpy(bytes, packed, static_cast<size_t>(length));
    return length;
}

extern "C" void dv_decimal_sum_unpack(dv_decimal_sum_t *sum, int *scale, int64_t size, const uint8_t *bytes) {
    if (!DV_ASSERT(sum != NULL && scale != NULL && bytes != NULL)) return;
    packed_sum_t packed;
    if (!read_(bytes, size, packed)) raise(DV_ERR_TOTAL_BYTES);
    *sum = packed.sum;
    *scale = packed.scale;
}
