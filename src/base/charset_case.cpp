// Case conversion in any character set, without the C locale.
//
// A text is walked character by character, because in the East Asian sets ASCII letters occur as second bytes
// of other characters. Each character is decoded to UCS-2, mapped by the tables below (simple case mappings
// of the Unicode character database, version 14, for the scripts that the legacy sets hold), and encoded
// again. Words, for initial capitals, are runs of letters, digits and the marks upon letters.

#include <algorithm>
#include <cstring>
#include <iterator>

#include "charset_codec.h"

using namespace dv::impl;

namespace {

struct unit_range_t {
    uint16_t first, last;
};

// Units first, first + step, ..., last have the other case delta away.
struct case_range_t {
    uint16_t first, last;
    int step, delta;
};

// clang-format off
constexpr case_range_t _to_upper[] = {
    {0x0061, 0x007A, 1, -32},
    {0x00B5, 0x00B5, 1, 743}, {0x00E0, 0x00F6, 1, -32}, {0x00F8, 0x00FE, 1, -32},
    {0x00FF, 0x00FF, 1, 121}, {0x0101, 0x012F, 2, -1}, {0x0131, 0x0131, 1, -232},
    {0x0133, 0x0137, 2, -1}, {0x013A, 0x0148, 2, -1}, {0x014B, 0x0177, 2, -1}, {0x017A, 0x017E, 2, -1},
    {0x017F, 0x017F, 1, -300}, {0x01A1, 0x01A1, 1, -1}, {0x01B0, 0x01B0, 1, -1}, {0x01CE, 0x01DC, 2, -1},
    {0x01DF, 0x01EF, 2, -1},
    {0x01F5, 0x01F5, 1, -1}, {0x01F9, 0x021F, 2, -1}, {0x0223, 0x0233, 2, -1}, {0x0371, 0x0373, 2, -1},
    {0x0377, 0x0377, 1, -1}, {0x037B, 0x037D, 1, 130}, {0x03AC, 0x03AC, 1, -38},
    {0x03AD, 0x03AF, 1, -37}, {0x03B1, 0x03C1, 1, -32}, {0x03C2, 0x03C2, 1, -31},
    {0x03C3, 0x03CB, 1, -32}, {0x03CC, 0x03CC, 1, -64}, {0x03CD, 0x03CE, 1, -63},
    {0x03D0, 0x03D0, 1, -62}, {0x03D1, 0x03D1, 1, -57}, {0x03D5, 0x03D5, 1, -47},
    {0x03D6, 0x03D6, 1, -54}, {0x03D7, 0x03D7, 1, -8}, {0x03D9, 0x03EF, 2, -1}, {0x03F0, 0x03F0, 1, -86},
    {0x03F1, 0x03F1, 1, -80}, {0x03F2, 0x03F2, 1, 7}, {0x03F3, 0x03F3, 1, -116},
    {0x03F5, 0x03F5, 1, -96}, {0x03F8, 0x03F8, 1, -1}, {0x03FB, 0x03FB, 1, -1}, {0x0430, 0x044F, 1, -32},
    {0x0450, 0x045F, 1, -80}, {0x0461, 0x0481, 2, -1}, {0x048B, 0x04BF, 2, -1}, {0x04C2, 0x04CE, 2, -1},
    {0x04CF, 0x04CF, 1, -15}, {0x04D1, 0x052F, 2, -1}, {0x1E01, 0x1E95, 2, -1}, {0x1E9B, 0x1E9B, 1, -59},
    {0x1EA1, 0x1EFF, 2, -1}, {0x2170, 0x217F, 1, -16}, {0x24D0, 0x24E9, 1, -26},
    {0xFF41, 0xFF5A, 1, -32},
};

constexpr case_range_t _to_lower[] = {
    {0x0041, 0x005A, 1, 32},
    {0x00C0, 0x00D6, 1, 32}, {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012E, 2, 1}, {0x0130, 0x0130, 1, -199},
    {0x0132, 0x0136, 2, 1}, {0x0139, 0x0147, 2, 1}, {0x014A, 0x0176, 2, 1}, {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1}, {0x01A0, 0x01A0, 1, 1}, {0x01AF, 0x01AF, 1, 1}, {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},
    {0x01F4, 0x01F4, 1, 1}, {0x01F8, 0x021E, 2, 1}, {0x0222, 0x0232, 2, 1}, {0x0370, 0x0372, 2, 1},
    {0x0376, 0x0376, 1, 1}, {0x037F, 0x037F, 1, 116}, {0x0386, 0x0386, 1, 38}, {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63}, {0x0391, 0x03A1, 1, 32}, {0x03A3, 0x03AB, 1, 32},
    {0x03CF, 0x03CF, 1, 8}, {0x03D8, 0x03EE, 2, 1}, {0x03F4, 0x03F4, 1, -60}, {0x03F7, 0x03F7, 1, 1},
    {0x03F9, 0x03F9, 1, -7}, {0x03FA, 0x03FA, 1, 1}, {0x03FD, 0x03FF, 1, -130}, {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32}, {0x0460, 0x0480, 2, 1}, {0x048A, 0x04BE, 2, 1}, {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1}, {0x04D0, 0x052E, 2, 1}, {0x1E00, 0x1E94, 2, 1}, {0x1E9E, 0x1E9E, 1, -7615},
    {0x1EA0, 0x1EFE, 2, 1}, {0x2126, 0x2126, 1, -7517}, {0x212A, 0x212A, 1, -8383},
    {0x212B, 0x212B, 1, -8262}, {0x2160, 0x216F, 1, 16}, {0x24B6, 0x24CF, 1, 26},
    {0xFF21, 0xFF3A, 1, 32},
};

// Letters, digits and combining marks; scripts without case by whole blocks.
constexpr unit_range_t _word_units[] = {
    {0x0030, 0x0039},  // ASCII
    {0x0041, 0x005A},
    {0x0061, 0x007A},
    {0x00AA, 0x00AA}, {0x00B5, 0x00B5}, {0x00BA, 0x00BA},  // Latin
    {0x00C0, 0x00D6}, {0x00D8, 0x00F6}, {0x00F8, 0x02C1},
    {0x0300, 0x0374}, {0x0376, 0x037D}, {0x037F, 0x037F},  // marks, Greek
    {0x0386, 0x0386}, {0x0388, 0x03F5}, {0x03F7, 0x0481},  // and Cyrillic
    {0x0483, 0x0559}, {0x0560, 0x0588}, {0x0591, 0x1FFC},  // Armenian to Greek Extended
    {0x2071, 0x2071}, {0x207F, 0x207F}, {0x2090, 0x209C},
    {0x2126, 0x2126}, {0x212A, 0x212B}, {0x2160, 0x2188},  // letterlike, roman numerals
    {0x24B6, 0x24E9}, {0x2C00, 0x2DFF}, {0x3005, 0x3007},
    {0x3041, 0x309F}, {0x30A1, 0x30FA}, {0x30FC, 0x318E},  // kana, bopomofo, jamo
    {0x31A0, 0x31FF}, {0x3400, 0x4DBF}, {0x4E00, 0xD7FB},  // ideographs to hangul
    {0xF900, 0xFDFB}, {0xFE70, 0xFEFC},
    {0xFF10, 0xFF19}, {0xFF21, 0xFF3A}, {0xFF41, 0xFF5A},  // full and half width
    {0xFF66, 0xFFDC},
};
// clang-format on

template <typename Range, size_t N>
constexpr bool is_sorted_(const Range (&ranges)[N]) {
    return std::all_of(ranges, ranges + N, [](auto &range) { return range.first <= range.last; }) &&
           std::adjacent_find(ranges, ranges + N, [](auto &a, auto &b) { return a.last >= b.first; }) ==
               ranges + N;
}
static_assert(is_sorted_(_to_upper) && is_sorted_(_to_lower) && is_sorted_(_word_units));

// Does every range end with a unit that changes, and a range of one unit have the step 1?
template <size_t N>
constexpr bool are_exact_(const case_range_t (&ranges)[N]) {
    return std::all_of(ranges, ranges + N, [](auto &range) {
        return range.first == range.last ? range.step == 1 : (range.last - range.first) % range.step == 0;
    });
}
static_assert(are_exact_(_to_upper) && are_exact_(_to_lower));

// The range that holds the unit, or NULL.
template <typename Range, size_t N>
const Range *find_(const Range (&ranges)[N], int unit) {
    const Range *const range =
        std::lower_bound(ranges, ranges + N, unit, [](auto &r, int wanted) { return r.last < wanted; });
    return range != ranges + N && unit >= range->first ? range : nullptr;
}

int change_unit_(int unit, dvstr_case_e to) {
    const case_range_t *const range =
        to == DVSTR_CASE_UPPER ? find_(_to_upper, unit) : find_(_to_lower, unit);
    const bool is_changed = range != nullptr && (unit - range->first) % range->step == 0;
    return is_changed ? unit + range->delta : unit;
}

// Encodes the character's other case to out; 0 bytes when the character stays as it is, because it has none,
// or because that is longer or not in the set.
int change_char_(const charset_codec_t &codec, const charset_char_t &from, dvstr_case_e to, uint8_t *out) {
    if (from.unit == CHAR_NONE) return 0;
    const int unit = change_unit_(from.unit, to);
    if (unit == from.unit) return 0;
    const int size = codec.encode(codec.table, unit, out);
    return size <= from.size ? size : 0;
}

}  // namespace

int dv::impl::charset_change_case(const charset_codec_t &codec, dvstr_case_e to, const char *src, int src_len,
                                  char *dst, int dst_size) {
    const uint8_t *const text = reinterpret_cast<const uint8_t *>(src);
    bool is_in_word = false;
    int written = 0;
    for (int i = 0; i < src_len;) {
        const charset_char_t next = codec.decode(codec.table, text + i, src_len - i);
        const dvstr_case_e initcap = is_in_word ? DVSTR_CASE_LOWER : DVSTR_CASE_UPPER;
        uint8_t bytes[CHARSET_CHAR_SIZE_MAX];
        int size = change_char_(codec, next, to == DVSTR_CASE_INITCAP ? initcap : to, bytes);
        const bool is_changed = size != 0;
        if (!is_changed) size = next.size;
        if (size > dst_size - written) break;

        // The result never overtakes the source, so that a change in place reads what was not yet written.
        std::memmove(dst + written, is_changed ? bytes : text + i, static_cast<size_t>(size));
        written += size;
        is_in_word = next.unit != CHAR_NONE && find_(_word_units, next.unit) != nullptr;
        i += next.size;
    }
    return written;
}
