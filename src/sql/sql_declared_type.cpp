// Declared types: words, and lists of numbers in parentheses behind some of them.

#include "sql_declared_type.h"

#include <cstring>

using namespace dv::impl;

namespace {

constexpr int _name_size = 32;
constexpr int _numbers_max = 2;
constexpr int _lists_max = 2;

struct number_list {
    int place;  // where in the name it stands
    int numbers[_numbers_max];
    int count;  // how many it has, -1 where it is no list of numbers
};

// A declared type in two parts.
struct parts {
    char name[_name_size];  // its words in capitals, a blank between them; empty where they are too long
    int length;
    int lists;  // how many there are
    number_list list[_lists_max];
};

bool is_blank_(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit_(char c) { return c >= '0' && c <= '9'; }

const char *skip_blanks_(const char *at) {
    while (is_blank_(*at)) ++at;
    return at;
}

// "-2" with blanks around; NULL when there is none, or one of more than three digits.
const char *take_number_(const char *at, int &number) {
    constexpr int digits_max = 3;
    at = skip_blanks_(at);
    const bool is_negative = *at == '-';
    if (*at == '-' || *at == '+') at = skip_blanks_(at + 1);
    int digits = 0;
    for (number = 0; is_digit_(*at) && digits < digits_max; ++digits) number = 10 * number + *at++ - '0';
    if (digits == 0) return nullptr;
    if (is_negative) number = -number;
    return skip_blanks_(at);
}

// The list whose parenthesis stands at `at`; returns what is behind it.
const char *take_list_(const char *at, parts &of) {
    number_list list = {of.length, {}, 0};
    const char *const end = strchr(at, ')');
    const char *next = at;
    while (next != nullptr && *next != ')' && list.count < _numbers_max) {
        next = take_number_(next + 1, list.numbers[list.count]);
        if (next != nullptr) ++list.count;
        if (next != nullptr && *next != ',' && *next != ')') next = nullptr;
    }
    if (next == nullptr || *next != ')') list.count = -1;
    if (of.lists < _lists_max) of.list[of.lists] = list;
    ++of.lists;
    return end == nullptr ? at + strlen(at) : end + 1;
}

parts split_(const char *declared) {
    parts of{};
    for (const char *at = skip_blanks_(declared); *at != '\0';) {
        if (*at == '(') {
            at = take_list_(at, of);
        } else {
            const char c = *at++;
            if (of.length > _name_size - 3) return {};
            const bool begins_word = of.length > 0 && (is_blank_(at[-2]) || at[-2] == ')');
            if (begins_word) of.name[of.length++] = ' ';
            of.name[of.length++] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
        at = skip_blanks_(at);
    }
    return of;
}

const sql_type *type_of_(const char *name) {
    for (int kind = 0; kind < DV_TYPE_MAX_PSM; ++kind) {
        const sql_type *type = sql_type_of(kind);
        if (type != nullptr && strcmp(type->name, name) == 0) return type;
    }
    return nullptr;
}

bool is_within_(int number, int least, int most) { return number >= least && number <= most; }

// NUMBER(p) has the scale 0.
bool take_precision_(declared_type &type, const parts &of) {
    constexpr int scale_limit = 127;
    const number_list &list = of.list[0];
    if (of.lists == 0) return true;
    if (list.count < 1) return false;
    type.precision = list.numbers[0];
    type.scale = list.count > 1 ? list.numbers[1] : 0;
    return of.lists == 1 && is_within_(type.precision, 1, NUMBER_PRECISION_MAX) &&
           is_within_(type.scale, -scale_limit, scale_limit);
}

// One number, of so many digits.
bool take_digits_(int &digits, const number_list &list) {
    constexpr int digits_max = 9;
    const bool is_first = digits < 0;
    digits = list.numbers[0];
    return is_first && list.count == 1 && is_within_(digits, 0, digits_max);
}

// Behind TIME or TIMESTAMP, or behind the last word.
bool take_fraction_(declared_type &type, const parts &of) {
    const number_list &list = of.list[0];
    if (of.lists == 0) return true;
    const bool is_in_place = list.place == static_cast<int>(strcspn(of.name, " ")) || list.place == of.length;
    return of.lists == 1 && is_in_place && take_digits_(type.fraction, list);
}

// Behind the first field's name, and behind SECOND.
bool take_interval_precisions_(declared_type &type, const parts &of) {
    const auto leading_place = static_cast<int>(strstr(of.name, " TO ") - of.name);
    bool is_sound = of.lists <= _lists_max;
    for (int i = 0; is_sound && i < of.lists; ++i) {
        const bool is_of_seconds = type.type->kind == SQL_KIND_ITV_DTS && of.list[i].place == of.length;
        is_sound = (is_of_seconds || of.list[i].place == leading_place) &&
                   take_digits_(is_of_seconds ? type.fraction : type.leading, of.list[i]);
    }
    return is_sound;
}

}  // namespace

declared_type dv::impl::sql_parse_declared_type(const char *declared) {
    const parts of = split_(declared);
    declared_type type = {type_of_(of.name), true, 0, 0, -1, -1};
    if (type.type == nullptr) return type;
    switch (type.type->kind) {
        case SQL_KIND_NUMBER:
            type.is_sound = take_precision_(type, of);
            break;
        case SQL_KIND_TIME:
        case SQL_KIND_TIMESTAMP:
        case SQL_KIND_TS_TZ:
            type.is_sound = take_fraction_(type, of);
            break;
        case SQL_KIND_ITV_YTM:
        case SQL_KIND_ITV_DTS:
            type.is_sound = take_interval_precisions_(type, of);
            break;
        default:
            type.is_sound = of.lists == 0;
    }
    return type;
}
