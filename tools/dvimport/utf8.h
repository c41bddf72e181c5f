// Is a text UTF-8?

#ifndef DV_IMPORT_UTF8_H
#define DV_IMPORT_UTF8_H

#include <cstdint>
#include <cstring>
#include <string_view>

namespace dv::import {

// What a character's first byte says. The second is bounded so that no character has two forms, and none is a
// surrogate or beyond U+10FFFF.
struct utf8_lead_t {
    size_t length;  // 0: no character begins so
    int second_least, second_most;
};

constexpr utf8_lead_t utf8_lead(int first) {
    if (first < 0x80) return {1, 0, 0};
    if (first < 0xC2) return {0, 0, 0};
    if (first < 0xE0) return {2, 0x80, 0xBF};
    if (first == 0xE0) return {3, 0xA0, 0xBF};
    if (first == 0xED) return {3, 0x80, 0x9F};
    if (first < 0xF0) return {3, 0x80, 0xBF};
    if (first == 0xF0) return {4, 0x90, 0xBF};
    if (first < 0xF4) return {4, 0x80, 0xBF};
    if (first == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

// The bytes of the character that a text begins with: 1 to 4, or 0 where it is none.
inline size_t utf8_length(std::string_view text) {
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<uint8_t>(text[i]) : 0; };
    const utf8_lead_t lead = utf8_lead(byte(0));
    if (lead.length <= 1) return lead.length;
    if (byte(1) < lead.second_least || byte(1) > lead.second_most) return 0;
    for (size_t i = 2; i < lead.length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    return lead.length;
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
