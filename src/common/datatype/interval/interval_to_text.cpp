// Intervals to text: the characters that printf gives for the rows of _itv_print_fmt, without printf.
//
// Digits are written two at a time from a table, numbers from their last digit. The nine digits of a fraction
// are all written, and those behind its precision are then left behind the end. A text goes straight into the
// caller's buffer where that has room for the longest text of such a precision, else it is cut on its way
// from a buffer of this file.

#include <algorithm>

#include "../digits.h"
#include "interval_internal.h"

using namespace dv::impl;

namespace {

constexpr int _ytm_prec_max = 251;  // minimum digits of the years
constexpr int _ytm_rest_size = 6;   // beside the years: sign, "-244", NUL
constexpr int _leading_digits_max = 10;
constexpr int _ytm_text_size_max = _ytm_prec_max + _ytm_rest_size;

char *put_pair_(char *out, uint32_t value) {  // below 100
    store_text<uint16_t>(out, digit_pair(value));
    return out + 2;
}

// "%.*d" of a magnitude: with no minimum, 0 has no digits.
char *put_number_(char *out, uint32_t value, int min_digits) {
    char *const end = out + std::max(digit_count_of(value), min_digits);
    char *at = end;
    for (; value >= 100; value /= 100) put_pair_(at -= 2, value % 100);
    if (value >= 10) {
        put_pair_(at -= 2, value);
    } else if (value > 0) {
        *--at = static_cast<char>('0' + value);
    }
    std::fill(out, at, '0');
    return end;
}

// "%.02d".
char *put_two_digits_(char *out, uint32_t value) {
    return value < 100 ? put_pair_(out, value) : put_number_(out, value, 2);
}

// The first digits of nine that stand for nanoseconds; a whole second or more has more digits, as in printf.
// Writes nine characters at least.
char *put_fraction_(char *out, uint32_t nsec, int digits) {
    if (nsec >= NSEC_PER_SEC) [[unlikely]] {
        const int64_t unit = DECIMAL_POWERS[static_cast<size_t>(FRACTION_DIGITS - digits)];
        return put_number_(out, static_cast<uint32_t>(nsec / unit), digits);
    }
    const uint32_t high = nsec / 100'000, low = nsec % 100'000;  // four digits and five
    put_pair_(out, high / 100);
    put_pair_(out + 2, high % 100);
    put_pair_(out + 4, low / 1000);
    put_pair_(out + 6, low / 10 % 100);
    out[8] = static_cast<char>('0' + low % 10);
    return out + digits;
}

char *put_ytm_(char *out, const dv_itv_ytm_t &itv, int prec) {
    const int32_t years = itv_years(itv), months = itv_months(itv);
    *out++ = years < 0 || months < 0 ? '-' : '+';
    out = put_number_(out, magnitude_of(years), prec);
    *out++ = '-';
    return put_two_digits_(out, magnitude_of(months));
}

char *put_dts_(char *out, const dv_itv_dts_t &itv, int prec, int fprec) {
    const int32_t days = itv_days(itv), seconds = itv_seconds(itv), nsec = itv_nanoseconds(itv);
    const uint32_t second_of_day = magnitude_of(seconds);
    *out++ = (days | seconds | nsec) < 0 ? '-' : '+';
    out = put_number_(out, magnitude_of(days), prec);
    *out++ = ' ';
    out = put_two_digits_(out, second_of_day / SEC_PER_HOUR);
    *out++ = ':';
    out = put_pair_(out, second_of_day / SEC_PER_MINUTE % 60);
    *out++ = ':';
    out = put_pair_(out, second_of_day % SEC_PER_MINUTE);
    *out++ = '.';
    return put_fraction_(out, magnitude_of(nsec), fprec);
}

// Ends a text that was written where it belongs.
conv_status_t end_text_(char *end) {
    *end = '\0';
    return CONV_STATUS_WHOLE;
}

conv_status_t copy_text_(const char *text, const char *end, char *str, int buf_len) {
    if (buf_len < 1) return CONV_STATUS_CUT;
    const int64_t length = end - text;
    const int64_t kept = std::min<int64_t>(length, buf_len - 1);
    memcpy(str, text, static_cast<size_t>(kept));
    str[kept] = '\0';
    return kept == length ? CONV_STATUS_WHOLE : CONV_STATUS_CUT;
}

}  // namespace

extern "C" {

conv_status_t dv_itv_ytm_to_str(const dv_itv_ytm_t *itv, char *str, int prec, int buf_len) {
    if (!is_itv_given(itv) || !DV_ASSERT(str != NULL)) return CONV_STATUS_WHOLE;
    const int min_digits = prec < 0 ? 1 : std::min(prec, _ytm_prec_max);
    if (buf_len >= std::max(min_digits, _leading_digits_max) + _ytm_rest_size)
        return end_text_(put_ytm_(str, *itv, min_digits));
    char text[_ytm_text_size_max];
    return copy_text_(text, put_ytm_(text, *itv, min_digits), str, buf_len);
}

conv_status_t dv_itv_dts_to_str(const dv_itv_dts_t *itv, char *str, int prec, int fprec, int buf_len) {
    if (!is_itv_given(itv) || !DV_ASSERT(str != NULL)) return CONV_STATUS_WHOLE;
    if (prec < 0 || prec > 9 || fprec < 1 || fprec > FRACTION_DIGITS) raise(DV_ERR_ITV_TO_TEXT_PRECISION);
    if (buf_len >= DV_ITV_DTS_TEXT_SIZE) return end_text_(put_dts_(str, *itv, prec, fprec));
    char text[DV_ITV_DTS_TEXT_SIZE];
    return copy_text_(text, put_dts_(text, *itv, prec, fprec), str, buf_len);
}

}  // extern "C"
