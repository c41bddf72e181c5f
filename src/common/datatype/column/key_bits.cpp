// Items of sort keys: a sample of the rows tells which bits vary, and the pass that packs them checks it.
//
// Bits are packed by one instruction (BMI2), or by six moves of which each bit takes those that add up to its
// distance: H. S. Warren, Hacker's Delight, 2nd ed., 7-4, "Compress, or Generalized Extract".

#include "key_bits.h"

#include <algorithm>

#include "../bytes.h"
#include "vector_level.h"

namespace dv::impl {

namespace {

constexpr int64_t _sampled_rows = 1024;
constexpr int64_t _block = 512;  // rows that stay in the first cache while their words are taken in turn

// Eight bytes of a key, or all of a shorter one with zeros behind, the first one the highest.
inline uint64_t load_key_word(const uint8_t *bytes, size_t width) {
    if (width >= KEY_WORD_SIZE) return load_be64(bytes);
    uint64_t word = 0;
    for (size_t i = 0; i < width; ++i) word |= uint64_t{bytes[i]} << (56 - 8 * i);
    return word;
}

// Where a word of a key is loaded from: not beyond the key.
size_t word_place_(size_t word, size_t width) {
    return width < KEY_WORD_SIZE ? 0 : std::min(word * KEY_WORD_SIZE, width - KEY_WORD_SIZE);
}

// The bits of a word that are not in the word before it.
uint64_t own_bits_(size_t word, size_t width) {
    return ~uint64_t{0} >> 8 * (word * KEY_WORD_SIZE - word_place_(word, width));
}

// What of a word is not as in the first key, in some of the rows from `begin` on.
uint64_t varying_bits_(const keys_t &keys, size_t at, int64_t begin, int64_t end, int64_t step) {
    const uint64_t first = load_key_word(keys.bytes + at, keys.width);
    uint64_t varying = 0;
    for (int64_t row = begin; row < end; row += step) {
        varying |= load_key_word(keys.key(row) + at, keys.width) ^ first;
    }
    return varying;
}

// The moves that pack the bits of a mask.
void find_moves_(uint64_t mask, uint64_t (&moves)[6]) {
    uint64_t gaps = ~mask << 1;  // bits with a gap on their right
    for (int i = 0; i < 6; ++i) {
        uint64_t odd = gaps;  // bits with an odd number of gaps on their right
        for (int shift = 1; shift < 64; shift *= 2) odd ^= odd << shift;
        moves[i] = odd & mask;
        mask = (mask ^ moves[i]) | moves[i] >> (1 << i);
        gaps &= ~odd;
    }
}

inline uint64_t pack_by_moves_(uint64_t word, const key_part_t &part) {
    word &= part.mask;
    for (int i = 0; i < 6; ++i) {
        const uint64_t moved = word & part.moves[i];
        word = (word ^ moved) | moved >> (1 << i);
    }
    return word;
}

// The highest bits of a mask, at most so many.
uint64_t highest_bits_(uint64_t mask, int count) {
    for (int beyond = std::popcount(mask) - count; beyond > 0; --beyond) mask &= mask - 1;
    return mask;
}

}  // namespace

size_t key_part_t::first_byte() const { return at + static_cast<size_t>(std::countl_zero(mask)) / 8; }

void sample_varying_bits(const keys_t &keys, uint64_t *varying) {
    const int64_t step = keys.count / _sampled_rows + 1;
    for (size_t word = 0; word < words_of_key(keys.width); ++word) {
        const uint64_t bits = varying_bits_(keys, word_place_(word, keys.width), 0, keys.count, step);
        varying[word] = bits & own_bits_(word, keys.width);
    }
}

size_t divide_into_parts(const keys_t &keys, const uint64_t *varying, key_part_t *parts) {
    size_t count = 0;
    int item = 0, room = ITEM_BITS - keys.row_bits;
    for (size_t word = 0; word < words_of_key(keys.width); ++word) {
        for (uint64_t left = varying[word]; left != 0;) {
            key_part_t &part = parts[count++];
            part.at = word_place_(word, keys.width);
            part.mask = highest_bits_(left, room);
            find_moves_(part.mask, part.moves);
            left &= ~part.mask;
            room -= std::popcount(part.mask);
            part.shift = keys.row_bits + room;
            part.item = item;
            if (room != 0) continue;
            ++item;
            room = ITEM_BITS - keys.row_bits;
        }
    }
    return count;
}

// ---- kernels ----

struct key_bits_kernels_t {
    // Puts a part into the items of some rows; returns what of its word is not as in `first`.
    uint64_t (*add_part)(const key_part_t &part, const uint8_t *key, size_t width, uint64_t first,
                         int64_t count, item_t *items);
};

namespace plain {
namespace {

uint64_t add_part(const key_part_t &part, const uint8_t *key, size_t width, uint64_t first, int64_t count,
                  item_t *items) {
    uint64_t varying = 0;
    for (int64_t i = 0; i < count; ++i, key += width) {
        const uint64_t word = load_key_word(key + part.at, width);
        varying |= word ^ first;
        items[i] |= pack_by_moves_(word, part) << part.shift;
    }
    return varying;
}

constexpr key_bits_kernels_t kernels = {add_part};

}  // namespace
}  // namespace plain

}  // namespace dv::impl

#if DV_HAS_X86_64
#define DV_AVX2_KERNELS "key_bits_kernels.h"
#endif
#include "kernels_by_level.h"

namespace dv::impl {

namespace {

// Puts the words of some rows into their items; what varies beside `varying` is added there. False:
// something.
bool add_words_(const keys_t &keys, int64_t begin, int64_t end, const key_part_t *parts, size_t count,
                uint64_t *varying, item_t *items) {
    const key_bits_kernels_t &kernels = kernels_in_use();
    uint64_t unforeseen = 0;
    size_t next = 0;  // part
    for (size_t word = 0; word < words_of_key(keys.width); ++word) {
        const size_t at = word_place_(word, keys.width);
        uint64_t bits;
        if (next < count && parts[next].item == 0 && parts[next].at == at) {
            const uint64_t first = load_key_word(keys.bytes + at, keys.width);
            bits = kernels.add_part(parts[next++], keys.key(begin), keys.width, first, end - begin, items);
        } else {
            bits = varying_bits_(keys, at, begin, end, 1);
        }
        bits &= own_bits_(word, keys.width);
        unforeseen |= bits & ~varying[word];
        varying[word] |= bits;
    }
    return unforeseen == 0;
}

}  // namespace

bool make_first_items(const keys_t &keys, const key_part_t *parts, size_t count, uint64_t *varying,
                      item_t *items, int64_t *counters) {
    std::fill(counters, counters + (1 << LEADING_BITS), 0);
    bool is_foreseen = true;
    for (int64_t begin = 0; begin < keys.count; begin += _block) {
        const int64_t end = std::min(keys.count, begin + _block);
        for (int64_t row = begin; row < end; ++row) items[row] = static_cast<item_t>(row);
        if (!add_words_(keys, begin, end, parts, count, varying, items + begin)) is_foreseen = false;
        for (int64_t row = begin; row < end; ++row) ++counters[items[row] >> (ITEM_BITS - LEADING_BITS)];
    }
    return is_foreseen;
}

item_t make_item(const keys_t &keys, const key_part_t *parts, size_t first, size_t count, int64_t row) {
    auto item = static_cast<item_t>(row);
    for (size_t i = first; i < count && parts[i].item == parts[first].item; ++i) {
        const uint64_t word = load_key_word(keys.key(row) + parts[i].at, keys.width);
        item |= pack_by_moves_(word, parts[i]) << parts[i].shift;
    }
    return item;
}

}  // namespace dv::impl
