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

inline constexpr int16_t FMT_TOKEN_NONE = -1;

struct dt_fmt_token_t {
    char token[FMT_KEYWORD_SIZE];  // the keyword, upper case
    int token_len;                 // its characters
    dt_fmt_type_e type;
    bool is_input;                      // may appear in a model for reading
    int input_len;                      // nominal width of the field in characters
    char write_fmt[FMT_TEMPLATE_SIZE];  // as for printf
    bool is_str_fmt;                    // written as a word; no suffix goes with it
    dt_fmt_unit_e unit_type;            // the field that it gives
    int16_t alt_token1, alt_token2;     // elements that a reader may take in its place, or FMT_TOKEN_NONE
};

struct fmt_token_row_t {
    dt_fmt_token_id_e id;
    std::string_view text;
    dt_fmt_type_e type;
    bool is_input;
    int input_len;
    std::string_view write_fmt;
    bool is_str_fmt;
    dt_fmt_unit_e unit_type;
    int16_t alt_token1 = FMT_TOKEN_NONE, alt_token2 = FMT_TOKEN_NONE;
};

// clang-format off
inline constexpr fmt_token_row_t FMT_TOKEN_ROWS[] = {
    // id                 text     type            read width template word unit       read instead
    {DT_FMT_TOKEN_AD,     "AD",    DT_FMT_TYPE_DATE, 1,  2, "%s",    1, DT_FMT_UNIT_AD},
    {DT_FMT_TOKEN_AD_P,   "A.D.",  DT_FMT_TYPE_DATE, 1,  4, "%s",    1, DT_FMT_UNIT_AD},
    {DT_FMT_TOKEN_BC,     "BC",    DT_FMT_TYPE_DATE, 1,  2, "%s",    1, DT_FMT_UNIT_BC},
    {DT_FMT_TOKEN_BC_P,   "B.C.",  DT_FMT_TYPE_DATE, 1,  4, "%s",    1, DT_FMT_UNIT_BC},
    {DT_FMT_TOKEN_CC,     "CC",    DT_FMT_TYPE_DATE, 0,  2, "%d",    0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_SCC,    "SCC",   DT_FMT_TYPE_DATE, 0,  3, "%d",    0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_IYYY,   "IYYY",  DT_FMT_TYPE_DATE, 0,  4, "%.04d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_IYY,    "IYY",   DT_FMT_TYPE_DATE, 0,  3, "%.03d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_IY,     "IY",    DT_FMT_TYPE_DATE, 0,  2, "%.02d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_I,      "I",     DT_FMT_TYPE_DATE, 0,  1, "%.01d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_YEAR,   "YEAR",  DT_FMT_TYPE_DATE, 0, 40, "%s",    1, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_SYEAR,  "SYEAR", DT_FMT_TYPE_DATE, 0, 40, "%s",    1, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_SYYYY,  "SYYYY", DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_SYYYY},
    {DT_FMT_TOKEN_YYYY,   "YYYY",  DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_YYY,    "YYY",   DT_FMT_TYPE_DATE, 1,  3, "%.03d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_YY,     "YY",    DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_YYYY},
    {DT_FMT_TOKEN_Y,      "Y",     DT_FMT_TYPE_DATE, 1,  1, "%.01d", 0, DT_FMT_UNIT_YEAR},
    {DT_FMT_TOKEN_RR,     "RR",    DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_YYYY},
    {DT_FMT_TOKEN_RRRR,   "RRRR",  DT_FMT_TYPE_DATE, 1,  4, "%.04d", 0, DT_FMT_UNIT_YEAR,   DT_FMT_TOKEN_RR},
    {DT_FMT_TOKEN_MM,     "MM",    DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MON, DT_FMT_TOKEN_MONTH},
    {DT_FMT_TOKEN_MON,    "MON",   DT_FMT_TYPE_DATE, 1,  3, "%3s",   1, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MONTH},
    {DT_FMT_TOKEN_MONTH,  "MONTH", DT_FMT_TYPE_DATE, 1,  9, "%-9s",  1, DT_FMT_UNIT_MONTH,  DT_FMT_TOKEN_MON},
    {DT_FMT_TOKEN_RM,     "RM",    DT_FMT_TYPE_DATE, 1,  1, "%-4s",  1, DT_FMT_UNIT_MONTH},
    {DT_FMT_TOKEN_D,      "D",     DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_DAY},
    {DT_FMT_TOKEN_DAY,    "DAY",   DT_FMT_TYPE_DATE, 0,  9, "%-9s",  1, DT_FMT_UNIT_DAY},
    {DT_FMT_TOKEN_DD,     "DD",    DT_FMT_TYPE_DATE, 1,  2, "%.02d", 0, DT_FMT_UNIT_DAY},
    {DT_FMT_TOKEN_DDD,    "DDD",   DT_FMT_TYPE_DATE, 1,  3, "%.3d",  0, DT_FMT_UNIT_DDD},
    {DT_FMT_TOKEN_DY,     "DY",    DT_FMT_TYPE_DATE, 0,  3, "%3s",   1, DT_FMT_UNIT_DAY},
    {DT_FMT_TOKEN_WW,     "WW",    DT_FMT_TYPE_DATE, 0,  2, "%.2d",  0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_W,      "W",     DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_Q,      "Q",     DT_FMT_TYPE_DATE, 0,  1, "%d",    0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_IW,     "IW",    DT_FMT_TYPE_DATE, 0,  2, "%.2d",  0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_J,      "J",     DT_FMT_TYPE_DATE, 1, 10, "%d",    0, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_AM,     "AM",    DT_FMT_TYPE_TIME, 1,  2, "%s",    1, DT_FMT_UNIT_AM},
    {DT_FMT_TOKEN_AM_P,   "A.M.",  DT_FMT_TYPE_TIME, 1,  4, "%s",    1, DT_FMT_UNIT_AM},
    {DT_FMT_TOKEN_PM,     "PM",    DT_FMT_TYPE_TIME, 1,  2, "%s",    1, DT_FMT_UNIT_PM},
    {DT_FMT_TOKEN_PM_P,   "P.M.",  DT_FMT_TYPE_TIME, 1,  4, "%s",    1, DT_FMT_UNIT_PM},
    {DT_FMT_TOKEN_HH,     "HH",    DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HOUR},
    {DT_FMT_TOKEN_HH12,   "HH12",  DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HOUR},
    {DT_FMT_TOKEN_HH24,   "HH24",  DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_HH24},
    {DT_FMT_TOKEN_MI,     "MI",    DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_MINUTE},
    {DT_FMT_TOKEN_SS,     "SS",    DT_FMT_TYPE_TIME, 1,  2, "%.2d",  0, DT_FMT_UNIT_SECOND},
    {DT_FMT_TOKEN_SSSSS,  "SSSSS", DT_FMT_TYPE_TIME, 1,  5, "%.5d",  0, DT_FMT_UNIT_SSSSS},
    {DT_FMT_TOKEN_FF,     "FF",    DT_FMT_TYPE_TIME, 1,  9, "%.*d",  0, DT_FMT_UNIT_FSEC},
    {DT_FMT_TOKEN_X,      "X",     DT_FMT_TYPE_TIME, 1,  1, "%s",    1, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_TZH,    "TZH",   DT_FMT_TYPE_TZ,   1,  2, "%+.2d", 0, DT_FMT_UNIT_TZH},
    {DT_FMT_TOKEN_TZM,    "TZM",   DT_FMT_TYPE_TZ,   1,  2, "%.2d",  0, DT_FMT_UNIT_TZM},
    {DT_FMT_TOKEN_TZR,    "TZR",   DT_FMT_TYPE_TZ,   1, 32, "%s",    1, DT_FMT_UNIT_TZR},
    {DT_FMT_TOKEN_TZD,    "TZD",   DT_FMT_TYPE_TZ,   1,  8, "%s",    1, DT_FMT_UNIT_TZD},
    {DT_FMT_TOKEN_FM,     "FM",    DT_FMT_TYPE_FM,   1,  0, "",      1, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_FX,     "FX",    DT_FMT_TYPE_FX,   1,  0, "",      1, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_DQ,     "",      DT_FMT_TYPE_PUNC, 1,  0, "%s",    1, DT_FMT_UNIT_NONE},
    {DT_FMT_TOKEN_SPACE,  " ",     DT_FMT_TYPE_PUNC, 1,  1, "%s",    1, DT_FMT_UNIT_NONE},
};
// clang-format on

// The end of the numbers of elements: loops over elements end here. DT_FMT_TOKEN_MAX and DT_FMT_TOKEN_PUNC
// keep their numbers, which are no elements; one that is added comes behind them.
inline constexpr size_t FMT_TOKEN_IDS_END = [] {
    size_t end = 0;
    for (const fmt_token_row_t &row : FMT_TOKEN_ROWS) end = std::max(end, size_t{row.id} + 1);
    return end;
}();

// Is there a row for a number?
constexpr bool is_element(size_t id) {
    return id < FMT_TOKEN_IDS_END && id != DT_FMT_TOKEN_MAX && id != DT_FMT_TOKEN_PUNC;
}

// Is it found by its text in a model? A literal and a blank are told by their characters.
constexpr bool is_keyword(size_t id) {
    return is_element(id) && id != DT_FMT_TOKEN_DQ && id != DT_FMT_TOKEN_SPACE;
}

constexpr dt_fmt_token_t fmt_token_of(const fmt_token_row_t &row) {
    dt_fmt_token_t token{};
    std::copy(row.text.begin(), row.text.end(), token.token);
    token.token_len = static_cast<int>(row.text.size());
    token.type = row.type;
    token.is_input = row.is_input;
    token.input_len = row.input_len;
    std::copy(row.write_fmt.begin(), row.write_fmt.end(), token.write_fmt);
    token.is_str_fmt = row.is_str_fmt;
    token.unit_type = row.unit_type;
    token.alt_token1 = row.alt_token1;
    token.alt_token2 = row.alt_token2;
    return token;
}

// The rows by number.
inline constexpr auto fmt_tokens_ = [] {
    std::array<dt_fmt_token_t, FMT_TOKEN_IDS_END> tokens{};
    for (const fmt_token_row_t &row : FMT_TOKEN_ROWS) tokens[row.id] = fmt_token_of(row);
    return tokens;
}();

// Do all elements that a question is asked about pass it? For what the compiler checks.
template <typename Asked, typename Passes>
constexpr bool all_elements(Asked asked, Passes passes) {
    for (size_t id = 0; id < FMT_TOKEN_IDS_END; ++id) {
        if (is_element(id) && asked(fmt_tokens_[id]) && !passes(id)) return false;
    }
    return true;
}

constexpr std::string_view keyword_of(const dt_fmt_token_t &token) { return token.token; }

// Characters between elements, but for "+" and "-".
inline constexpr auto _punc_token_tab = [] {
    constexpr std::pair<int, int> ranges[] = {{0x09, 0x0A}, {0x0D, 0x0D}, {0x20, 0x2A}, {0x2C, 0x2C},
                                              {0x2E, 0x2F}, {0x3A, 0x40}, {0x5B, 0x60}, {0x7B, 0x80}};
    std::array<uint8_t, 256> is_punc{};
    for (const auto &[first, last] : ranges) {
        for (int c = first; c <= last; ++c) is_punc[static_cast<size_t>(c)] = 1;
    }
    return is_punc;
}();

inline constexpr auto _punc_or_sign_tab = [] {
    std::array<uint8_t, 256> is_punc = _punc_token_tab;
    is_punc['+'] = is_punc['-'] = 1;
    return is_punc;
}();

constexpr bool is_punc(char c) { return _punc_or_sign_tab[static_cast<unsigned char>(c)] != 0; }

}  // namespace dv::impl

#endif  // DV_DATETIME_FMT_TOKEN_TABLE_H
