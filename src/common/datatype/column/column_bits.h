// Bitmaps, sixty-four rows at a time: bit i of a bitmap is bit i % 8 of its byte i / 8.

#ifndef DV_COLUMN_BITS_H
#define DV_COLUMN_BITS_H

#include <string.h>

#include <bit>

#include "dvtypes/column_record.h"

namespace dv::impl {

inline constexpr int BLOCK_ROWS = 64;

// Ones in the lowest `count` (0..64) bits.
constexpr uint64_t first_rows(int64_t count) {
    return count >= BLOCK_ROWS ? ~uint64_t{0} : (uint64_t{1} << count) - 1;
}

// Whether bits begin with a byte and are a whole word, as they are of a bitmap from bit 0 on.
constexpr bool is_word_of_bits(int64_t first, int64_t count) { return first % 8 == 0 && count == BLOCK_ROWS; }

// Of the bytes of memory the first is lowest in a word of bits; turns either into the other.
constexpr uint64_t bits_in_memory(uint64_t bits) {
    return std::endian::native == std::endian::little ? bits : __builtin_bswap64(bits);
}

// Bits [first, first + count) of a bitmap, count at most 64, the first as bit 0; reads no byte beside them.
inline uint64_t load_bits(const uint8_t *bitmap, int64_t first, int64_t count) {
    const uint8_t *const byte = bitmap + first / 8;
    if (is_word_of_bits(first, count)) [[likely]] {
        uint64_t word;
        memcpy(&word, byte, sizeof word);
        return bits_in_memory(word);
    }
    const int shift = static_cast<int>(first % 8);
    uint64_t bits = 0;
    const auto bytes = static_cast<int>((shift + count + 7) / 8);  // 0..9
    for (int i = 0; i < bytes && i < 8; ++i) bits |= uint64_t{byte[i]} << (8 * i);
    bits >>= shift;
    if (bytes > 8) bits |= uint64_t{byte[8]} << (BLOCK_ROWS - shift);
    return bits & first_rows(count);
}

// Stores them, and leaves the bits beside them as they are.
inline void store_bits(uint8_t *bitmap, int64_t first, int64_t count, uint64_t bits) {
    if (is_word_of_bits(first, count)) [[likely]] {
        const uint64_t word = bits_in_memory(bits);
        memcpy(bitmap + first / 8, &word, sizeof word);
        return;
    }
    while (count > 0) {
        uint8_t &byte = bitmap[first / 8];
        const int shift = static_cast<int>(first % 8);
        const int64_t room = 8 - shift;
        const int64_t taken = count < room ? count : room;
        const auto mask = static_cast<uint8_t>(first_rows(taken) << shift);
        byte = static_cast<uint8_t>((byte & ~mask) | (static_cast<uint8_t>(bits << shift) & mask));
        bits >>= taken;
        first += taken;
        count -= taken;
    }
}

// Whether a relation that came from a caller is one.
constexpr bool is_relation(dv_column_relation_e relation) {
    return relation >= DV_COLUMN_LT && relation <= DV_COLUMN_GE;
}

// The rows of `valid` that stand in a relation, by those that are below and those that are equal.
constexpr uint64_t related_rows(dv_column_relation_e relation, uint64_t below, uint64_t equal,
                                uint64_t valid) {
    const auto where = [relation](dv_column_relation_e part) {
        return (relation & part) != 0 ? ~uint64_t{0} : uint64_t{0};
    };
    return valid & ((below & where(DV_COLUMN_LT)) | (equal & where(DV_COLUMN_EQ)) |
                    (~(below | equal) & where(DV_COLUMN_GT)));
}
static_assert(related_rows(DV_COLUMN_GE, 0b0010, 0b0100, 0b1110) == 0b1100);
static_assert(related_rows(DV_COLUMN_NE, 0b0010, 0b0100, 0b1110) == 0b1010);

// The rows of a block that a column says have a value.
inline uint64_t valid_rows(const dv_column_t &column, int64_t row, int64_t count) {
    return column.validity == nullptr ? first_rows(count)
                                      : load_bits(column.validity, column.first_bit + row, count);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_BITS_H
