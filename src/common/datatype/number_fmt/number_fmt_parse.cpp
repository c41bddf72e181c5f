// Compiling a number format model.
//
// A model is read once, left to right, through phases: prefix, leading currency, digits, trailing currency,
// sign, end. Each element is a row of one table: the phase in which it stands, the one behind it, what it may
// not follow and what it adds to the record. A phase that has no element for a character hands it on to the
// next and is never entered again; so "the first row from this phase on that begins with this character" is
// all that the scan needs to know, and that is a table of its own, computed from the rows. Plain models are
// compiled without it (plain_model.h).

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "../error.h"
#include "plain_model.h"

using namespace dv::impl;

static_assert(sizeof(number_parse_result_t) == 284 && alignof(number_parse_result_t) == 4);
static_assert(offsetof(number_parse_result_t, fm_present) == 257);
static_assert(offsetof(number_parse_result_t, sign_type) == 260);
static_assert(offsetof(number_parse_result_t, currency_type) == 264);
static_assert(offsetof(number_parse_result_t, pos_msd) == 268);
static_assert(offsetof(number_parse_result_t, pos_lsd) == 272);
static_assert(offsetof(number_parse_result_t, power_to_raise) == 276);
static_assert(offsetof(number_parse_result_t, in_hexadecimal) == 280);
static_assert(offsetof(number_parse_result_t, in_sciform) == 281);

namespace {

enum phase_e : uint8_t { PREFIX, LEADING_CURRENCY, DIGITS, TRAILING_CURRENCY, SIGN, END };

// What a model has shown so far.
enum seen_e : uint16_t {
    FM = 1 << 0,
    SIGNED = 1 << 1,
    CURRENCY = 1 << 2,
    NINE = 1 << 3,
    ZERO = 1 << 4,
    HEX = 1 << 5,
    POINT = 1 << 6,
    PLAIN = 1 << 7,  // "," and "."
    NAMED = 1 << 8,  // G and D
    RAISE = 1 << 9,  // V: such a model is refused at its end
    SCIENTIFIC = 1 << 10,
    BLANK_ZERO = 1 << 11  // B: known, and refused at once
};
constexpr unsigned _digit = NINE | ZERO | HEX;

struct element_t {
    char text[5];  // in upper case
    phase_e phase;
    phase_e next;
    uint16_t refused_after;
    uint16_t needs;  // one of these; 0: nothing
    uint16_t shows;
    uint8_t is_copied;  // 1: into fmt_dig
    uint8_t sign;       // number_fmt_sign_e
    uint8_t currency;   // number_fmt_currency_e
};

// clang-format off
constexpr element_t _elements[] = {
    // text   phase              next               refused after        needs        shows          copied sign currency
    {"",     END,               END,               0,                   0,           0,                  0, 0, 0},  // none
    {"FM",   PREFIX,            PREFIX,            FM,                  0,           FM,                 0, 0, 0},
    {"S",    PREFIX,            PREFIX,            SIGNED,              0,           SIGNED,             0, 3, 0},
    {"B",    PREFIX,            PREFIX,            0,                   0,           BLANK_ZERO,         0, 0, 0},
    {"C",    LEADING_CURRENCY,  DIGITS,            CURRENCY,            0,           CURRENCY,           1, 0, 2},
    {"L",    LEADING_CURRENCY,  DIGITS,            CURRENCY,            0,           CURRENCY,           1, 0, 3},
    {"U",    LEADING_CURRENCY,  DIGITS,            CURRENCY,            0,           CURRENCY,           1, 0, 4},
    {"9",    DIGITS,            DIGITS,            HEX,                 0,           NINE,               1, 0, 0},
    {"0",    DIGITS,            DIGITS,            HEX,                 0,           ZERO,               1, 0, 0},
    {"X",    DIGITS,            DIGITS,            NINE | POINT,        0,           HEX,                1, 0, 0},
    {",",    DIGITS,            DIGITS,            NAMED | POINT,       0,           PLAIN,              1, 0, 0},
    {".",    DIGITS,            DIGITS,            NAMED | POINT,       0,           PLAIN | POINT,      1, 0, 0},
    {"G",    DIGITS,            DIGITS,            PLAIN | POINT,       0,           NAMED,              1, 0, 0},
    {"D",    DIGITS,            DIGITS,            PLAIN | POINT,       0,           NAMED | POINT,      1, 0, 0},
    {"$",    DIGITS,            DIGITS,            CURRENCY,            0,           CURRENCY,           0, 0, 1},
    {"V",    DIGITS,            DIGITS,            RAISE,               0,           RAISE,              0, 0, 0},
    {"EEEE", DIGITS,            TRAILING_CURRENCY, HEX,                 NINE | ZERO, SCIENTIFIC,         0, 0, 0},
    {"C",    TRAILING_CURRENCY, SIGN,              CURRENCY,            0,           CURRENCY,           1, 0, 2},
    {"L",    TRAILING_CURRENCY, SIGN,              CURRENCY,            0,           CURRENCY,           1, 0, 3},
    {"U",    TRAILING_CURRENCY, SIGN,              CURRENCY,            0,           CURRENCY,           1, 0, 4},
    {"MI",   SIGN,              SIGN,              SIGNED,              0,           SIGNED,             0, 1, 0},
    {"PR",   SIGN,              SIGN,              SIGNED,              0,           SIGNED,             0, 2, 0},
    {"S",    SIGN,              SIGN,              SIGNED,              0,           SIGNED,             0, 4, 0},
    {"B",    SIGN,              SIGN,              0,                   0,           BLANK_ZERO,         0, 0, 0},
};
// clang-format on

// By phase and character: the row that takes the character in this phase, or in the first behind it that
// does; row 0 where none does.
constexpr auto _element_at = [] {
    std::array<std::array<uint8_t, 256>, END> rows{};
    for (int phase = END - 1; phase >= PREFIX; --phase) {
        auto &row = rows[static_cast<size_t>(phase)];
        if (phase < END - 1) row = rows[static_cast<size_t>(phase) + 1];
        for (size_t i = 1; i < std::size(_elements); ++i) {
            const char first = _elements[i].text[0];
            if (_elements[i].phase != phase) continue;
            row[static_cast<uint8_t>(first)] = static_cast<uint8_t>(i);
            if (first >= 'A' && first <= 'Z')
                row[static_cast<uint8_t>(first - 'A' + 'a')] = static_cast<uint8_t>(i);
        }
    }
    return rows;
}();

// EEEE is four times the same character of the model; other elements stand in any letter case.
bool begins_with_(std::string_view rest, std::string_view element) {
    if (rest.size() < element.size()) return false;
    const std::string_view found(rest.data() + 1, element.size() - 1);
    if (element == "EEEE") return found.find_first_not_of(rest[0]) == found.npos;
    return std::equal(found.begin(), found.end(), element.begin() + 1,
                      [](char c, char wanted) { return to_upper(c) == wanted; });
}

bool is_refused_(const element_t &row, unsigned seen) {
    return (seen & row.refused_after) != 0 || (row.needs != 0 && (seen & row.needs) == 0);
}

// A model in compilation: what the record is made of. No element leads to the phase END.
struct scan_t {
    std::string_view rest;
    unsigned phase = PREFIX;
    unsigned seen = 0;
    int sign = 0;
    int currency = 0;
    int digits = 0;
    int fraction_digits = 0;
    int copied = 0;
    char fmt_dig[NUMBER_FMT_MAX + 1];
};

// Takes one element: 0, or the code of what is wrong with it.
int take_element_(scan_t &scan) {
    const element_t &row = _elements[_element_at[scan.phase][static_cast<uint8_t>(scan.rest[0])]];
    if (row.phase == END || is_refused_(row, scan.seen)) return DV_ERR_NUMBER_FORMAT;
    size_t length = 1;
    if (row.text[1] != '\0') {
        length = strlen(row.text);
        if (!begins_with_(scan.rest, {row.text, length})) return DV_ERR_NUMBER_FORMAT;
    }
    if (row.shows == BLANK_ZERO) return DV_ERR_NUMBER_MODEL;

    scan.fmt_dig[scan.copied] = row.text[0];
    scan.copied += row.is_copied;
    scan.sign |= row.sign;
    scan.currency |= row.currency;
    const int digit = (row.shows & _digit) != 0 ? 1 : 0;
    scan.digits += digit;
    scan.fraction_digits += (scan.seen & POINT) != 0 ? digit : 0;
    scan.seen |= row.shows;
    scan.phase = row.next;
    scan.rest.remove_prefix(length);
    return 0;
}

int scan_model_(scan_t &scan) {
    while (!scan.rest.empty()) {
        const int error = take_element_(scan);
        if (error != 0) return error;
    }
    return (scan.seen & RAISE) != 0 ? DV_ERR_NUMBER_FORMAT : 0;
}

[[noreturn, gnu::cold]] void raise_in_parse_(int code) {
    raise(error_at(code, __FILE__, __LINE__, "number_fmt_parse"));
}

constexpr struct {
    std::string_view text;
    whole_model_e model;
} _whole_models[] = {{"TM", whole_model_e::TM},
                     {"TM9", whole_model_e::TM},
                     {"TME", whole_model_e::TME},
                     {"RN", whole_model_e::ROMAN},
                     {"FMRN", whole_model_e::ROMAN_UNFILLED}};

}  // namespace

whole_model_e dv::impl::whole_model(std::string_view model) {
    if (model.size() < 2 || model.size() > 4) return whole_model_e::NONE;
    for (const auto &[text, whole] : _whole_models) {
        if (std::equal(model.begin(), model.end(), text.begin(), text.end(),
                       [](char c, char wanted) { return to_upper(c) == wanted; }))
            return whole;
    }
    return whole_model_e::NONE;
}

int dv::impl::compile_model(std::string_view model, number_parse_result_t &pr) {
    const int plain_elements = compile_plain_model(model, pr);
    if (plain_elements != 0) return plain_elements;
    if (model.size() > NUMBER_FMT_MAX) raise_in_parse_(DV_ERR_NUMBER_FORMAT);
    scan_t scan;
    scan.rest = model;
    const int error = scan_model_(scan);
    if (error != 0) raise_in_parse_(error);

    const int pos_msd = scan.digits - scan.fraction_digits - 1;
    const int pos_lsd = -scan.fraction_digits;
    DV_ASSERT(pos_msd >= -1);
    DV_ASSERT(pos_lsd <= 0);
    const bool is_unfilled = (scan.seen & FM) != 0;
    const auto copied = static_cast<size_t>(scan.copied);
    memset(&pr, 0, sizeof pr);
    memcpy(pr.fmt_dig, scan.fmt_dig, copied);
    pr.fm_present = is_unfilled ? 1 : 0;
    pr.sign_type = is_unfilled && scan.sign == NUMBER_FMT_SIGN_PR ? NUMBER_FMT_SIGN_NONE : scan.sign;
    pr.currency_type = scan.currency;
    pr.pos_msd = pos_msd;
    pr.pos_lsd = pos_lsd;
    pr.in_hexadecimal = (scan.seen & HEX) != 0 ? 1 : 0;
    pr.in_sciform = (scan.seen & SCIENTIFIC) != 0 ? 1 : 0;
    return scan.copied;
}

void dv::impl::make_number_model(std::string_view text, number_model_t &model) {
    model.whole = whole_model(text);
    if (model.whole == whole_model_e::NONE) {
        model.elements = compile_model(text, model.pr);
    } else {
        const char first = text[model.whole == whole_model_e::ROMAN_UNFILLED ? 2 : 0];
        model.in_upper = first == to_upper(first);
    }
}

extern "C" void number_fmt_parse(const char *fmt, number_parse_result_t *pr) {
    if (!DV_ASSERT(fmt != NULL && pr != NULL)) return;
    compile_model({fmt, strnlen(fmt, NUMBER_FMT_MAX + 1)}, *pr);
}
