// Numbers in English words.

#ifndef DV_SPELL_NUMBER_H
#define DV_SPELL_NUMBER_H

#include <string_view>

namespace dv::impl {

// Longer than any: 11 words of at most 11 characters to a group of three digits, and the words of the groups.
inline constexpr int SPELLED_TEXT_SIZE = 256;

// Spells a number in upper case into text; returns the length, no NUL. Cardinal: TWENTY-FOUR; ordinal as this
// library spells them: TWENTY-FOUTH.
//
// Asserts "int_val > 0", "int_val < 1000000000" and goes on: 0 is ZERO and ZEROTH, a negative number begins
// with "MINUS ", and of a larger one the millions are counted on.
int spell_number(char (&text)[SPELLED_TEXT_SIZE], int int_val, bool is_ordinal);

}  // namespace dv::impl

#endif  // DV_SPELL_NUMBER_H
