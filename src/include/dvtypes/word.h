// dvtypes/word.h: records as big-endian numbers, whose order is that of their bytes; for the comparisons that
// are inline.

#ifndef DVTYPES_WORD_H
#define DVTYPES_WORD_H

#include <stdint.h>
#include <string.h>

// The 8 bytes at p, the first one the highest; compilers make it one load and a byte swap.
static inline uint64_t dv_load_word(const void *p) {
    uint64_t word;
    memcpy(&word, p, sizeof word);
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    word = __builtin_bswap64(word);
#endif
    return word;
}

// -1, 0 or 1 by the order of the 12 bytes at x and at y. Where the first eight agree, the last eight decide.
static inline int dv_compare_12_bytes(const void *x, const void *y) {
    uint64_t xw = dv_load_word(x);
    uint64_t yw = dv_load_word(y);
    if (xw == yw) {
        xw = dv_load_word((const uint8_t *)x + 4);
        yw = dv_load_word((const uint8_t *)y + 4);
        if (xw == yw) return 0;
    }
    return xw < yw ? -1 : 1;
}

#endif  // DVTYPES_WORD_H
