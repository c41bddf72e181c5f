// Sums of many rows before they go into a total: a counter for each place where digits can stand.
//
// The digits of a record are words of eight, left-aligned: numbers below 100^8 whose weight is the exponent
// less eight for each word. So an exponent and the index of a word pick a counter, no digits need be moved,
// and no order of exponents is slow. Counters are swept into wider ones before they can overflow.

#ifndef DV_COLUMN_ROW_SUMS_H
#define DV_COLUMN_ROW_SUMS_H

#include "record_places.h"
#include "total.h"

namespace dv::impl {

inline constexpr int RECORD_WORDS = 3;
inline constexpr int RECORD_EXPONENTS = NUMBER_EXPONENT_MAX - NUMBER_EXPONENT_MIN + 1;

// Digit bytes may be anything: a word of them is below 128 * (1 + 100 + ... + 100^7) < 2^54 by magnitude.
inline constexpr int64_t UNSWEPT_ROWS_MAX = 512;

// Most columns have one word a record: the counters of the others are there from the first longer record on.
struct row_sums_t {
    int64_t word[RECORD_WORDS][RECORD_EXPONENTS];
    int128_t swept[RECORD_WORDS][RECORD_EXPONENTS];
    int words;        // of both that are there
    int64_t unswept;  // rows in `word`
    int window;       // the exponent whose places most rows' digits are expected at

    row_sums_t() : words(1), unswept(0), window(6 - NUMBER_EXPONENT_MIN) { clear(0, 1); }
    void need_all_words() {
        if (words == 1) clear(1, RECORD_WORDS);
        words = RECORD_WORDS;
    }

  private:
    void clear(int begin, int end) {
        memset(word[begin], 0, sizeof word[0] * static_cast<size_t>(end - begin));
        memset(swept[begin], 0, sizeof swept[0] * static_cast<size_t>(end - begin));
    }
};

inline void sweep(row_sums_t &sums) {
    for (int i = 0; i < sums.words; ++i) {
        for (int e = 0; e < RECORD_EXPONENTS; ++e) {
            sums.swept[i][e] += sums.word[i][e];
            sums.word[i][e] = 0;
        }
    }
    sums.unswept = 0;
}

// Before so many rows are added.
inline void make_room(row_sums_t &sums, int64_t rows) {
    if (sums.unswept + rows > UNSWEPT_ROWS_MAX) sweep(sums);
    sums.unswept += rows;
}

// Sums of products: of the five words that the product of two records has, by the sum of the exponents. A row
// changes one by less than 3 * 2^108.
inline constexpr int PRODUCT_WORDS = 2 * RECORD_WORDS - 1;
inline constexpr int PRODUCT_EXPONENTS = 2 * RECORD_EXPONENTS - 1;
inline constexpr int64_t PRODUCT_ROWS_MAX = int64_t{1} << 17;

struct product_sums_t {
    int128_t word[PRODUCT_WORDS][PRODUCT_EXPONENTS];
    int words;  // that are there

    product_sums_t() { clear(); }
    void clear() {
        memset(word[0], 0, sizeof word[0]);
        words = 1;
    }
    void need_all_words() {
        if (words == 1) memset(word[1], 0, sizeof word - sizeof word[0]);
        words = PRODUCT_WORDS;
    }
};

// The exact sum of counters, where counter e of word i has the weight e + lowest - 8 * i.
template <int exponents>
exact_t collect(const int128_t (*counter)[exponents], int words, int lowest) {
    exact_t sum = exact_of(int128_t{0}, 0);
    for (int place = exponents - 1; place > -COEF_WORD_DIGITS * words; --place) {
        int128_t here = 0;
        for (int i = 0; i < words; ++i) {
            const int e = place + COEF_WORD_DIGITS * i;
            if (e >= 0 && e < exponents) here += counter[i][e];
        }
        if (here == 0) continue;
        exact_t term = exact_of(here, place + lowest);
        add(sum, term);
    }
    return sum;
}

// The digits of a record as words, and its exponent from 0 on. `words` is 1 where the others are 0.
struct record_words_t {
    int64_t word[RECORD_WORDS];
    int exponent;
    int words;
};

// Of a record whose size stands elsewhere.
inline record_words_t words_of(const number_t &x, int size) {
    const number_head_t head = read_head(x);
    const int told = head.count - x.size + size;
    const int count = told < 0 ? 0 : told > NUMBER_DIGITS_MAX ? int{NUMBER_DIGITS_MAX} : told;
    const auto word = [count](uint64_t bytes, int i) {
        const int rest = count - COEF_WORD_DIGITS * i;
        const int digits = rest < 0 ? 0 : rest > COEF_WORD_DIGITS ? int{COEF_WORD_DIGITS} : rest;
        return static_cast<int64_t>(limb_from_digits(bytes & leading_digits_mask(digits))) -
               LEFT_EXCESS_SUMS[static_cast<size_t>(digits)];
    };
    record_words_t words;
    words.exponent = head.exponent - NUMBER_EXPONENT_MIN;
    words.word[0] = word(load_be64(x.coef), 0);
    words.words = 1;
    if (count > COEF_WORD_DIGITS) {
        words.words = RECORD_WORDS;
        words.word[1] = word(load_be64(x.coef + 8), 1);
        words.word[2] = word(load_be64(x.coef + 13) << 24, 2);  // so as to end with the record
    }
    return words;
}

inline void add_row(row_sums_t &sums, const number_t &x, int size) {
    const record_words_t words = words_of(x, size);
    if (words.words > 1) sums.need_all_words();
    for (int i = 0; i < words.words; ++i) sums.word[i][words.exponent] += words.word[i];
}

inline void add_product(product_sums_t &sums, const number_t &x, const number_t &y) {
    const record_words_t a = words_of(x, x.size), b = words_of(y, y.size);
    if (a.words + b.words > 2) sums.need_all_words();
    for (int i = 0; i < a.words; ++i) {
        for (int j = 0; j < b.words; ++j) {
            sums.word[i + j][a.exponent + b.exponent] += int128_t{a.word[i]} * b.word[j];
        }
    }
}

// The first words of the records of a block.
struct block_words_t {
    int64_t word[BLOCK_ROWS];
    int64_t exponent[BLOCK_ROWS];  // from 0 on
    uint64_t none;                 // rows without a value
    uint64_t more;                 // rows that have more words
};

// Kernels for one layout; of a block, at most BLOCK_ROWS rows.
template <typename Places>
struct layout_sum_kernels_t {
    // Adds rows for which there is room; returns those of `valid` without a value.
    uint64_t (*add_rows)(const Places &places, int count, uint64_t valid, row_sums_t &sums);
    void (*read_words)(const Places &places, int count, uint64_t valid, block_words_t &words);
};
struct sum_kernels_t {
    layout_sum_kernels_t<places_by_stride_t> by_stride;
    layout_sum_kernels_t<places_by_offsets_t> by_offsets;
};

// Those of the level in use.
const sum_kernels_t &sum_kernels();

}  // namespace dv::impl

#endif  // DV_COLUMN_ROW_SUMS_H
