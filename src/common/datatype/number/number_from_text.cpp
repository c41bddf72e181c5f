// Text to NUMBER.
//
//   text   = blanks [sign] digits [ "." digits ] [ ("E" | "e") [sign] digits ] blanks
//
// with at least one digit in front of the exponent. Plain digits, at most 38, are read by plain_text.h; what
// follows here reads any text. The first 38 digits from the first that is not 0 are kept, later ones only
// count. The kept characters are laid out so that pairs begin at even distances from the decimal point, and
// eight of them at a time become four base-100 digits.

#include <algorithm>

#include "../ascii.h"
#include "../error.h"
#include "number_layout.h"
#include "plain_text.h"

using namespace dv::impl;

namespace {

constexpr int64_t _exponent_text_max = 1'000'000'000'000;  // exponents are cut off here, far beyond any range

// A byte below '0' sets its top bit when '0' is taken away, one above '9' when 127 - '9' is added; a byte
// from 128 on has it set. A borrow or carry can only come from a byte that is no digit anyway.
bool are_eight_digits_(const char *text) {
    uint64_t bytes;
    memcpy(&bytes, text, sizeof bytes);
    constexpr uint64_t top_bits = in_each_byte(0x80);
    return (((bytes - in_each_byte('0')) | (bytes + in_each_byte(127 - '9')) | bytes) & top_bits) == 0;
}

struct text_cursor_t {
    const char *pos;
    const char *end;

    bool at(char c) const { return pos < end && *pos == c; }
    bool at_digit() const { return pos < end && is_digit(*pos); }
    int64_t skip(char c) {
        const char *const begin = pos;
        while (at(c)) ++pos;
        return pos - begin;
    }
    int64_t skip_digits() {
        const char *const begin = pos;
        while (end - pos >= 8 && are_eight_digits_(pos)) pos += 8;
        while (at_digit()) ++pos;
        return pos - begin;
    }
    // "-" or "+"; true for "-".
    bool skip_sign() {
        const char first = pos < end ? *pos : '\0';
        const bool negative = first == '-';
        pos += int{negative} | int{first == '+'};  // a sign is hard to predict
        return negative;
    }
    // Blanks and sign; true for "-".
    bool skip_to_number() {
        skip(' ');
        return skip_sign();
    }
};

// The digits of a number in front of its exponent: 0.kkkk x 10^point.
struct kept_digits_t {
    uint8_t text[48];  // one '0' in front, for values that begin with half a pair; '0' behind the kept digits
    int count = 0;
    int64_t point = 0;

    kept_digits_t() { memset(text, '0', sizeof text); }

    void keep(const char *digits, int64_t run) {
        const auto room = static_cast<int>(std::min<int64_t>(run, NUMBER_PRECISION_MAX - count));
        memcpy(text + 1 + count, digits, static_cast<size_t>(room));
        count += room;
    }
};

// Reads digits and point; false when there is no digit.
bool read_digits_(text_cursor_t &cursor, kept_digits_t &kept) {
    bool any = cursor.skip('0') != 0;
    const char *digits = cursor.pos;
    const int64_t integer_digits = cursor.skip_digits();
    kept.keep(digits, integer_digits);
    kept.point = integer_digits;
    any |= integer_digits != 0;
    if (!cursor.at('.')) return any;

    ++cursor.pos;
    if (kept.count == 0) {
        kept.point = -cursor.skip('0');
        any |= kept.point != 0;
    }
    digits = cursor.pos;
    const int64_t fraction_digits = cursor.skip_digits();
    kept.keep(digits, fraction_digits);
    return any || fraction_digits != 0;
}

// Reads an exponent of any length behind its "E"; false when it has no digit.
bool read_exponent_(text_cursor_t &cursor, int64_t &exponent) {
    const bool negative = cursor.skip_sign();
    if (!cursor.at_digit()) return false;
    int64_t magnitude = 0;
    for (; cursor.at_digit(); ++cursor.pos) {
        magnitude = std::min(magnitude * 10 + (*cursor.pos - '0'), _exponent_text_max);
    }
    exponent = negative ? -magnitude : magnitude;
    return true;
}

// Eight digit characters as four base-100 digits in the low half of a word.
constexpr uint64_t pair_up_(const uint8_t *text) {
    const uint64_t digits = load_be64(text) - in_each_byte('0');
    const uint64_t pairs = (digits >> 8 & 0x00FF00FF00FF00FF) * 10 + (digits & 0x00FF00FF00FF00FF);
    const uint64_t fours = (pairs | pairs >> 8) & 0x0000FFFF0000FFFF;
    return (fours | fours >> 16) & 0xFFFFFFFF;
}
static_assert([] {
    constexpr uint8_t text[] = {'1', '2', '3', '4', '0', '0', '9', '9'};
    return pair_up_(text) == 0x0C220063;
}());

constexpr uint64_t coef_word_(const uint8_t *text) { return pair_up_(text) << 32 | pair_up_(text + 8); }

// What becomes of an error: raised in the name of a reader, or stored as its code. The readers are templates
// over it, so that the one that raises has nothing to carry: its name is part of the type.
template <const auto &Reader>
struct raise_as_t {
    void operator()(dv_error_code_e code) const { raise(error_at(code, __FILE__, __LINE__, Reader)); }
};
constexpr char _from_str[] = "number_from_str", _from_str_nt[] = "number_from_str_nt";
struct store_code_t {
    int *stored;
    void operator()(dv_error_code_e code) const { *stored = code; }
};

// Stores 0.kkkk x 10^point. An odd point puts its first digit alone into a pair, behind a '0'.
template <typename Failure>
void store_kept_(number_t &x, bool negative, const kept_digits_t &kept, Failure failure) {
    const int64_t exponent = (kept.point + 1) >> 1;  // floor: point may be negative
    const uint8_t *const text = kept.text + ((kept.point & 1) != 0 ? 0 : 1);
    const long_coef coef = {{coef_word_(text), coef_word_(text + 16), pair_up_(text + 32) << 32}};
    if (coef.word[0] == 0) return store_zero(x);
    if (exponent > NUMBER_EXPONENT_MAX) return failure(DV_ERR_NUMBER_OVERFLOW);
    if (exponent < NUMBER_EXPONENT_MIN) return failure(DV_ERR_NUMBER_UNDERFLOW);
    store_coef(x, negative, static_cast<int>(exponent), coef);
}

// Reads any text.
template <typename Failure>
[[gnu::noinline]] void read_general_(number_t &x, const char *str, size_t length, Failure failure) {
    if (read_long_plain_text(x, str, length)) return;
    if (has_foreign_character(str, length)) return failure(DV_ERR_NUMBER_TEXT);
    text_cursor_t cursor = {str, str + length};
    const bool negative = cursor.skip_to_number();
    kept_digits_t kept;
    if (!read_digits_(cursor, kept)) return failure(DV_ERR_NUMBER_TEXT);
    int64_t exponent = 0;
    if (cursor.at('E') || cursor.at('e')) {
        ++cursor.pos;
        if (!read_exponent_(cursor, exponent)) return failure(DV_ERR_NUMBER_TEXT);
    }
    cursor.skip(' ');
    if (cursor.pos != cursor.end) return failure(DV_ERR_NUMBER_TEXT);
    kept.point += exponent;
    store_kept_(x, negative, kept, failure);
}

// Not inline: behind a call of strlen its registers would have to be saved; so they would around other calls
// than the last.
template <typename Failure>
[[gnu::noinline]] void read_(number_t &x, const char *str, size_t length, Failure failure) {
    if (!read_short_plain_text(x, str, length)) read_general_(x, str, length, failure);
}

size_t length_of_(const char *str, int len) { return len > 0 ? static_cast<size_t>(len) : strlen(str); }

}  // namespace

extern "C" void number_from_str(number_t *x, int len, const char *str, const char *format) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    (void)format;
    read_(*x, str, length_of_(str, len), raise_as_t<_from_str>());
}

extern "C" int number_try_from_str(number_t *x, int len, const char *str) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return 0;
    int code = 0;
    read_(*x, str, length_of_(str, len), store_code_t{&code});
    return code;
}

extern "C" void number_from_str_nt(number_t *x, int len, const char *str, const char *format) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    const size_t length = length_of_(str, len);
    if (read_short_plain_text(*x, str, length) || read_long_plain_text(*x, str, length)) return;
    text_cursor_t cursor = {str, str + length};
    const bool negative = cursor.skip_to_number();
    cursor.skip('0');
    const char *const digits = cursor.pos;
    kept_digits_t kept;
    kept.point = cursor.skip_digits();
    if (cursor.pos != cursor.end) return number_from_str(x, len, str, format);
    kept.keep(digits, kept.point);
    store_kept_(*x, negative, kept, raise_as_t<_from_str_nt>());
}
