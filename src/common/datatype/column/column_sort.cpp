// Sorting rows by their keys: a radix sort of items, the bits in which the keys differ (key_bits.h).
//
// Many items are first parted by their leading bits into some hundred runs, which the second cache holds. A
// run is sorted by as many bits as number its rows and a few more, in two passes of which the first takes the
// last bits (LSD radix sort, stable). Rows that these bits leave equal are few: short runs of them are sorted
// by comparison, long ones the same way by the bits that follow; where the item has no more, by the next
// items of the keys.

#include <algorithm>
#include <utility>

#include "../bytes.h"
#include "../error.h"
#include "dvtypes/column_key.h"
#include "key_bits.h"

using namespace dv::impl;

namespace {

constexpr int64_t _cache_rows = 64 * 1024;
constexpr int64_t _few_rows = 64;  // for which passes take longer than comparisons

constexpr int _spare_bits = 6;
constexpr int _leading_bits_min = 8;
constexpr int64_t _runs_max = 512;  // more are written to more pages than the processor keeps in mind
constexpr int _counters = 1 << LEADING_BITS;
constexpr int _line_items = 64 / sizeof(item_t);

struct sort_t {
    keys_t keys;
    const key_part_t *parts;
    size_t part_count;
    int64_t *counters;
};

// The first part that is in a later item than this one.
size_t next_item_(const sort_t &sort, size_t part) {
    const int item = sort.parts[part].item;
    while (part < sort.part_count && sort.parts[part].item == item) ++part;
    return part;
}

struct digit_t {
    int shift, bits;

    size_t of(item_t item) const { return item >> shift & ((item_t{1} << bits) - 1); }
};

// Items into `to` by a digit, of which `counters` has the counts.
void sort_by_digit_(const item_t *from, item_t *to, int64_t count, digit_t digit, int64_t *counters) {
    int64_t place = 0;
    for (int64_t i = 0; i < int64_t{1} << digit.bits; ++i) place += std::exchange(counters[i], place);
    for (int64_t i = 0; i < count; ++i) {
        item_t *const item = to + counters[digit.of(from[i])]++;
        __builtin_prefetch(item + _line_items, 1);  // runs are too many for the processor to foresee that
        *item = from[i];
    }
}

// By two digits of the same width, the last one first.
void sort_by_two_digits_(const sort_t &sort, item_t *items, item_t *other, int64_t count, digit_t last) {
    const digit_t first = {last.shift + last.bits, last.bits};
    int64_t *const last_counters = sort.counters, *const first_counters = sort.counters + (1 << last.bits);
    std::fill(last_counters, first_counters + (1 << first.bits), 0);
    for (int64_t i = 0; i < count; ++i) {
        ++last_counters[last.of(items[i])];
        ++first_counters[first.of(items[i])];
    }
    sort_by_digit_(items, other, count, last, last_counters);
    sort_by_digit_(other, items, count, first, first_counters);
}

void count_digits_(const item_t *items, int64_t count, digit_t digit, int64_t *counters) {
    std::fill(counters, counters + (1 << digit.bits), 0);
    for (int64_t i = 0; i < count; ++i) ++counters[digit.of(items[i])];
}

// Items into `to` by the first bits of a digit, of which the counts are there: as many as make some hundred
// runs, since leading bits of keys often have few values. Returns how many.
int sort_by_leading_bits_(const sort_t &sort, const item_t *from, item_t *to, int64_t count, digit_t digit) {
    int64_t *const counters = sort.counters;
    const auto runs = [&] {
        return (1 << digit.bits) - std::count(counters, counters + (1 << digit.bits), 0);
    };
    while (digit.bits > _leading_bits_min && runs() > _runs_max) {
        for (int i = 0; i < 1 << (digit.bits - 1); ++i) counters[i] = counters[2 * i] + counters[2 * i + 1];
        --digit.bits;
        ++digit.shift;
    }
    sort_by_digit_(from, to, count, digit, counters);
    return digit.bits;
}

// A few items whose last part is in front of part `next`.
void sort_few_(const sort_t &sort, item_t *items, int64_t count, size_t next) {
    if (next == sort.part_count) return std::sort(items, items + count);
    const keys_t &keys = sort.keys;
    const size_t rest = sort.parts[next].first_byte();
    std::sort(items, items + count, [&keys, rest](item_t x, item_t y) {
        if (x >> keys.row_bits != y >> keys.row_bits) return x < y;
        const int order = memcmp(keys.key_of(x) + rest, keys.key_of(y) + rest, keys.width - rest);
        return order != 0 ? order < 0 : x < y;
    });
}

// The bits in which items differ.
item_t differing_bits_(const item_t *items, int64_t count) {
    item_t bits = 0;
    for (int64_t i = 1; i < count; ++i) bits |= items[i] ^ items[0];
    return bits;
}

// Calls do_run(begin, count) for each run of items that agree in their first `used` bits.
template <typename DoRun>
void for_each_run_(const item_t *items, int64_t count, int used, const DoRun &do_run) {
    const int rest = ITEM_BITS - used;
    for (int64_t begin = 0, end = 0; begin < count; begin = end) {
        const item_t run = items[begin] >> rest;
        do ++end;
        while (end < count && items[end] >> rest == run);
        do_run(begin, end - begin);
    }
}

// Sorts items that begin with part `first`, in the order of their rows where they are equal. No deeper than
// a key has bytes.
void sort_items_(const sort_t &sort, item_t *items, item_t *other, int64_t count, size_t first) {
    size_t next = next_item_(sort, first);
    if (count <= _few_rows) return sort_few_(sort, items, count, next);
    item_t differing = differing_bits_(items, count);
    while (differing >> sort.keys.row_bits == 0) {
        if (next == sort.part_count) return;
        for (int64_t i = 0; i < count; ++i) {
            items[i] = make_item(sort.keys, sort.parts, next, sort.part_count, sort.keys.row(items[i]));
        }
        first = std::exchange(next, next_item_(sort, next));
        differing = differing_bits_(items, count);
    }
    int used = std::countl_zero(differing);
    if (count > _cache_rows) {
        const int bits = std::min(LEADING_BITS, ITEM_BITS - sort.keys.row_bits - used);
        const digit_t leading = {ITEM_BITS - used - bits, bits};
        count_digits_(items, count, leading, sort.counters);
        used += sort_by_leading_bits_(sort, items, other, count, leading);
        memcpy(items, other, static_cast<size_t>(count) * sizeof *items);
    } else {
        const int wanted = static_cast<int>(std::bit_width(static_cast<uint64_t>(count))) + _spare_bits;
        const int bits = (std::min(wanted, ITEM_BITS - sort.keys.row_bits - used) + 1) / 2;
        sort_by_two_digits_(sort, items, other, count, {ITEM_BITS - used - 2 * bits, bits});
        // An odd bit may be one of the row's number, which must not part a run.
        used = std::min(used + 2 * bits, ITEM_BITS - sort.keys.row_bits);
    }
    for_each_run_(items, count, used, [&](int64_t begin, int64_t size) {
        if (size > 1) sort_items_(sort, items + begin, other + begin, size, first);
    });
}

void become_rows_(const keys_t &keys, item_t *items, int64_t count) {
    for (int64_t i = 0; i < count; ++i) items[i] = static_cast<item_t>(keys.row(items[i]));
}

// The parts of the working memory, in the order of their alignment.
struct scratch_t {
    item_t *items;
    int64_t *counters;
    key_part_t *parts;
    uint64_t *varying;
};

scratch_t divide_(void *scratch, int64_t count, size_t width) {
    scratch_t memory{};
    memory.items = static_cast<item_t *>(scratch);
    memory.counters = reinterpret_cast<int64_t *>(memory.items + count);
    memory.parts = reinterpret_cast<key_part_t *>(memory.counters + _counters);
    memory.varying = reinterpret_cast<uint64_t *>(memory.parts + key_parts_max(width));
    return memory;
}

}  // namespace

extern "C" size_t dv_sort_scratch_size(int64_t count, size_t width) {
    const auto rows = static_cast<size_t>(count < 0 ? 0 : count);
    return rows * sizeof(item_t) + _counters * sizeof(int64_t) + key_parts_max(width) * sizeof(key_part_t) +
           words_of_key(width) * sizeof(uint64_t);
}

extern "C" void dv_sort_keys(const void *keys, size_t width, int64_t count, int64_t *rows, void *scratch) {
    if (!DV_ASSERT(given(keys, rows, scratch))) return;
    if (!DV_ASSERT(width <= DV_KEY_WIDTH_MAX && count >> 40 <= 0) || count <= 0) return;
    const scratch_t memory = divide_(scratch, count, width);
    const auto row_bits = static_cast<int>(std::bit_width(static_cast<uint64_t>(count - 1)));
    sort_t sort = {
        {static_cast<const uint8_t *>(keys), width, count, row_bits}, memory.parts, 0, memory.counters};
    auto *const items = reinterpret_cast<item_t *>(rows);  // sorted in place of the rows that they become

    sample_varying_bits(sort.keys, memory.varying);
    do sort.part_count = divide_into_parts(sort.keys, memory.varying, memory.parts);
    while (!make_first_items(sort.keys, memory.parts, sort.part_count, memory.varying, memory.items,
                             memory.counters));
    if (sort.part_count != 0 && count > _cache_rows) {
        const int used =
            sort_by_leading_bits_(sort, memory.items, items, count, {ITEM_BITS - LEADING_BITS, LEADING_BITS});
        for_each_run_(items, count, used, [&](int64_t begin, int64_t size) {
            sort_items_(sort, items + begin, memory.items + begin, size, 0);
            become_rows_(sort.keys, items + begin, size);
        });
    } else {
        memcpy(items, memory.items, static_cast<size_t>(count) * sizeof *items);
        if (sort.part_count != 0) sort_items_(sort, items, memory.items, count, 0);
        become_rows_(sort.keys, items, count);
    }
}
