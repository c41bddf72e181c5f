// The bits in which sort keys differ, and items made of them.
//
// Most bits of keys are the same in all rows: bytes that tell of values, years, leading digits. Those that
// vary are packed into an item, a word of 64 bits, with the number of the row behind them in as many bits as
// it takes to number all rows: so the order of items is that of the keys as far as the bits go, and then that
// of the rows. What does not fit goes into a second item of the key, and so on.

#ifndef DV_COLUMN_KEY_BITS_H
#define DV_COLUMN_KEY_BITS_H

#include <stddef.h>
#include <stdint.h>

namespace dv::impl {

using item_t = uint64_t;

inline constexpr int ITEM_BITS = 64;
inline constexpr int LEADING_BITS = 13;  // of an item, by which items are counted
inline constexpr int KEY_WORD_SIZE = 8;

// Keys of one width, one behind the other.
struct keys_t {
    const uint8_t *bytes;
    size_t width;
    int64_t count;
    int row_bits;  // enough to number the rows

    const uint8_t *key(int64_t row) const { return bytes + static_cast<size_t>(row) * width; }
    int64_t row(item_t item) const { return static_cast<int64_t>(item & ((item_t{1} << row_bits) - 1)); }
    const uint8_t *key_of(item_t item) const { return key(row(item)); }
};

// Bits of one word of the keys that stand in one item.
struct key_part_t {
    size_t at;          // the word's place in a key
    uint64_t mask;      // its bits, as a big-endian word
    uint64_t moves[6];  // by which they are packed without vectors: those that move by 1, 2, 4, ..., 32
    int shift;          // where their lowest one stands in the item
    int item;           // 0: the first of a key

    // The byte of a key in which they begin.
    size_t first_byte() const;
};

// Words of a key; the last one overlaps the one before it, so as to end with the key, but for keys that are
// shorter than a word.
constexpr size_t words_of_key(size_t width) { return (width + KEY_WORD_SIZE - 1) / KEY_WORD_SIZE; }

// A part for each word, and one more for each item that ends within a word: an item has 24 bits or more.
constexpr size_t key_parts_max(size_t width) { return words_of_key(width) + width / 3 + 1; }

// The bits of each word of a key that vary, found in some of the rows: those of all if they are few.
void sample_varying_bits(const keys_t &keys, uint64_t *varying);

// Divides the bits that vary into the parts of items; returns how many.
size_t divide_into_parts(const keys_t &keys, const uint64_t *varying, key_part_t *parts);

// The first items of all rows, and how many begin with each of the 2^LEADING_BITS leading bits. False: other
// bits vary, too, and have been added to `varying`.
bool make_first_items(const keys_t &keys, const key_part_t *parts, size_t count, uint64_t *varying,
                      item_t *items, int64_t *counters);

// The item of a row that begins with part `first` of `count`.
item_t make_item(const keys_t &keys, const key_part_t *parts, size_t first, size_t count, int64_t row);

}  // namespace dv::impl

#endif  // DV_COLUMN_KEY_BITS_H
