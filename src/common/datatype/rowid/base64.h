// Numbers in base 64, the most significant digit first: the one writer and the one reader of every text form
// of a row identifier.
//
// A digit's value is found in a table over all bytes. A byte that is no digit has a value with the highest
// bit set; the bits of all digits are gathered, so that a text is checked once, at its end.

#ifndef DV_ROWID_BASE64_H
#define DV_ROWID_BASE64_H

#include <array>

#include "dvtypes/erowid.h"

namespace dv::impl {

inline constexpr uint8_t NO_BASE64_DIGIT = 0x80;
extern const std::array<uint8_t, 256> base64_value;  // by character: 0..63, or NO_BASE64_DIGIT

struct base64_t {
    uint64_t value;  // of the last 64 bits that the digits give; any, where one is none
    bool is_valid;   // all are digits
};

template <size_t Digits>
inline void write_base64(char *to, uint64_t value) {
    for (size_t i = Digits; i-- > 0; value /= 64) to[i] = erowid_encoding[value % 64];
}

template <size_t Digits>
inline base64_t read_base64(const char *from) {
    uint64_t value = 0;
    uint8_t seen = 0;
    for (size_t i = 0; i < Digits; ++i) {
        const uint8_t digit = base64_value[static_cast<uint8_t>(from[i])];
        value = value * 64 + digit;
        seen |= digit;
    }
    return {value, seen < NO_BASE64_DIGIT};
}

}  // namespace dv::impl

#endif  // DV_ROWID_BASE64_H
