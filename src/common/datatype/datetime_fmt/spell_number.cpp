// Numbers in English words: groups of three digits, MILLION and THOUSAND behind all but the last.
//
// Only the last word of an ordinal is one: ONE HUNDREDTH, TWENTY-FOUTH. The spellings of the ordinals are
// those that existing texts have: FOUTH, TWENTITH, THIRTITH and so on.

#include "spell_number.h"

#include <cstdint>
#include <cstring>

#include "../error.h"

using namespace dv::impl;

namespace {

constexpr std::string_view num_cardinals_1_[] = {
    "ONE",     "TWO",     "THREE",     "FOUR",     "FIVE",     "SIX",      "SEVEN",
    "EIGHT",   "NINE",    "TEN",       "ELEVEN",   "TWELVE",   "THIRTEEN", "FOURTEEN",
    "FIFTEEN", "SIXTEEN", "SEVENTEEN", "EIGHTEEN", "NINETEEN",
};
constexpr std::string_view num_ordinals_1_[] = {
    "FIRST",     "SECOND",    "THIRD",       "FOUTH",      "FIFTH",      "SIXTH",      "SEVENTH",
    "EIGHTH",    "NINTH",     "TENTH",       "ELEVENTH",   "TWELFTH",    "THIRTEENTH", "FOURTEENTH",
    "FIFTEENTH", "SIXTEENTH", "SEVENTEENTH", "EIGHTEENTH", "NINETEENTH",
};
constexpr std::string_view num_cardinals_10_[] = {
    "TEN", "TWENTY", "THIRTY", "FORTY", "FIFTY", "SIXTY", "SEVENTY", "EIGHTY", "NINETY", "HUNDRED",
};
constexpr std::string_view num_ordinals_10_[] = {
    "TENTH", "TWENTITH", "THIRTITH", "FORTITH", "FIFTITH", "SIXTITH", "SEVENTITH", "EIGHTITH", "NINETITH",
};

class words_t {
  public:
    explicit words_t(char (&text)[SPELLED_TEXT_SIZE]) : text_(text) {}
    int length() const { return length_; }

    void add(std::string_view word) {
        memcpy(text_ + length_, word.data(), word.size());
        length_ += static_cast<int>(word.size());
    }

  private:
    char *text_;
    int length_ = 0;
};

void spell_below_100_(words_t &words, uint32_t value, bool is_ordinal) {  // 1..99
    const uint32_t tens = value / 10, units = value % 10;
    if (value < 20) return words.add((is_ordinal ? num_ordinals_1_ : num_cardinals_1_)[value - 1]);
    if (units == 0) return words.add((is_ordinal ? num_ordinals_10_ : num_cardinals_10_)[tens - 1]);
    words.add(num_cardinals_10_[tens - 1]);
    words.add("-");
    words.add((is_ordinal ? num_ordinals_1_ : num_cardinals_1_)[units - 1]);
}

void spell_(words_t &words, uint32_t value, bool is_ordinal);

// The part of a value that counts a unit, and the unit; then the rest, or the ending of an ordinal.
void spell_units_(words_t &words, uint32_t value, uint32_t unit, std::string_view name, bool is_ordinal) {
    spell_(words, value / unit, /*is_ordinal=*/false);
    words.add(name);
    if (value % unit == 0) return words.add(is_ordinal ? "TH" : "");
    words.add(" ");
    spell_(words, value % unit, is_ordinal);
}

void spell_(words_t &words, uint32_t value, bool is_ordinal) {  // not 0
    if (value >= 1'000'000) return spell_units_(words, value, 1'000'000, " MILLION", is_ordinal);
    if (value >= 1'000) return spell_units_(words, value, 1'000, " THOUSAND", is_ordinal);
    if (value >= 100) return spell_units_(words, value, 100, " HUNDRED", is_ordinal);
    spell_below_100_(words, value, is_ordinal);
}

}  // namespace

int dv::impl::spell_number(char (&text)[SPELLED_TEXT_SIZE], int int_val, bool is_ordinal) {
    DV_ASSERT(int_val > 0);
    DV_ASSERT(int_val < 1000000000);
    words_t words(text);
    if (int_val == 0) {
        words.add(is_ordinal ? "ZEROTH" : "ZERO");
        return words.length();
    }
    if (int_val < 0) words.add("MINUS ");
    const auto bits = static_cast<uint32_t>(int_val);
    spell_(words, int_val < 0 ? 0 - bits : bits, is_ordinal);
    return words.length();
}
