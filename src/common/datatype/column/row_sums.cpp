// Rows into counters, at each vector level.

#include "row_sums.h"

#include "../number/vector_bytes.h"

namespace dv::impl {

namespace {

// The rows [row, count) of `valid`, one by one; returns those that have no value.
template <typename Places>
uint64_t add_rows_from(const Places &places, int row, int count, uint64_t valid, row_sums_t &sums) {
    uint64_t none = 0;
    for (; row < count; ++row) {
        if ((valid >> row & 1) == 0) continue;
        const auto *const x = reinterpret_cast<const number_t *>(places.at(row));
        int size = x->size;
        if constexpr (Places::HAS_SIZES) size = static_cast<int>(places.size[row]);
        if (size == 0) none |= uint64_t{1} << row;
        if (size != 0) add_row(sums, *x, size);
    }
    return none;
}

template <typename Places>
void read_words_from(const Places &places, int row, int count, uint64_t valid, block_words_t &words) {
    for (; row < count; ++row) {
        const auto *const x = reinterpret_cast<const number_t *>(places.at(row));
        int size = x->size;
        if constexpr (Places::HAS_SIZES) size = static_cast<int>(places.size[row]);
        if ((valid >> row & 1) == 0) size = 0;
        const record_words_t all = words_of(*x, size);
        words.word[row] = all.word[0];
        words.exponent[row] = all.exponent;
        words.none |= uint64_t{size == 0} << row;
        words.more |= uint64_t{all.words > 1} << row;
    }
}

}  // namespace

}  // namespace dv::impl

namespace dv::impl::plain {
namespace {

template <typename Places>
uint64_t add_rows(const Places &places, int count, uint64_t valid, row_sums_t &sums) {
    return add_rows_from(places, 0, count, valid, sums);
}

template <typename Places>
void read_words(const Places &places, int count, uint64_t valid, block_words_t &words) {
    words.none = words.more = 0;
    read_words_from(places, 0, count, valid, words);
}

constexpr sum_kernels_t kernels = {{add_rows<places_by_stride_t>, read_words<places_by_stride_t>},
                                   {add_rows<places_by_offsets_t>, read_words<places_by_offsets_t>}};

}  // namespace
}  // namespace dv::impl::plain

#define DV_AVX2_KERNELS "sum_kernels.h"
#define DV_AVX512_KERNELS "sum_kernels.h"
#include "kernels_by_level.h"

const dv::impl::sum_kernels_t &dv::impl::sum_kernels() { return kernels_in_use(); }
