// The codes that the library raises, and the one way in which it raises them and asserts.

#ifndef DV_DATATYPE_ERROR_H
#define DV_DATATYPE_ERROR_H

#include <string.h>

#include <type_traits>

#include "dvtypes/base.h"

namespace dv::impl {

// Named by condition; the message of each code is in the base library's catalogue, where the compiler sees to
// it that none is missing. Codes are permanent: hosts pass them on and programs decide by them. One that is
// no longer raised stays, and none gets a second meaning.
// clang-format off
enum error_code : int {
    ERR_TEXT_BUFFER_SIZE = -3005,            // the text does not fit the output buffer
    ERR_NUMBER_MODEL = -3006,                // a number model that cannot be used: B, RN for reading

    ERR_MONTH_LACKS_DAY = -5005,             // strict month arithmetic: the target month is too short
    ERR_FIELD_UNSUPPORTED = -5006,           // the value's type does not have this field
    ERR_TEXT_LENGTH = -5007,                 // a text or buffer length below 1
    ERR_ITV_TRIM_PRECISION = -5008,          // fraction precision outside 0..9 in trimming an interval
    ERR_ITV_TEXT_ENDED = -5009,              // the text ends before the qualifier's fields
    ERR_TRAILING_TEXT = -5010,               // characters left over after the value
    ERR_MODEL_FOR_DATE = -5011,              // an element that DATE does not have
    ERR_MODEL_FOR_TIME = -5012,              // an element that TIME or TIMESTAMP does not have
    ERR_ELEMENT_NOT_READABLE = -5013,        // an element that can only be written
    ERR_MODEL_ELEMENT = -5014,               // unknown element, misplaced suffix, no unit of truncation
    ERR_DAY_OF_YEAR_AND_MONTH = -5024,       // DDD contradicts the month
    ERR_DAY_OF_YEAR_AND_DAY = -5025,         // DDD contradicts the day
    ERR_SSSSS_AND_HOUR = -5026,
    ERR_SSSSS_AND_MINUTE = -5027,
    ERR_SSSSS_AND_SECOND = -5028,
    ERR_SYYYY_AND_ERA = -5039,
    ERR_HH24_AND_MERIDIEM = -5040,
    ERR_FRACTION_PRECISION = -5041,          // fraction precision outside 0..9
    ERR_RADIX = -5042,                       // no "." before the fraction
    ERR_TEXT_ENDED = -5045,                  // the text ended while the model asks for date fields
    ERR_UNIT_LEFT_OVER = -5048,              // text behind a unit of truncation
    ERR_MODEL_LEFT_OVER = -5049,             // model left over after the text ended
    ERR_J_NOT_WRITABLE = -5054,
    ERR_ITV_TEXT = -5056,                    // empty text, no digit, wrong separator
    ERR_ITV_TO_TEXT_PRECISION = -5057,       // leading precision outside 0..9, fraction precision outside 1..9
    ERR_ITV_QUALIFIER = -5059,               // a field that the qualifier does not have
    ERR_ITV_MONTH = -5060,                   // trailing months outside -11..11
    ERR_ITV_HOUR = -5061,                    // trailing hours of 24 and more
    ERR_ITV_MINUTE = -5062,                  // trailing minutes of 60 and more
    ERR_ITV_SECOND = -5063,                  // trailing seconds of 60 and more
    ERR_ITV_LEADING_PRECISION = -5064,       // more leading digits than the precision allows
    ERR_ITV_DIVISION_BY_ZERO = -5065,

    ERR_NUMBER_TEXT_SHORTENED = -5067,       // written rounded, in scientific form
    ERR_NUMBER_OVERFLOW = -5068,             // base-100 exponent minus one above 62
    ERR_NUMBER_UNDERFLOW = -5069,            // base-100 exponent minus one below -65
    ERR_NUMBER_DIVISION_BY_ZERO = -5070,
    ERR_NUMBER_TARGET_RANGE = -5072,         // outside the range of the machine type
    ERR_NUMBER_DOMAIN = -5073,               // outside the domain of the function
    ERR_NUMBER_TEXT = -5074,                 // the text is no number
    ERR_NUMBER_FORMAT = -5075,               // unknown number format

    ERR_ROWID_TEXT = -5080,                  // no digit of base 64; or a row number above 64 bits
    ERR_ROWID_SGMT = -5081,                  // segment above 32 bits; in a whole rowid the block, too
    ERR_ROWID_FILE = -5082,                  // file above 16 bits
    ERR_ROWID_BLOCK = -5083,                 // block above 32 bits, read alone
    ERR_ROWID_ROW = -5084,                   // row above 16 bits
    ERR_ITV_TOTAL_SECONDS = -5087,           // the days of a total of seconds do not fit 32 bits
    ERR_EXACT_WIDTH = -5088,                 // under FX: a number of another width than its element
    ERR_EXACT_TEXT = -5089,                  // under FX: other punctuation or literal text
    ERR_ZONE_ELEMENT = -5091,                // unknown time zone element
    ERR_ZONE_NAME_CONFLICT = -5096,          // (element) TZR or TZD contradicts another zone element
    ERR_ZONE_OFFSET_CONFLICT = -5097,        // (element) TZH or TZM beside TZR or TZD
    ERR_ZONE_HOUR = -5098,                   // UTC offset: hours outside -12..14
    ERR_ZONE_MINUTE = -5099,                 // UTC offset: minutes above 59, or outside -12:59..+14:00
    ERR_ZONE_SECOND = -5100,                 // UTC offset: seconds outside 0..59
    ERR_ZONE_OFFSET = -5103,                 // the text is no UTC offset
    ERR_ZONE_TEXT = -5104,                   // the text is no time zone
    ERR_ZONE_ABBREVIATION_TIME = -5109,      // the abbreviation is not in force at the local time
    ERR_ZONE_GAP = -5110,                    // the region's clocks never show the local time
    ERR_NUMBER_PRECISION = -5111,            // (value as text, precision, scale)
    ERR_FIELD_TWICE = -5112,                 // (field) twice in one model
    ERR_FIELD_TEXT = -5113,                  // (field, text, note) the text is no such field
    ERR_FIELD_RANGE = -5114,                 // (field, value, lowest, highest)
    ERR_COLUMN_OFFSETS = -5120,              // a row's offsets leave the bytes of its column
    ERR_TOTAL_BYTES = -5121,                 // not the bytes of a packed total
    ERR_TOTAL_MEMORY = -5122,                // a total needs more memory than it has
    ERR_ARROW = -5123,                       // (what is wrong) an Arrow array that cannot be taken or made
    ERR_NLS_SETTING = -11035,                // no known language setting

    ERR_NO_MEMORY = DV_ERR_NO_MEMORY,
    ERR_CHARSET_UNUSABLE = DV_ERR_CHARSET_UNUSABLE,  // (set) libc's iconv does not know the character set
};
// clang-format on

constexpr const char *base_name(const char *path) {
    if (!std::is_constant_evaluated()) {  // of a literal the compiler knows the result
        const char *slash = strrchr(path, '/');
        return slash != NULL ? slash + 1 : path;
    }
    const char *name = path;
    for (const char *p = path; *p != '\0'; ++p) {
        if (*p == '/') name = p + 1;
    }
    return name;
}

// An error code that knows where it was written down.
struct error_at {
    int code;
    const char *file;
    int line;
    const char *function;
    constexpr error_at(int error, const char *path = __builtin_FILE(), int at_line = __builtin_LINE(),
                       const char *in_function = __builtin_FUNCTION())
        : code(error), file(base_name(path)), line(at_line), function(in_function) {}
};

// Raises; the arguments are those of the code's message, in order (texts as const char *, numbers as int).
template <typename... Args>
[[noreturn, gnu::cold, gnu::noinline]] void raise(error_at at, Args... args) {
    dv_err_and_jmp(at.file, at.line, at.function, 0, 0, at.code, args...);
}

// Reports a broken invariant, and returns unless the host's action ends the process.
[[gnu::cold, gnu::noinline]] inline void assert_failed(const char *condition,
                                                       const char *path = __builtin_FILE(),
                                                       int line = __builtin_LINE()) {
    dv_assert_msg(condition, base_name(path), line);
    dv_thr_assert_cmd();
}

// Whether there is something to work on: no pointer is NULL.
constexpr bool given(const auto *...pointer) { return ((pointer != nullptr) && ...); }

}  // namespace dv::impl

// Reports a condition that does not hold; true or false as it does. The only macro: it needs the condition's
// text, which is a contract with the host ("date != NULL").
//
// The caller goes on as if the condition had held, but never through NULL: an exported function that lacks a
// pointer returns at once, with a neutral value if it returns one, and touches none of its other operands.
//     if (!DV_ASSERT(date != NULL)) return 0;
//     if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
// The second form is for conditions that ask for more than a pointer. Both stay off the path of sound calls.
#define DV_ASSERT(cond) ((cond) || (::dv::impl::assert_failed(#cond), false))

#endif  // DV_DATATYPE_ERROR_H
