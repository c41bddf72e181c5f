// One character at a time between a character set's bytes and UCS-2: what conversion and case change share.

#ifndef DV_BASE_CHARSET_CODEC_H
#define DV_BASE_CHARSET_CODEC_H

#include <cstddef>
#include <cstdint>

#include "dvtypes/base.h"

namespace dv::impl {

struct charset_table_t;  // charset_table.h; the codecs of sets without one ignore it

struct charset_char_t {
    int unit;  // UCS-2 code unit, or CHAR_NONE
    int size;  // bytes, at least 1
};

inline constexpr int CHAR_NONE = -1;  // malformed, not in the set, or beyond U+FFFF
inline constexpr int CHARSET_CHAR_SIZE_MAX = 4;

struct charset_codec_t {
    // The character that the text [p, p + size) begins with, size >= 1. Bytes that are no character are taken
    // together as far as they would have been one.
    charset_char_t (*decode)(charset_table_t *table, const uint8_t *p, int size);

    // Writes the bytes of a unit to out (CHARSET_CHAR_SIZE_MAX bytes); returns their number, 0 when the set
    // does not have it.
    int (*encode)(charset_table_t *table, int unit, uint8_t *out);

    charset_table_t *table;
};

// The work of charset_info_t::to_case.
int charset_change_case(const charset_codec_t &codec, dvstr_case_e to, const char *src, int src_len,
                        char *dst, int dst_size);

}  // namespace dv::impl

#endif  // DV_BASE_CHARSET_CODEC_H
