// The elements of a datetime model, one row each, and which characters are punctuation.
//
// Compiling, writing, reading and predicting lengths use columns of the same rows. A row is found by its
// dt_fmt_token_id_e; DT_FMT_TOKEN_PUNC, a run of punctuation, has none.

#ifndef DV_DATETIME_FMT_TOKEN_TABLE_H
#define DV_DATETIME_FMT_TOKEN_TABLE_H

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "dvtypes/datetime_fmt.h"

namespace dv::impl {

// Of the longest keyword and the longest template, with a NUL.
inline constexpr size_t FMT_KEYWORD_SIZE = 7;
inline constexpr size_t FMT_TEMPLATE_SIZE = 9;

struct dt_fmt_token_t {
    char token[FMT_KEYWORD_SIZE];  // the keyword, upper case
    int token_len;                 // its characters
    dt_fmt_type_e type;
    uint8_t is_input;                   // may appear in a model for reading
    int input_len;                      // nominal width of the field in characters
    char write_fmt[FMT_TEMPLATE_SIZE];  // as for printf
    uint8_t is_str_fmt;                 // written as a word; no suffix goes with it
    dt_fmt_unit_e unit_type;            // the field that it gives
    int16_t alt_token1, alt_token2;     // elements that a reader may take in its place, or FMT_TOKEN_NONE
};

inline constexpr int16_t FMT_TOKEN_NONE = -1;

struct fmt_token_row_t {
    dt_fmt_token_id_e id;
    dt_fmt_token_t token;
};

// clang-format off
inline constexpr fmt_token_row_t FMT_TOKEN_ROWS[] = {
    // id                     text   len  type              read width template  word unit           read instead
    {DT_FMT_TOKEN_AD,       {"AD",    2, DT_FMT_TYPE_DATE, 1,  2, "%s",    1, DT_FMT_UNIT_AD,     -1, -1}},
    {DT_FMT_TOKEN_AD_P,     {"A.D.",  4, DT_FMT_TYPE_DATE, 1,  4, "%s",    1, DT_FMT_UNIT_AD,     -1, -1}},
    {DT_FMT_TOKEN_BC,       {"BC",    2, DT_FMT_TYPE_DATE, 1,  2, "%s",    1, DT_FMT_UNIT_BC,     -1, -1}},
    {DT_FMT_TOKEN_BC_P,     {"B.C.",  4, DT_FMT_TYPE_DATE, 1,  4, "%s",    1, DT_FMT_UNIT_BC,     -1, -1}},
    {DT_FMT_TOKEN_CC,       {"CC",    2, DT_FMT_TYPE_DATE, 0,  2, "%d",    0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_SCC,      {"SCC",   3, DT_FMT_TYPE_DATE, 0,  3, "%d",    0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_IYYY,     {"IYYY",  4, DT_FMT_TYPE_DATE, 0,  4, "%.04d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_IYY,      {"IYY",   3, DT_FMT_TYPE_DATE, 0,  3, "%.03d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_IY,       {"IY",    2, DT_FMT_TYPE_DATE, 0,  2, "%.02d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_I,        {"I",     1, DT_FMT_TYPE_DATE, 0,  1, "%.01d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_YEAR,     {"YEAR",  4, DT_FMT_TYPE_DATE, 0, 40, "%s",    1, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_SYEAR,    {"SYEAR", 5, DT_FMT_TYPE_DATE, 0, 40, "%s",    1, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_SYYYY,    {"SYYYY", 5, DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_SYYYY,  -1, -1}},
    {DT_FMT_TOKEN_YYYY,     {"YYYY",  4, DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_YYY,      {"YYY",   3, DT_FMT_TYPE_DATE, 1,  3, "%.03d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_YY,       {"YY",    2, DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_YYYY, -1}},
    {DT_FMT_TOKEN_Y,        {"Y",     1, DT_FMT_TYPE_DATE, 1,  1, "%.01d", 0, DT_FMT_UNIT_YEAR,   -1, -1}},
    {DT_FMT_TOKEN_RR,       {"RR",    2, DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_YYYY, -1}},
    {DT_FMT_TOKEN_RRRR,     {"RRRR",  4, DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_RR, -1}},
    {DT_FMT_TOKEN_MM,       {"MM",    2, DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MON, DT_FMT_TOKEN_MONTH}},
    {DT_FMT_TOKEN_MON,      {"MON",   3, DT_FMT_TYPE_DATE, 1,  3, "%3s",   1, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MONTH, -1}},
    {DT_FMT_TOKEN_MONTH,    {"MONTH", 5, DT_FMT_TYPE_DATE, 1,  9, "%-9s",  1, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MON, -1}},
    {DT_FMT_TOKEN_RM,       {"RM",    2, DT_FMT_TYPE_DATE, 1,  1, "%-4s",  1, DT_FMT_UNIT_MONTH,  -1, -1}},
    {DT_FMT_TOKEN_D,        {"D",     1, DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_DAY,    -1, -1}},
    {DT_FMT_TOKEN_DAY,      {"DAY",   3, DT_FMT_TYPE_DATE, 0,  9, "%-9s",  1, DT_FMT_UNIT_DAY,    -1, -1}},
    {DT_FMT_TOKEN_DD,       {"DD",    2, DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_DAY,    -1, -1}},
    {DT_FMT_TOKEN_DDD,      {"DDD",   3, DT_FMT_TYPE_DATE, 1,  3, "%.3d",  0, DT_FMT_UNIT_DDD,    -1, -1}},
    {DT_FMT_TOKEN_DY,       {"DY",    2, DT_FMT_TYPE_DATE, 0,  3, "%3s",   1, DT_FMT_UNIT_DAY,    -1, -1}},
    {DT_FMT_TOKEN_WW,       {"WW",    2, DT_FMT_TYPE_DATE, 0,  2, "%.2d",  0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_W,        {"W",     1, DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_Q,        {"Q",     1, DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_IW,       {"IW",    2, DT_FMT_TYPE_DATE, 0,  2, "%.2d",  0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_J,        {"J",     1, DT_FMT_TYPE_DATE, 1, 10, "%d",    0, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_AM,       {"AM",    2, DT_FMT_TYPE_TIME, 1,  2, "%s",    1, DT_FMT_UNIT_AM,     -1, -1}},
    {DT_FMT_TOKEN_AM_P,     {"A.M.",  4, DT_FMT_TYPE_TIME, 1,  4, "%s",    1, DT_FMT_UNIT_AM,     -1, -1}},
    {DT_FMT_TOKEN_PM,       {"PM",    2, DT_FMT_TYPE_TIME, 1,  2, "%s",    1, DT_FMT_UNIT_PM,     -1, -1}},
    {DT_FMT_TOKEN_PM_P,     {"P.M.",  4, DT_FMT_TYPE_TIME, 1,  4, "%s",    1, DT_FMT_UNIT_PM,     -1, -1}},
    {DT_FMT_TOKEN_HH,       {"HH",    2, DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HOUR,   -1, -1}},
    {DT_FMT_TOKEN_HH12,     {"HH12",  4, DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HOUR,   -1, -1}},
    {DT_FMT_TOKEN_HH24,     {"HH24",  4, DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HH24,   -1, -1}},
    {DT_FMT_TOKEN_MI,       {"MI",    2, DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_MINUTE, -1, -1}},
    {DT_FMT_TOKEN_SS,       {"SS",    2, DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_SECOND, -1, -1}},
    {DT_FMT_TOKEN_SSSSS,    {"SSSSS", 5, DT_FMT_TYPE_TIME, 1,  5, "%.5d",  0, DT_FMT_UNIT_SSSSS,  -1, -1}},
    {DT_FMT_TOKEN_FF,       {"FF",    2, DT_FMT_TYPE_TIME, 1,  9, "%.*d",  0, DT_FMT_UNIT_FSEC,   -1, -1}},
    {DT_FMT_TOKEN_X,        {"X",     1, DT_FMT_TYPE_TIME, 1,  1, "%s",    1, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_TZH,      {"TZH",   3, DT_FMT_TYPE_TZ,   1,  2, "%+.2d", 0, DT_FMT_UNIT_TZH,    -1, -1}},
    {DT_FMT_TOKEN_TZM,      {"TZM",   3, DT_FMT_TYPE_TZ,   1,  2, "%.2d",  0, DT_FMT_UNIT_TZM,    -1, -1}},
    {DT_FMT_TOKEN_TZR,      {"TZR",   3, DT_FMT_TYPE_TZ,   1, 32, "%s",    1, DT_FMT_UNIT_TZR,    -1, -1}},
    {DT_FMT_TOKEN_TZD,      {"TZD",   3, DT_FMT_TYPE_TZ,   1,  8, "%s",    1, DT_FMT_UNIT_TZD,    -1, -1}},
    {DT_FMT_TOKEN_FM,       {"FM",    2, DT_FMT_TYPE_FM,   1,  0, "",      1, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_FX,       {"FX",    2, DT_FMT_TYPE_FX,   1,  0, "",      1, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_DQ,       {"",      0, DT_FMT_TYPE_PUNC, 1,  0, "%s",    1, DT_FMT_UNIT_NONE,   -1, -1}},
    {DT_FMT_TOKEN_SPACE,    {" ",     1, DT_FMT_TYPE_PUNC, 1,  1, "%s",    1, DT_FMT_UNIT_NONE,   -1, -1}},
};
// clang-format on
static_assert(std::size(FMT_TOKEN_ROWS) == DT_FMT_TOKEN_MAX);

// The rows by id.
inline constexpr auto fmt_tokens_ = [] {
    std::array<dt_fmt_token_t, DT_FMT_TOKEN_MAX> tokens{};
    for (size_t i = 0; i < tokens.size(); ++i) tokens[i] = FMT_TOKEN_ROWS[i].token;
    return tokens;
}();

constexpr std::string_view keyword_of(const dt_fmt_token_t &token) { return token.token; }

// Characters between elements. "+" and "-" are not in the table, but are taken for punctuation too.
inline constexpr auto _punc_token_tab = [] {
    constexpr std::pair<int, int> ranges[] = {{0x09, 0x0A}, {0x0D, 0x0D}, {0x20, 0x2A}, {0x2C, 0x2C},
                                              {0x2E, 0x2F}, {0x3A, 0x40}, {0x5B, 0x60}, {0x7B, 0x80}};
    std::array<uint8_t, 256> is_punc{};
    for (const auto &[first, last] : ranges) {
        for (int c = first; c <= last; ++c) is_punc[static_cast<size_t>(c)] = 1;
    }
    return is_punc;
}();

constexpr bool is_punc(char c) {
    return _punc_token_tab[static_cast<unsigned char>(c)] != 0 || c == '+' || c == '-';
}

}  // namespace dv::impl

#endif  // DV_DATETIME_FMT_TOKEN_TABLE_H
