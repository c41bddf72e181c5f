// Names of regions by a hash without collisions. tzgen makes its tables; it and the library share this file.
//
// The hash gives a bucket and a slot. Each bucket has a shift that brings its names to slots of their own:
// Pagh, Hash and Displace: Efficient Evaluation of Minimal Perfect Hash Functions, WADS 1999. A slot holds
// the number of a region; an empty one that of any, since the name is compared anyway.

#ifndef DV_ZONE_NAME_HASH_H
#define DV_ZONE_NAME_HASH_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace dv::impl {

// Of names that four words cover; there are shorter ones.
inline constexpr size_t ZONE_NAME_MIN = 8, ZONE_NAME_LENGTH_MAX = 32;
inline constexpr int ZONE_NAME_BUCKET_BITS = 8, ZONE_NAME_SLOT_BITS = 10;

inline uint64_t word_at(const char *text) {
    uint64_t word;
    memcpy(&word, text, sizeof word);
    return word;
}

// 8 to 32 bytes as four words that overlap.
struct zone_name_words_t {
    uint64_t first, second, before_last, last;
};
inline zone_name_words_t zone_name_words(const char *name, size_t length) {
    const size_t last = length - 8, second = last < 8 ? last : 8;
    return {word_at(name), word_at(name + second), word_at(name + last - second), word_at(name + last)};
}
// Shorter ones.
inline zone_name_words_t short_zone_name_words(const char *name, size_t length) {
    zone_name_words_t words{};
    memcpy(&words.first, name, length);
    return words;
}

// The same in any letter case: the bit of letter case is set in all bytes, which does no harm in other ones.
constexpr uint64_t zone_name_hash(const zone_name_words_t &words) {
    constexpr uint64_t case_bits = 0x2020202020202020,
                       multiplier = 0x9E3779B97F4A7C15;  // 2^64 / golden ratio
    const uint64_t head = (words.first | case_bits) + std::rotl(words.before_last | case_bits, 31),
                   tail = (words.last | case_bits) ^ std::rotl(words.second | case_bits, 23);
    return (head * multiplier ^ tail) * multiplier;
}
constexpr size_t zone_name_bucket(uint64_t hash) { return hash >> (64 - ZONE_NAME_BUCKET_BITS); }
constexpr size_t zone_name_slot(uint64_t hash, uint16_t shift) {
    constexpr size_t slots = size_t{1} << ZONE_NAME_SLOT_BITS;
    return ((hash >> 32) + shift) % slots;
}

}  // namespace dv::impl

#endif  // DV_ZONE_NAME_HASH_H
