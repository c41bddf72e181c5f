// Is a text UTF-8?

#ifndef DV_IMPORT_UTF8_H
#define DV_IMPORT_UTF8_H

#include <cstdint>
#include <cstring>
#include <string_view>

namespace dv::import {

// The bytes of the character that a text begins with: 1 to 4, or 0 where it is none. The second byte is
// bounded so that no character has two forms, and none is a surrogate or beyond U+10FFFF.
inline size_t utf8_length(std::string_view text) {
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<uint8_t>(text[i]) : 0; };
    const int first = byte(0), second = byte(1);
    if (first < 0x80) return 1;
    const size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    const int least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const int most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (length == 0 || second < least || second > most) return 0;
    for (size_t i = 2; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    return length;
}

inline bool is_ascii_8(const char *text) {
    uint64_t bytes;
    memcpy(&bytes, text, sizeof bytes);
    return (bytes & 0x8080'8080'8080'8080) == 0;
}

inline bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        if (text.size() >= 8 && is_ascii_8(text.data())) {
            text.remove_prefix(8);
            continue;
        }
        const size_t length = utf8_length(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace dv::import

#endif  // DV_IMPORT_UTF8_H
