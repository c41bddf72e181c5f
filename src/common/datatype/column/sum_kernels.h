// Records read, and added to the counters of row_sums.h, by lanes.
//
// In most columns all digits of many rows fall into eight places in a row, the window. Their words are
// shifted there as bytes and summed as vectors, for a whole block. Rows that do not fit go to the counters
// one by one, and the window is moved to where they do.

#include "record_lanes.h"

namespace dv::impl::DV_LEVEL {
namespace {

struct lane_records_t {
    lanes_t digits;    // the first eight, 0 behind the last, with their sign
    lanes_t exponent;  // from 0 on
    lanes_t count;     // of digits, 0 or more; above 20 only if the size byte is wrong
    uint64_t none;     // lanes without a value
};

// Digit bytes less their excess, for the first `count` of them.
inline lanes_t signed_digits(lanes_t bytes, lanes_t count) {
    const lanes_t beyond = shift_left(in_each_lane(~uint64_t{0}), times_eight(count));
    return second_alone(beyond, exclusive_or(bytes, in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS))));
}

// x where it is above 0, else 0.
inline lanes_t at_least_0(lanes_t x) { return second_alone(signs_of(x), x); }

template <typename Places>
inline lane_records_t read_records(const Places &places, int row, uint64_t valid) {
    // Eight digits; signexp and size in the halves of the other one.
    const __m128i digits_and_head = _mm_setr_epi8(2, 3, 4, 5, 6, 7, 8, 9, 1, -1, -1, -1, 0, -1, -1, -1);
    const two_lanes_t loaded = load_records(places, row, 0, digits_and_head);
    lanes_t size = upper_halves(loaded.upper);
    if constexpr (Places::HAS_SIZES) size = load_lanes(places.size + row);
    size = keep_lanes(valid, size);

    const lanes_t low_bits = in_each_lane(NUMBER_SIGN_BIT - 1);
    const lanes_t signexp = both(loaded.upper, in_each_lane(0xFF));
    const lanes_t positive = signs_of(subtract_lanes(low_bits, signexp));  // all ones for it
    lane_records_t records;
    records.exponent = exclusive_or(both(signexp, low_bits), second_alone(positive, low_bits));
    records.count = at_least_0(subtract_lanes(subtract_lanes(size, in_each_lane(2)), positive));
    records.digits = signed_digits(loaded.lower, records.count);
    records.none = are_equal(size, in_each_lane(0));
    return records;
}

// Halves of numbers, of which no more than a block's rows come together: below 128 * (1 + 100 + 100^2 +
// 100^3) by magnitude, whatever the bytes are, and so below 2^31 in all.
static_assert(int64_t{BLOCK_ROWS / LANES} * 128 * 1'010'101 < INT32_MAX);
struct window_t {
    lanes_t sum;
    lanes_t exponent;  // of a number whose first digit has the highest place, from 0 on
};

inline void end_window(row_sums_t &sums, window_t &window) {
    sums.word[0][sums.window] += sum_of_lanes(whole_numbers_of(window.sum));
    window.sum = in_each_lane(0);
}

// Where all digits of some rows fall into a window, it is moved there.
inline void move_window(const int64_t *exponent, const int64_t *count, row_sums_t &sums, window_t &window) {
    int64_t first = 0, end = INT64_MAX;
    for (int i = 0; i < LANES; ++i) {
        if (count[i] == 0) continue;
        first = exponent[i] > first ? exponent[i] : first;
        end = exponent[i] - count[i] < end ? exponent[i] - count[i] : end;
    }
    if (end == INT64_MAX || first - end > COEF_WORD_DIGITS) return;
    end_window(sums, window);
    const int64_t highest = end + COEF_WORD_DIGITS;
    sums.window = static_cast<int>(highest < RECORD_EXPONENTS ? highest : RECORD_EXPONENTS - 1);
    window.exponent = in_each_lane(static_cast<uint64_t>(sums.window));
}

template <typename Places>
inline void add_by_exponent(const Places &places, int row, const lane_records_t &records, row_sums_t &sums,
                            window_t &window) {
    int64_t exponent[LANES], count[LANES], word[RECORD_WORDS][LANES];
    store_lanes(exponent, records.exponent);
    store_lanes(word[0], numbers_of(records.digits));
    for (int i = 0; i < LANES; ++i) sums.word[0][exponent[i]] += word[0][i];
    if (are_greater(records.count, in_each_lane(COEF_WORD_DIGITS)) == 0) {
        store_lanes(count, records.count);
        return move_window(exponent, count, sums, window);
    }
    sums.need_all_words();
    // The last sixteen bytes: those from 3 on are the digits behind the first eight.
    const __m128i rest = _mm_setr_epi8(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, -1, -1, -1, -1);
    const two_lanes_t loaded = load_records(places, row, int{sizeof(number_t)} - 16, rest);
    const lanes_t digits_max = in_each_lane(NUMBER_DIGITS_MAX);
    const lanes_t missing = at_least_0(subtract_lanes(digits_max, records.count));
    const lanes_t behind_8 = at_least_0(subtract_lanes(in_each_lane(NUMBER_DIGITS_MAX - 8), missing));
    const lanes_t behind_16 = at_least_0(subtract_lanes(in_each_lane(NUMBER_DIGITS_MAX - 16), missing));
    store_lanes(word[1], numbers_of(signed_digits(loaded.lower, behind_8)));
    store_lanes(word[2], numbers_of(signed_digits(loaded.upper, behind_16)));
    for (int i = 0; i < LANES; ++i) {
        sums.word[1][exponent[i]] += word[1][i];
        sums.word[2][exponent[i]] += word[2][i];
    }
}

// Adds the rows of `valid`; returns those of them that have no value.
template <typename Places>
uint64_t add_rows(const Places &places, int count, uint64_t valid, row_sums_t &sums) {
    const lanes_t zero = in_each_lane(0), word_size = in_each_lane(COEF_WORD_DIGITS);
    window_t window = {zero, in_each_lane(static_cast<uint64_t>(sums.window))};
    uint64_t none = 0;
    int row = 0;
    for (; row + LANES <= count; row += LANES) {
        const lane_records_t records = read_records(places, row, valid >> row);
        none |= records.none << row;
        const lanes_t before = subtract_lanes(window.exponent, records.exponent);  // empty places
        const lanes_t end = add_lanes(before, records.count);
        const lanes_t negative_if_outside = either(before, subtract_lanes(word_size, end));
        const uint64_t outside = top_bits_of(negative_if_outside) & ~are_equal(records.count, zero);
        if (outside == 0) [[likely]] {
            const lanes_t moved = shift_left(records.digits, times_eight(before));
            window.sum = add_halves(window.sum, half_numbers_of(moved));
        } else {
            add_by_exponent(places, row, records, sums, window);
        }
    }
    end_window(sums, window);
    return (none | add_rows_from(places, row, count, valid, sums)) & valid;
}

template <typename Places>
void read_words(const Places &places, int count, uint64_t valid, block_words_t &words) {
    const lanes_t word_size = in_each_lane(COEF_WORD_DIGITS);
    words.none = words.more = 0;
    int row = 0;
    for (; row + LANES <= count; row += LANES) {
        const lane_records_t records = read_records(places, row, valid >> row);
        store_lanes(words.word + row, numbers_of(records.digits));
        store_lanes(words.exponent + row, records.exponent);
        words.none |= records.none << row;
        words.more |= are_greater(records.count, word_size) << row;
    }
    read_words_from(places, row, count, valid, words);
}

constexpr sum_kernels_t kernels = {{add_rows<places_by_stride_t>, read_words<places_by_stride_t>},
                                   {add_rows<places_by_offsets_t>, read_words<places_by_offsets_t>}};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
