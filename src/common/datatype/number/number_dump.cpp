// Dumps: a record's bytes as text, and values on standard output. The only file of the area that prints.

#include <stdio.h>

#include <algorithm>

#include "../ascii.h"
#include "../error.h"
#include "number_layout.h"

using namespace dv::impl;

namespace {

constexpr char _hex_digits[] = "0123456789abcdef";
constexpr int _value_text_size = 512;

// Reads the pair at text; -1 where there is none.
int read_hex_byte_(const char *text) {
    const int high = hex_digit_of(to_upper(text[0]));
    const int low = high < 0 ? -1 : hex_digit_of(to_upper(text[1]));
    return low < 0 ? -1 : high * 16 + low;
}

}  // namespace

extern "C" void number_sdump(const number_t *x, char *buf, int buf_size) {
    if (buf_size <= 0 || buf == nullptr) return;
    char text[NUMBER_DUMP_SIZE] = "NULL";
    int length = 4;
    if (x != nullptr) {
        const auto *bytes = reinterpret_cast<const uint8_t *>(x);
        const int last = std::clamp<int>(x->size, 1, NUMBER_SIZE_MAX);  // size and signexp are always shown
        for (int i = 0; i <= last; ++i) {
            text[3 * i] = _hex_digits[bytes[i] >> 4];
            text[3 * i + 1] = _hex_digits[bytes[i] & 15];
            text[3 * i + 2] = ':';
        }
        length = 3 * last + 2;
    }
    length = std::min(length, buf_size - 1);
    memcpy(buf, text, static_cast<size_t>(length));
    buf[length] = '\0';
}

extern "C" void number_dump(const number_t *x) {
    char text[NUMBER_DUMP_SIZE];
    number_sdump(x, text, sizeof text);
    fputs(text, stdout);
}

extern "C" void number_dumpln(const number_t *x) {
    number_dump(x);
    fputc('\n', stdout);
}

extern "C" void number_dumpln_from_int(int v) {
    number_t x;
    number_from_int32(&x, v);
    number_dumpln(&x);
}

extern "C" void number_println(const number_t *x) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x))) return;
    char text[_value_text_size];
    number_to_str(x, sizeof text, text, nullptr);
    printf("[%s]\n", text);
}

extern "C" void number_println_from_str(const char *dump) {
    if (!DV_ASSERT(number_is_nonnull_ptr(dump))) return;
    number_t x{};
    auto *bytes = reinterpret_cast<uint8_t *>(&x);
    for (size_t i = 0; i < sizeof x; ++i) {
        const int byte = read_hex_byte_(&dump[3 * i]);
        if (byte < 0) break;
        bytes[i] = static_cast<uint8_t>(byte);
        if (dump[3 * i + 2] == '\0') break;
    }
    number_println(&x);
}
