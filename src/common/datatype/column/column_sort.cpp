// Sorting rows by their keys: a radix sort over the bits in which the keys differ.
//
// Most bits of keys are the same in all rows: bytes that tell of values, years, leading digits. One pass over
// the keys finds those that vary. An item of 64 bits holds the number of a row in its lowest bits, as many as
// it takes to number all rows, and above it the first varying bits of the row's key, packed: so the order of
// items is that of the keys as far as the bits go, and then that of the rows. Items are sorted by their first
// bits, a few more than number the rows, eight at a time and the last ones first (LSD radix sort, stable).
// Rows that these bits leave equal are few: short runs of them are sorted by comparison, long ones by the
// bits that follow, the same way; where the item has no more, by items made of the next varying bits.

#include <algorithm>
#include <utility>

#include "../bytes.h"
#include "../error.h"
#include "dvtypes/column_key.h"

using namespace dv::impl;

namespace {

constexpr int _item_bits = 64;
constexpr int _digit_bits = 8;  // with 11, fewer passes write to more pages than the processor keeps in mind
constexpr size_t _buckets = size_t{1} << _digit_bits;
constexpr int _passes_max = 8;
constexpr int64_t _cache_rows = 64 * 1024;
constexpr int _spare_bits = 5;
constexpr size_t _range_bytes = 7;  // so that its bits fit a word and leave room for a row
constexpr int64_t _few_rows = 256;  // for which passes take longer than comparisons

using item_t = uint64_t;
using histogram_t = int64_t[_buckets];

// Bits of the keys that vary, of at most eight bytes: of the big-endian word at byte `at`, `bits` from bit
// `shift` on.
struct bit_range_t {
    size_t first;  // the byte with its first bit
    size_t at;
    int shift;
    int bits;
    bool ends_item;  // the next range is the first one of another item
};

struct sort_t {
    const uint8_t *keys;
    size_t width;
    int row_bits;
    const bit_range_t *ranges;
    size_t range_count;
    histogram_t *histograms;  // _passes_max

    int64_t row(item_t item) const { return static_cast<int64_t>(item & ((item_t{1} << row_bits) - 1)); }
    const uint8_t *key(item_t item) const { return keys + static_cast<size_t>(row(item)) * width; }
};

// Eight bytes of a key, or all of a shorter one with zeros behind, the first one the highest.
uint64_t load_word_(const uint8_t *bytes, size_t width) {
    if (width >= sizeof(uint64_t)) return load_be64(bytes);
    uint64_t word = 0;
    for (size_t i = 0; i < width; ++i) word |= uint64_t{bytes[i]} << (56 - 8 * i);
    return word;
}

struct rows_t {
    int64_t begin, end;
};

// What of eight bytes is not as in the first key, in some rows.
uint64_t varying_bits_(const uint8_t *bytes, size_t width, rows_t rows) {
    const uint64_t first = load_word_(bytes, width);
    uint64_t varying = 0;
    for (int64_t row = rows.begin; row < rows.end; ++row) {
        varying |= load_word_(bytes + static_cast<size_t>(row) * width, width) ^ first;
    }
    return varying;
}

// Where eight bytes with byte `first` are loaded from: not beyond the key.
size_t word_place_(size_t first, size_t width) {
    return width < sizeof(uint64_t) ? 0 : std::min(first, width - sizeof(uint64_t));
}

// The bits of each byte that are not the same in all keys, as a mask: in blocks of rows that stay in the
// first cache.
void find_varying_bits_(const uint8_t *keys, size_t width, int64_t count, uint8_t *varying) {
    memset(varying, 0, width);
    constexpr int64_t block = 512;
    for (int64_t row = 0; row < count; row += block) {
        const rows_t rows = {row, std::min(count, row + block)};
        for (size_t first = 0; first < width; first += sizeof(uint64_t)) {
            const size_t at = word_place_(first, width);
            const uint64_t bits = varying_bits_(keys + at, width, rows);
            for (size_t i = 0; i < std::min(sizeof(uint64_t), width); ++i) {
                varying[at + i] |= static_cast<uint8_t>(bits >> (56 - 8 * i));
            }
        }
    }
}

// The bits of bytes [first, last], from the highest that varies in the first to the lowest in the last.
bit_range_t range_of_(const uint8_t *varying, size_t width, size_t first, size_t last) {
    const size_t at = word_place_(first, width);
    const int top = 64 - 8 * static_cast<int>(first - at) - std::countl_zero(varying[first]);
    const int shift = 56 - 8 * static_cast<int>(last - at) + std::countr_zero(varying[last]);
    return {first, at, shift, top - shift, false};
}

// Appends a range, in two parts where it does not fit the item in work, which has `room` bits left.
size_t append_range_(bit_range_t *ranges, size_t count, bit_range_t range, int item_bits, int &room) {
    if (range.bits > room) {
        bit_range_t part = range;
        part.bits = room;
        part.shift = range.shift + range.bits - room;
        part.ends_item = true;
        range.bits -= room;
        const int top = range.shift + range.bits;  // of what is left, in its word
        range.first = range.at + static_cast<size_t>(64 - top) / 8;
        if (part.bits != 0)
            ranges[count++] = part;
        else
            ranges[count - 1].ends_item = true;
        room = item_bits;
    }
    ranges[count++] = range;
    room -= range.bits;
    return count;
}

// Ranges go on over bytes while the lowest bit of one and the highest of the next vary.
size_t find_ranges_(const uint8_t *varying, size_t width, int item_bits, bit_range_t *ranges) {
    size_t count = 0;
    int room = item_bits;
    for (size_t first = 0; first < width; ++first) {
        if (varying[first] == 0) continue;
        size_t last = first;
        const auto goes_on = [&] { return (varying[last] & 1) != 0 && (varying[last + 1] & 0x80) != 0; };
        while (last + 1 < width && last - first < _range_bytes - 1 && goes_on()) ++last;
        count = append_range_(ranges, count, range_of_(varying, width, first, last), item_bits, room);
        first = last;
    }
    return count;
}

// The bits of a row's key in the ranges from `first` on that fill an item, and the row.
item_t item_of_(const sort_t &sort, size_t first, int64_t row) {
    const uint8_t *const key = sort.key(static_cast<item_t>(row));
    item_t item = 0;
    int room = _item_bits;
    for (size_t i = first; i < sort.range_count; ++i) {
        const bit_range_t &range = sort.ranges[i];
        room -= range.bits;
        const uint64_t mask = (uint64_t{1} << range.bits) - 1;
        item |= (load_word_(key + range.at, sort.width) >> range.shift & mask) << room;
        if (range.ends_item) break;
    }
    return item | static_cast<item_t>(row);
}

// The range behind those of an item.
size_t next_item_(const sort_t &sort, size_t first) {
    while (first < sort.range_count && !sort.ranges[first].ends_item) ++first;
    return std::min(first + 1, sort.range_count);
}

// Items into `to` by the digit that begins at bit `shift`; histogram: of that digit.
void sort_by_digit_(const item_t *from, item_t *to, int64_t count, int shift, histogram_t &histogram) {
    int64_t place = 0;
    for (int64_t &items : histogram) place += std::exchange(items, place);
    for (int64_t i = 0; i < count; ++i) to[histogram[from[i] >> shift & (_buckets - 1)]++] = from[i];
}

// Sorts by as many digits behind the first `used` bits.
void sort_by_bits_(const sort_t &sort, item_t *items, item_t *other, int64_t count, int used, int passes) {
    const int lowest = _item_bits - used - passes * _digit_bits;
    memset(sort.histograms, 0, static_cast<size_t>(passes) * sizeof(histogram_t));
    for (int64_t i = 0; i < count; ++i) {
        uint64_t digits = items[i] >> lowest;
        for (int pass = 0; pass < passes; ++pass, digits >>= _digit_bits) {
            ++sort.histograms[pass][digits & (_buckets - 1)];
        }
    }
    for (int pass = 0; pass < passes; ++pass) {
        sort_by_digit_(items, other, count, lowest + pass * _digit_bits, sort.histograms[pass]);
        std::swap(items, other);
    }
    if (passes % 2 != 0) memcpy(other, items, static_cast<size_t>(count) * sizeof *items);
}

// How many passes number the rows and leave a few bits to spare; where rows are many, one, which leaves runs
// that the second cache holds.
int passes_for_(int64_t count, int used) {
    if (count > _cache_rows) return 1;
    const int bits = static_cast<int>(std::bit_width(static_cast<uint64_t>(count))) + _spare_bits;
    return std::min((bits + _digit_bits - 1) / _digit_bits, (_item_bits - used) / _digit_bits);
}

// A run of few items, made of the ranges in front of `next`.
void sort_few_(const sort_t &sort, item_t *items, int64_t count, size_t next) {
    if (next == sort.range_count) return std::sort(items, items + count);
    const size_t rest = sort.ranges[next].first;
    std::sort(items, items + count, [&sort, rest](item_t x, item_t y) {
        if (x >> sort.row_bits != y >> sort.row_bits) return x < y;
        const int order = memcmp(sort.key(x) + rest, sort.key(y) + rest, sort.width - rest);
        return order != 0 ? order < 0 : x < y;
    });
}

// Sorts items that are made of the ranges from `first` on, and agree in their first `used` bits, a multiple
// of sixteen. As deep as a key has pairs of bytes.
void sort_items_(const sort_t &sort, item_t *items, item_t *other, int64_t count, size_t first, int used) {
    const size_t next = next_item_(sort, first);
    const bool is_used_up = used >= _item_bits - sort.row_bits;
    if (is_used_up && next == sort.range_count) return;
    if (count <= _few_rows) return sort_few_(sort, items, count, next);
    if (is_used_up) {
        for (int64_t i = 0; i < count; ++i) items[i] = item_of_(sort, next, sort.row(items[i]));
        return sort_items_(sort, items, other, count, next, 0);
    }
    const int passes = passes_for_(count, used);
    sort_by_bits_(sort, items, other, count, used, passes);
    used += passes * _digit_bits;
    const item_t sorted_bits = used == _item_bits ? ~item_t{0} : ~(~item_t{0} >> used);
    for (int64_t begin = 0, end = 0; begin < count; begin = end) {
        do ++end;
        while (end < count && ((items[end] ^ items[begin]) & sorted_bits) == 0);
        if (end - begin > 1) sort_items_(sort, items + begin, other, end - begin, first, used);
    }
}

// The parts of the working memory, in the order of their alignment.
struct scratch_t {
    item_t *items, *other;
    histogram_t *histograms;
    bit_range_t *ranges;
    uint8_t *varying;
};

// A range begins in each byte at most, and goes on in another item once in as many bits as an item has.
constexpr size_t ranges_max_(size_t width) { return 2 * width; }

scratch_t divide_(void *scratch, int64_t count, size_t width) {
    scratch_t parts{};
    parts.items = static_cast<item_t *>(scratch);
    parts.other = parts.items + count;
    parts.histograms = reinterpret_cast<histogram_t *>(parts.other + count);
    parts.ranges = reinterpret_cast<bit_range_t *>(parts.histograms + _passes_max);
    parts.varying = reinterpret_cast<uint8_t *>(parts.ranges + ranges_max_(width));
    return parts;
}

}  // namespace

extern "C" size_t dv_sort_scratch_size(int64_t count, size_t width) {
    const auto rows = static_cast<size_t>(count < 0 ? 0 : count);
    return 2 * rows * sizeof(item_t) + _passes_max * sizeof(histogram_t) +
           ranges_max_(width) * sizeof(bit_range_t) + width;
}

extern "C" void dv_sort_keys(const void *keys, size_t width, int64_t count, int64_t *rows, void *scratch) {
    if (!DV_ASSERT(given(keys, rows, scratch))) return;
    if (!DV_ASSERT(width <= DV_KEY_WIDTH_MAX && count >> 40 <= 0) || count <= 0) return;
    const scratch_t parts = divide_(scratch, count, width);
    const auto *const first_key = static_cast<const uint8_t *>(keys);
    const auto row_bits = static_cast<int>(std::bit_width(static_cast<uint64_t>(count - 1)));
    find_varying_bits_(first_key, width, count, parts.varying);
    const size_t ranges = find_ranges_(parts.varying, width, _item_bits - row_bits, parts.ranges);
    const sort_t sort = {first_key, width, row_bits, parts.ranges, ranges, parts.histograms};
    for (int64_t i = 0; i < count; ++i) parts.items[i] = item_of_(sort, 0, i);
    if (ranges != 0) sort_items_(sort, parts.items, parts.other, count, 0, 0);
    for (int64_t i = 0; i < count; ++i) rows[i] = sort.row(parts.items[i]);
}
