// Finding the element that a text begins with, and what the compiler can check about the table of elements.
//
// The element is the longest keyword that is a prefix of the text in upper case: MONTH before MON, DDD before
// DD before D. That alone settles what looks like an exception: "DA" without "Y" is D, "YE" without "AR" is
// Y, "RRR" is RR and then a lone "R", which is none, as are "H" and "S". Keywords are grouped by first
// letter, longer ones first, and compared as words of eight characters; a letter has at most five.

#include "datetime_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr size_t _letters = 26;

struct keyword_t {
    uint64_t text;  // the first character highest
    uint64_t mask;  // of its characters
    int id;
};

struct keyword_index_t {
    std::array<keyword_t, FMT_TOKEN_IDS_END> keywords;
    std::array<uint8_t, _letters + 1> first;  // of the letter A, B, ..., and the end
};

constexpr keyword_t keyword_(size_t id) {
    keyword_t keyword{0, 0, static_cast<int>(id)};
    int shift = 64;
    for (const char c : keyword_of(fmt_tokens_[id])) {
        shift -= 8;
        keyword.text |= uint64_t{static_cast<uint8_t>(c)} << shift;
        keyword.mask |= uint64_t{0xFF} << shift;
    }
    return keyword;
}

constexpr keyword_index_t _index = [] {
    keyword_index_t index{};
    uint8_t count = 0;
    for (size_t letter = 0; letter < _letters; ++letter) {
        index.first[letter] = count;
        for (size_t length = FMT_KEYWORD_SIZE; length > 0; --length) {
            for (size_t id = 0; id < FMT_TOKEN_IDS_END; ++id) {
                const std::string_view text = keyword_of(fmt_tokens_[id]);
                if (text.size() != length || text[0] != static_cast<char>('A' + letter)) continue;
                index.keywords[count++] = keyword_(id);
            }
        }
    }
    index.first[_letters] = count;
    return index;
}();

constexpr int find_(uint64_t word) {
    const uint64_t letter = (word >> 56) - 'A';
    if (letter >= _letters) return FMT_TOKEN_NONE;
    for (size_t i = _index.first[letter]; i < _index.first[letter + 1]; ++i) {
        const keyword_t &keyword = _index.keywords[i];
        if ((word & keyword.mask) == keyword.text) return keyword.id;
    }
    return FMT_TOKEN_NONE;
}

// Numbers of elements are permanent: flattened models are kept and sent with them. These are the elements by
// number, from 0 on; what is added comes behind, not between.
constexpr std::string_view _permanent[] = {
    "AD",    "A.D.",  "BC",   "B.C.", "CC",  "SCC",  "IYYY", "IYY",  "IY", "I",     "YEAR",
    "SYEAR", "SYYYY", "YYYY", "YYY",  "YY",  "Y",    "RR",   "RRRR", "MM", "MON",   "MONTH",
    "RM",    "D",     "DAY",  "DD",   "DDD", "DY",   "WW",   "W",    "Q",  "IW",    "J",
    "AM",    "A.M.",  "PM",   "P.M.", "HH",  "HH12", "HH24", "MI",   "SS", "SSSSS", "FF",
    "X",     "TZH",   "TZM",  "TZR",  "TZD", "FM",   "FX",   "",     " "};
static_assert(std::equal(std::begin(_permanent), std::end(_permanent), fmt_tokens_.begin(),
                         fmt_tokens_.begin() + 53, [](std::string_view text, const dt_fmt_token_t &token) {
                             return keyword_of(token) == text;
                         }));
static_assert(DT_FMT_TOKEN_AD == 0 && DT_FMT_TOKEN_YYYY == 13 && DT_FMT_TOKEN_MM == 19 &&
              DT_FMT_TOKEN_DD == 25 && DT_FMT_TOKEN_HH24 == 39 && DT_FMT_TOKEN_FF == 43 &&
              DT_FMT_TOKEN_DQ == 51 && DT_FMT_TOKEN_MAX == 53 && DT_FMT_TOKEN_PUNC == 54);
static_assert(DT_FMT_TYPE_DATE == 0 && DT_FMT_TYPE_TIME == 1 && DT_FMT_TYPE_PUNC == 2 &&
              DT_FMT_TYPE_FM == 3 && DT_FMT_TYPE_FX == 4 && DT_FMT_TYPE_TZ == 5);
static_assert(DT_FMT_CASE_UPPER == 0 && DT_FMT_CASE_LOWER == 1 && DT_FMT_CASE_INIT == 2);
static_assert(DT_FMT_SUFFIX_NONE == 0 && DT_FMT_SUFFIX_TH == 1 && DT_FMT_SUFFIX_SP == 2 &&
              DT_FMT_SUFFIX_SPTH == 3 && DT_FMT_SUFFIX_THSP == 4);
static_assert(DT_FMT_UNIT_YEAR == 0x1 && DT_FMT_UNIT_MONTH == 0x2 && DT_FMT_UNIT_DAY == 0x4 &&
              DT_FMT_UNIT_HOUR == 0x8 && DT_FMT_UNIT_MINUTE == 0x10 && DT_FMT_UNIT_SECOND == 0x20 &&
              DT_FMT_UNIT_FSEC == 0x40 && DT_FMT_UNIT_FM == 0x8000 && DT_FMT_UNIT_TZS == 0x200000);

// Each number has one row.
constexpr bool any_(const dt_fmt_token_t & /*token*/) { return true; }
static_assert(all_elements(any_, [](size_t id) {
    return std::count_if(std::begin(FMT_TOKEN_ROWS), std::end(FMT_TOKEN_ROWS),
                         [=](const auto &row) { return size_t{row.id} == id; }) == 1;
}));

// A template, where there is one, is of a text or of a number.
static_assert(all_elements(any_, [](size_t id) {
    const std::string_view format = fmt_tokens_[id].write_fmt;
    return format.empty() || format.back() == (fmt_tokens_[id].is_str_fmt ? 's' : 'd');
}));

// An element that is read instead of another one gives the same field, and can be read.
constexpr bool replaces_(int alternate, const dt_fmt_token_t &token) {
    if (alternate == FMT_TOKEN_NONE) return true;
    const dt_fmt_token_t &other = fmt_tokens_.at(static_cast<size_t>(alternate));
    return other.unit_type == token.unit_type && other.is_input && token.is_input;
}
static_assert(all_elements(any_, [](size_t id) {
    const dt_fmt_token_t &token = fmt_tokens_[id];
    return replaces_(token.alt_token1, token) && replaces_(token.alt_token2, token);
}));

// All but the literal and the blank are found, whatever follows: "~" stands for that.
static_assert([] {
    size_t keywords = 0;
    for (size_t id = 0; id < FMT_TOKEN_IDS_END; ++id) keywords += is_keyword(id) ? 1 : 0;
    return _index.first[_letters] == keywords;
}());
static_assert(std::all_of(_index.keywords.begin(), _index.keywords.begin() + _index.first[_letters],
                          [](const keyword_t &keyword) {
                              constexpr uint64_t tildes = in_each_byte('~');
                              return find_(keyword.text) == keyword.id &&
                                     find_(keyword.text | (tildes & ~keyword.mask)) == keyword.id;
                          }));

}  // namespace

namespace dv::impl {

int find_keyword(std::string_view text) { return find_(upper_case_word(text)); }

}  // namespace dv::impl
