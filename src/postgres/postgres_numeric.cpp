// NUMBER and the server's numeric.
//
// The server's headers keep the form of numeric to themselves, but it is its form on disk, which stays the
// same from release to release for pg_upgrade. Behind the header of a varlena:
//
//   short   one word:    10, sign, decimal places (6 bits), weight (7 bits, two's complement)
//   long    two words:   00 or 01 (the sign), decimal places (14 bits); weight (16 bits)
//   special one word:    11, and 00 for NaN, 01 and 10 for the infinities
//
// and then digits of base 10,000 in words, the first of weight 10000^weight, without zeros at either end.
// Words are the machine's. Going by the text of a numeric in place of its digits takes four times as long; so
// go numerics of more than 38 digits.

#include "postgres_numeric.h"

#include "postgres_digits.h"

extern "C" {
#include <utils/fmgrprotos.h>
#include <utils/numeric.h>
}

using namespace dv::impl;

namespace {

constexpr unsigned _form_mask = 0xC000, _form_short = 0x8000, _form_special = 0xC000;
constexpr unsigned _special_infinite = 0x1000;
constexpr unsigned _short_negative = 0x2000, _long_negative = 0x4000;
constexpr int _short_places_shift = 7, _short_places_max = 0x3F;
constexpr unsigned _short_weight_mask = 0x7F, _short_weight_sign = 0x40;
constexpr int _word = sizeof(uint16_t);

constexpr int _pairs_of_group = 2;  // of a digit of base 10,000: digits of base 100
constexpr int _base = 100;

// A numeric that is finite.
struct view {
    bool is_negative;
    int weight;
    const char *groups;  // not aligned
    int count;

    int group(int i) const {
        int16_t word;
        memcpy(&word, groups + i * _word, sizeof word);
        return word;
    }
};

[[noreturn, gnu::cold]] void fail_(const char *value) {
    ereport(ERROR,
            (errcode(ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE), errmsg("cannot convert %s to number", value)));
    pg_unreachable();
}

view view_of_(const varlena *numeric) {
    const char *bytes = VARDATA_ANY(numeric);
    const int words = static_cast<int>(VARSIZE_ANY_EXHDR(numeric)) / _word;
    uint16_t head;
    memcpy(&head, bytes, sizeof head);
    if ((head & _form_mask) == _form_special) fail_((head & _special_infinite) != 0 ? "infinity" : "NaN");
    if ((head & _form_mask) == _form_short) {
        const int weight = static_cast<int>(head & _short_weight_mask);
        return {(head & _short_negative) != 0,
                weight - ((head & _short_weight_sign) != 0 ? int{_short_weight_mask} + 1 : 0), bytes + _word,
                words - 1};
    }
    int16_t weight;
    memcpy(&weight, bytes + _word, sizeof weight);
    return {(head & _long_negative) != 0, weight, bytes + 2 * _word, words - 2};
}

// As many digits as every NUMBER has room for, whatever its exponent: with a pair in front that may be 0.
constexpr int _pairs_max = 19;
constexpr int _groups_max = (_pairs_max + 1) / _pairs_of_group;

// False: there are too many digits, or the exponent is not one of NUMBER's.
bool store_digits_(number_t &number, const view &from) {
    if (from.count > _groups_max) return false;
    uint8_t pairs[_pairs_of_group * _groups_max + 1] = {};
    for (int i = 0; i < from.count; ++i) {
        const int group = from.group(i);
        pairs[_pairs_of_group * i] = static_cast<uint8_t>(group / _base);
        pairs[_pairs_of_group * i + 1] = static_cast<uint8_t>(group % _base);
    }
    const int skipped = pairs[0] == 0 ? 1 : 0;
    const uint8_t *first = pairs + skipped;
    const int exponent = _pairs_of_group * (from.weight + 1) - skipped;
    int count = _pairs_of_group * from.count - skipped;
    while (count > 0 && first[count - 1] == 0) --count;
    if (*first == 0 || count > _pairs_max || exponent < NUMBER_EXPONENT_MIN || exponent > NUMBER_EXPONENT_MAX)
        return false;
    number_digits parts = {from.is_negative, exponent, count, {}};
    memcpy(parts.digit, first, static_cast<size_t>(count));
    put_number_together(number, parts);
    return true;
}

// What a numeric is made of.
struct groups {
    bool is_negative;
    int weight, places;
    int count;
    int16_t group[NUMBER_DIGITS_MAX / _pairs_of_group + 1];
};

groups groups_of_(const number_t &number) {
    const number_digits parts = take_number_apart(number);
    uint8_t pairs[1 + NUMBER_DIGITS_MAX + 1] = {};  // with one in front that is 0, for an odd exponent
    memcpy(pairs + 1, parts.digit, sizeof parts.digit);
    const int is_odd = parts.exponent & 1;
    const uint8_t *first = pairs + 1 - is_odd;
    groups to = {};
    to.is_negative = parts.is_negative;
    to.weight = (parts.exponent + is_odd) / _pairs_of_group - 1;
    to.count = (parts.count + is_odd + 1) / _pairs_of_group;
    for (int i = 0; i < to.count; ++i)
        to.group[i] =
            static_cast<int16_t>(first[_pairs_of_group * i] * _base + first[_pairs_of_group * i + 1]);
    const int places = 2 * (parts.count - parts.exponent) - (pairs[parts.count] % 10 == 0 ? 1 : 0);
    to.places = places > 0 ? places : 0;
    return to;
}

// Writes what stands before the digits; returns the end.
char *put_head_(char *out, const groups &of) {
    const auto put = [&](unsigned word) {
        const auto bytes = static_cast<uint16_t>(word);
        memcpy(out, &bytes, sizeof bytes);
        out += sizeof bytes;
    };
    const auto places = static_cast<unsigned>(of.places), weight = static_cast<unsigned>(of.weight);
    if (of.places <= _short_places_max) {
        put(_form_short | (of.is_negative ? _short_negative : 0) | places << _short_places_shift |
            (weight & _short_weight_mask));
    } else {
        put((of.is_negative ? _long_negative : 0) | places);
        put(weight);
    }
    return out;
}

}  // namespace

Datum dv::impl::postgres_numeric_of(const number_t &number) {
    const groups of = number_cmp(&number, _number_zero) == 0 ? groups{} : groups_of_(number);
    auto *numeric = static_cast<char *>(palloc(VARHDRSZ + 2 * _word + sizeof of.group));
    char *end = put_head_(numeric + VARHDRSZ, of);
    memcpy(end, of.group, sizeof of.group);  // all, without a call
    end += of.count * _word;
    SET_VARSIZE(numeric, end - numeric);
    return PointerGetDatum(numeric);
}

void dv::impl::postgres_number_of_numeric(number_t &number, Datum numeric) {
    const view from = view_of_(PG_DETOAST_DATUM_PACKED(numeric));
    if (from.count == 0) return number_assign(&number, _number_zero);
    if (store_digits_(number, from)) return;
    char *written = DatumGetCString(DirectFunctionCall1(numeric_out, numeric));
    number_from_str(&number, static_cast<int>(strlen(written)), written, nullptr);
    pfree(written);
}
