// Exact sums that merge and travel: integers in binary times a power of 100.
//
// A total's weight is that of the lowest digit it has met, as a rule; its integer moves to a lower weight by
// a multiplication by a power of 100. Where the integer does not fit the room that the total has, the weight
// is first raised as far as it goes, so that a total of any room holds what can be held there.

#include "../error.h"
#include "../number/number_internal.h"
#include "total.h"

using namespace dv::impl;

namespace {

constexpr int _limbs_max = DV_TOTAL_MEMORY_MAX / LIMB_SIZE;

static_assert(sizeof(number_total_t) == 48);

int room_of_(const number_total_t &total) {
    return total.attached_room != 0 ? total.attached_room : int{DV_TOTAL_LIMBS};
}
const uint64_t *limbs_of_(const number_total_t &total) {
    return total.attached_room != 0 ? total.limbs.attached : total.limbs.own;
}
uint64_t *limbs_of_(number_total_t &total) {
    return total.attached_room != 0 ? total.limbs.attached : total.limbs.own;
}

void store_(number_total_t &total, const exact_t &x) {
    uint64_t *const limb = limbs_of_(total);
    const uint64_t extension = extension_of(x.limb[x.size - 1]);
    for (int i = room_of_(total) - 1; i >= 0; --i) limb[i] = i < x.size ? x.limb[i] : extension;
    total.weight = static_cast<int16_t>(x.weight);
}

// 0, or the bytes of memory that a total needs to hold x, which is trimmed: a limb more than today.
int64_t memory_for_(const number_total_t &total, const exact_t &x) {
    if (x.size <= room_of_(total)) return 0;
    return int64_t{x.size < _limbs_max ? x.size + 1 : _limbs_max} * LIMB_SIZE;
}

// ---------------------------------------------------------------------------------------------------------
// Results
// ---------------------------------------------------------------------------------------------------------

constexpr int _quotient_limbs = 4;  // of 10^16: nineteen base-100 digits behind any first one

struct quotient_digits_t {
    uint64_t limb[_quotient_limbs];  // the first is not 0
    int weight;                      // of the first one
};

// The first digits of magnitude / divisor by long division, where the magnitude is not 0.
quotient_digits_t divide_(exact_t &magnitude, uint64_t divisor) {
    constexpr int limbs_max = EXACT_LIMBS_MAX * 64 / 53 + 1;  // of 10^16, which is above 2^53
    uint64_t decimal[limbs_max];
    int count = 0;
    while (!is_zero(magnitude)) decimal[count++] = divide(magnitude, LIMB_BASE);

    quotient_digits_t result{};
    uint64_t rest = 0;
    for (int found = 0, i = count - 1; found < _quotient_limbs; --i) {
        const uint128_t value = uint128_t{rest} * LIMB_BASE + (i >= 0 ? decimal[i] : 0);
        const quotient_t step =
            divide_128_by_64(static_cast<uint64_t>(value >> 64), static_cast<uint64_t>(value), divisor);
        rest = step.remainder;
        if (found == 0 && step.quotient == 0) continue;
        if (found == 0) result.weight = magnitude.weight + COEF_WORD_DIGITS * i;
        result.limb[found++] = step.quotient;
    }
    return result;
}

// x = sum / divisor
void quotient_(exact_t sum, uint64_t divisor, number_t &x) {
    if (is_zero(sum)) return store_zero(x);
    const bool negative = is_negative(sum);
    if (negative) negate(sum);
    trim(sum);
    const quotient_digits_t quotient = divide_(sum, divisor);

    uint64_t word[_quotient_limbs];
    for (int i = 0; i < _quotient_limbs; ++i) word[i] = digits_from_limb(quotient.limb[i]);
    const int zeros = leading_zero_bytes(word[0]);
    const int exponent = quotient.weight + COEF_WORD_DIGITS - zeros;
    if (exponent > NUMBER_EXPONENT_MAX) raise(DV_ERR_NUMBER_OVERFLOW);
    if (exponent < NUMBER_EXPONENT_MIN) raise(DV_ERR_NUMBER_UNDERFLOW);
    long_coef coef;
    for (int i = 0; i < 3; ++i) coef.word[i] = word[i] << 8 * zeros | word[i + 1] >> 1 >> (63 - 8 * zeros);
    coef_keep(coef, NUMBER_DIGITS_MAX);  // with them 38 decimal digits and the next, at which half up looks
    store_coef(x, negative, exponent, coef);
    number_force_prec_scale(&x, NUMBER_PRECISION_MAX, NUMBER_NOT_GIVEN);
}

// ---------------------------------------------------------------------------------------------------------
// Bytes
// ---------------------------------------------------------------------------------------------------------

constexpr uint8_t _version = 1;
constexpr int _weight_excess = 32768;
constexpr int _head_size = 12;
static_assert(DV_TOTAL_PACKED_MAX == _head_size + DV_TOTAL_MEMORY_MAX);

// Returns how many bytes are written, at most DV_TOTAL_PACKED_MAX.
int pack_(const exact_t &sum, int64_t count, uint8_t *bytes) {
    bytes[0] = _version;
    bytes[1] = 0;
    store_be16(bytes + 2, static_cast<uint16_t>(sum.weight + _weight_excess));
    store_be64(bytes + 4, static_cast<uint64_t>(count));
    return _head_size + pack_integer(sum, bytes + _head_size);
}

struct packed_total_t {
    exact_t sum;
    int64_t count;
};

// Whether bytes are those that pack_ writes, of a sum that a total can hold.
bool read_(const uint8_t *bytes, int64_t size, packed_total_t &total) {
    if (size < _head_size || size > DV_TOTAL_PACKED_MAX) return false;
    total.sum = unpack_integer(bytes + _head_size, static_cast<int>(size) - _head_size);
    total.sum.weight = load_be16(bytes + 2) - _weight_excess;
    total.count = static_cast<int64_t>(load_be64(bytes + 4));
    if (total.sum.weight < EXACT_WEIGHT_MIN) return false;
    exact_t canonical = total.sum;
    raise_weight(canonical);
    if (!is_within_totals(canonical)) return false;
    uint8_t again[DV_TOTAL_PACKED_MAX];
    return pack_(canonical, total.count, again) == size &&
           memcmp(again, bytes, static_cast<size_t>(size)) == 0;
}

}  // namespace

exact_t dv::impl::exact_of(const number_t &x) {
    int count = number_digit_count(x);
    const int weight = count == 0 ? 0 : number_exponent(x) - count;
    int64_t part[3];
    int parts = 0;
    for (; count > 0; count -= COEF_WORD_DIGITS) part[parts++] = last_digits(x.coef, count);
    exact_t value = exact_of(int128_t{0}, weight);
    while (parts-- > 0) {
        const exact_t next = exact_of(int128_t{part[parts]}, weight);
        multiply(value, LIMB_BASE);
        add_limbs(value, next.limb, next.size);
    }
    return value;
}

exact_t dv::impl::exact_of(const number_total_t &total) {
    exact_t x;
    x.weight = total.weight;
    x.size = room_of_(total);
    memcpy(x.limb, limbs_of_(total), static_cast<size_t>(x.size) * LIMB_SIZE);
    trim(x);
    return x;
}

void dv::impl::round_to_number(const exact_t &from, number_t &x) { quotient_(from, 1, x); }

int64_t dv::impl::add_to_total(number_total_t &total, exact_t &x, int64_t terms) {
    int64_t count;
    if (__builtin_add_overflow(total.count, terms, &count)) raise(DV_ERR_NUMBER_OVERFLOW);
    exact_t sum = exact_of(total);
    add(sum, x);
    trim(sum);
    if (memory_for_(total, sum) != 0) raise_weight(sum);
    if (!is_within_totals(sum)) raise(DV_ERR_NUMBER_OVERFLOW);
    const int64_t memory = memory_for_(total, sum);
    if (memory != 0) return memory;
    store_(total, sum);
    total.count = count;
    return 0;
}

int64_t dv::impl::add_any_record(number_total_t &total, const number_t &x, bool subtracts) {
    exact_t term = exact_of(x);
    if (subtracts) negate(term);
    return add_to_total(total, term, subtracts ? -1 : 1);
}

extern "C" int64_t number_total_add(number_total_t *total, const number_t *x) {
    if (!DV_ASSERT(total != NULL) || (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x))) return 0;
    return x->size == 0 ? 0 : add_record(*total, *x, /*subtracts=*/false);
}

extern "C" int64_t number_total_sub(number_total_t *total, const number_t *x) {
    if (!DV_ASSERT(total != NULL) || (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x))) return 0;
    return x->size == 0 ? 0 : add_record(*total, *x, /*subtracts=*/true);
}

extern "C" int64_t number_total_merge(number_total_t *total, const number_total_t *other) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(other != NULL)) return 0;
    exact_t x = exact_of(*other);
    return add_to_total(*total, x, other->count);
}

extern "C" void *number_total_attach(number_total_t *total, int64_t size, void *memory) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(memory != NULL)) return NULL;
    const int64_t room = int64_t{room_of_(*total)} * LIMB_SIZE;
    if (!DV_ASSERT(size >= room)) return NULL;
    const exact_t sum = exact_of(*total);
    void *const before = total->attached_room != 0 ? total->limbs.attached : NULL;
    const int64_t limbs = size / LIMB_SIZE;
    total->attached_room = static_cast<uint16_t>(limbs < _limbs_max ? limbs : int64_t{_limbs_max});
    total->limbs.attached = static_cast<uint64_t *>(memory);
    store_(*total, sum);
    return before;
}

extern "C" void number_total_sum(const number_total_t *total, number_t *x) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(number_is_nonnull_ptr(x))) return;
    if (total->count <= 0) return number_assign(x, _number_null);
    quotient_(exact_of(*total), 1, *x);
}

extern "C" void number_total_average(const number_total_t *total, number_t *x) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(number_is_nonnull_ptr(x))) return;
    if (total->count <= 0) return number_assign(x, _number_null);
    quotient_(exact_of(*total), static_cast<uint64_t>(total->count), *x);
}

extern "C" int64_t number_total_pack(const number_total_t *total, int64_t size, uint8_t *bytes) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(bytes != NULL)) return 0;
    exact_t sum = exact_of(*total);
    raise_weight(sum);
    uint8_t packed[DV_TOTAL_PACKED_MAX];
    const int length = pack_(sum, total->count, packed);
    if (length <= size) memcpy(bytes, packed, static_cast<size_t>(length));
    return length;
}

extern "C" int64_t number_total_unpack(number_total_t *total, int64_t size, const uint8_t *bytes) {
    if (!DV_ASSERT(total != NULL) || !DV_ASSERT(bytes != NULL)) return 0;
    packed_total_t packed;
    if (!read_(bytes, size, packed)) raise(DV_ERR_TOTAL_BYTES);
    const int64_t memory = memory_for_(*total, packed.sum);
    if (memory != 0) return memory;
    store_(*total, packed.sum);
    total->count = packed.count;
    return 0;
}
