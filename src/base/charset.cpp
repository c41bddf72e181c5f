// The character set descriptors: conversion to and from big-endian UCS-2.
//
// A character set is a pair of functions that decode and encode one character (charset_codec.h): ASCII and
// UTF-8 by arithmetic, the others by tables read out of libc's iconv. One loop each converts a text in either
// direction, character by character, so no character is ever split by the output limit. ASCII characters
// have their ASCII bytes in every set.

#include <algorithm>
#include <cstring>

#include "../common/datatype/bytes.h"
#include "charset_codec.h"
#include "charset_table.h"

using namespace dv::impl;

namespace {

// ---- ASCII ----------------------------------------------------------------------------------------------

charset_char_t decode_ascii_(charset_table_t *, const uint8_t *p, int) {
    return {p[0] < 0x80 ? p[0] : CHAR_NONE, 1};
}

int encode_ascii_(charset_table_t *, int unit, uint8_t *out) {
    if (unit >= 0x80) return 0;
    out[0] = static_cast<uint8_t>(unit);
    return 1;
}

// ---- UTF-8 ----------------------------------------------------------------------------------------------

bool is_surrogate_(int unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

// What the first byte of a sequence says: its size, its payload, and the range of the second byte, which
// excludes overlong forms, surrogates and what lies beyond U+10FFFF.
struct utf8_lead_t {
    int size;  // 2..4; 0: no lead byte
    int payload;
    uint8_t second_min, second_max;
};

utf8_lead_t utf8_lead_(uint8_t byte) {
    if (byte >= 0xC2 && byte <= 0xDF) return {2, byte & 0x1F, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {3, byte & 0x0F, static_cast<uint8_t>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {4, byte & 0x07, static_cast<uint8_t>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0, 0};
}

charset_char_t decode_utf8_(charset_table_t *, const uint8_t *p, int size) {
    if (p[0] < 0x80) return {p[0], 1};
    const utf8_lead_t lead = utf8_lead_(p[0]);
    int unit = lead.payload;
    int taken = 1;
    for (; taken < std::min(lead.size, size); ++taken) {
        const uint8_t low = taken == 1 ? lead.second_min : uint8_t{0x80};
        const uint8_t high = taken == 1 ? lead.second_max : uint8_t{0xBF};
        if (p[taken] < low || p[taken] > high) break;
        unit = unit << 6 | (p[taken] & 0x3F);
    }
    const bool is_unit = taken == lead.size && taken <= 3;
    return {is_unit ? unit : CHAR_NONE, taken};
}

int encode_utf8_(charset_table_t *, int unit, uint8_t *out) {
    if (unit < 0x80) {
        out[0] = static_cast<uint8_t>(unit);
        return 1;
    }
    if (unit < 0x800) {
        out[0] = static_cast<uint8_t>(0xC0 | unit >> 6);
        out[1] = static_cast<uint8_t>(0x80 | (unit & 0x3F));
        return 2;
    }
    if (is_surrogate_(unit)) return 0;
    out[0] = static_cast<uint8_t>(0xE0 | unit >> 12);
    out[1] = static_cast<uint8_t>(0x80 | (unit >> 6 & 0x3F));
    out[2] = static_cast<uint8_t>(0x80 | (unit & 0x3F));
    return 3;
}

// ---- sets with a table ----------------------------------------------------------------------------------

// The longest character wins. Bytes of 0x80 and above that continue a sequence which is not in the set belong
// to it; an ASCII byte behind such a lead byte stands for itself and is not lost.
charset_char_t decode_table_(charset_table_t *table, const uint8_t *p, int size) {
    table->prepare_lead(p[0]);
    const int longest = std::min(table->longest(p[0]), size);
    if (longest >= 3) {
        const int unit = table->triple(p[0], p[1], p[2]);
        if (unit != 0) return {unit, 3};
    }
    if (longest >= 2) {
        const int unit = table->pair(p[0], p[1]);
        if (unit != 0) return {unit, 2};
    }
    if (p[0] < 0x80) return {p[0], 1};
    if (table->single(p[0]) != 0) return {table->single(p[0]), 1};

    int taken = 1;
    while (taken < longest && p[taken] >= 0x80) ++taken;
    return {CHAR_NONE, taken};
}

int encode_table_(charset_table_t *table, int unit, uint8_t *out) {
    if (unit < 0x80) return encode_ascii_(nullptr, unit, out);
    const uint32_t entry = table->bytes_of(unit);
    const int size = static_cast<int>(entry >> 24);
    for (int i = 0; i < size; ++i) out[i] = static_cast<uint8_t>(entry >> 8 * (size - 1 - i));
    return size;
}

// ---- texts ----------------------------------------------------------------------------------------------

template <auto encode>
int text_from_ucs2_(charset_table_t *table, const uint8_t *src, int src_len, char *dst, int dst_size) {
    uint8_t *const out = reinterpret_cast<uint8_t *>(dst);
    int written = 0;
    for (int i = 0; i + 1 < src_len; i += 2) {
        uint8_t at_the_end[CHARSET_CHAR_SIZE_MAX];
        const bool has_room = dst_size - written >= CHARSET_CHAR_SIZE_MAX;
        uint8_t *const bytes = has_room ? out + written : at_the_end;
        int size = encode(table, load_be16(src + i), bytes);
        if (size == 0) size = encode_ascii_(nullptr, '?', bytes);
        if (size > dst_size - written) break;
        if (!has_room) std::memcpy(out + written, at_the_end, static_cast<size_t>(size));
        written += size;
    }
    return written;
}

template <auto decode>
int text_to_ucs2_(charset_table_t *table, const char *src, int src_len, uint8_t *dst, int dst_size) {
    const uint8_t *const text = reinterpret_cast<const uint8_t *>(src);
    int written = 0;
    for (int i = 0; i < src_len && dst_size - written >= 2;) {
        const charset_char_t next = decode(table, text + i, src_len - i);
        const int unit = next.unit != CHAR_NONE ? next.unit : '?';
        store_be16(dst + written, static_cast<uint16_t>(unit));
        written += 2;
        i += next.size;
    }
    return written;
}

// ---- descriptors ----------------------------------------------------------------------------------------

template <dvstr_charset_e set>
constexpr auto _decode = set == DVSTR_CHARSET_ASCII  ? decode_ascii_
                         : set == DVSTR_CHARSET_UTF8 ? decode_utf8_
                                                     : decode_table_;
template <dvstr_charset_e set>
constexpr auto _encode = set == DVSTR_CHARSET_ASCII  ? encode_ascii_
                         : set == DVSTR_CHARSET_UTF8 ? encode_utf8_
                                                     : encode_table_;

template <dvstr_charset_e set>
int from_ucs2_(const charset_info_t *, const uint8_t *src, int src_len, char *dst, int dst_size) {
    return text_from_ucs2_<_encode<set>>(charset_table(set), src, src_len, dst, dst_size);
}

template <dvstr_charset_e set>
int to_ucs2_(const charset_info_t *, const char *src, int src_len, uint8_t *dst, int dst_size) {
    return text_to_ucs2_<_decode<set>>(charset_table(set), src, src_len, dst, dst_size);
}

template <dvstr_charset_e set>
int to_case_(const charset_info_t *, dvstr_case_e to, const char *src, int src_len, char *dst, int dst_size) {
    const charset_codec_t codec = {_decode<set>, _encode<set>, charset_table(set)};
    return charset_change_case(codec, to, src, src_len, dst, dst_size);
}

template <dvstr_charset_e set>
constexpr charset_info_t descriptor_(const char *name, int max_char_len) {
    return {name, max_char_len, from_ucs2_<set>, to_ucs2_<set>, to_case_<set>};
}

}  // namespace

constinit const charset_info_t _charset_info[DVSTR_CHARSET_MAX] = {
    descriptor_<DVSTR_CHARSET_ASCII>("ASCII", 1),
    descriptor_<DVSTR_CHARSET_EUCKR>("EUCKR", 2),
    descriptor_<DVSTR_CHARSET_MSWIN949>("MSWIN949", 2),
    descriptor_<DVSTR_CHARSET_UTF8>("UTF8", 4),
    descriptor_<DVSTR_CHARSET_SJIS>("SJIS", 2),
    descriptor_<DVSTR_CHARSET_EUCJP>("EUCJP", 3),
    descriptor_<DVSTR_CHARSET_BIG5>("BIG5", 2),
    descriptor_<DVSTR_CHARSET_GBK>("GBK", 2),
    descriptor_<DVSTR_CHARSET_ISO8859_1>("ISO8859_1", 1),
    descriptor_<DVSTR_CHARSET_MSWIN1252>("MSWIN1252", 1),
    descriptor_<DVSTR_CHARSET_MSWIN1251>("MSWIN1251", 1),
    descriptor_<DVSTR_CHARSET_KOI8R>("KOI8R", 1),
    descriptor_<DVSTR_CHARSET_MSWIN1258>("MSWIN1258", 2),
};
