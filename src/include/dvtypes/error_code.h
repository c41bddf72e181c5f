// dvtypes/error_code.h: the codes of errors, by name.
//
// Codes are permanent: hosts pass them on and programs decide by them. One that is no longer raised stays,
// and none gets a second meaning. dv_error_text (base.h) has the message of each; docs/error-codes.md also
// has its cause and remedy; the functions say which ones they raise. In parentheses stand the values that a
// message shows, in their order.
//
// ```c
// #include <dvtypes/number.h>
// number_t price;
// DV_TRY {
//     number_from_str(&price, 0, "12,50", NULL);
// } DV_CATCH(error) {
//     puts(error->code == DV_ERR_NUMBER_TEXT ? "not a number" : error->message);   // not a number
// } DV_END_TRY;
// ```
//
// In C++ they compare with code() of dv::error and with the std::error_code of dv::result and dv::attempt.

#ifndef DVTYPES_ERROR_CODE_H
#define DVTYPES_ERROR_CODE_H

// clang-format off
typedef enum dv_error_code_e
#ifdef __cplusplus
    : int  // so that any code of a host is a value of it, too
#endif
{
    // What the default base library raises of its own accord.
    DV_ERR_NO_MEMORY = -1,                  // an allocation failed
    DV_ERR_CHARSET_UNUSABLE = -2,           // (set) libc has no converter for the character set

    DV_ERR_TEXT_BUFFER_SIZE = -3005,        // the text does not fit the output buffer
    DV_ERR_NUMBER_MODEL = -3006,            // a number model that cannot be used: B, RN for reading

    DV_ERR_MONTH_LACKS_DAY = -5005,         // strict month arithmetic: the target month is too short
    DV_ERR_FIELD_UNSUPPORTED = -5006,       // the value's type does not have this field
    DV_ERR_TEXT_LENGTH = -5007,             // a text or buffer length below 1
    DV_ERR_ITV_TRIM_PRECISION = -5008,      // fraction precision outside 0..9 in trimming an interval
    DV_ERR_ITV_TEXT_ENDED = -5009,          // the text ends before the qualifier's fields
    DV_ERR_TRAILING_TEXT = -5010,           // characters left over after the value
    DV_ERR_MODEL_FOR_DATE = -5011,          // an element that DATE does not have
    DV_ERR_MODEL_FOR_TIME = -5012,          // an element that TIME or TIMESTAMP does not have
    DV_ERR_ELEMENT_NOT_READABLE = -5013,    // an element that can only be written
    DV_ERR_MODEL_ELEMENT = -5014,           // unknown element, misplaced suffix, no unit of truncation
    DV_ERR_DAY_OF_YEAR_AND_MONTH = -5024,   // DDD contradicts the month
    DV_ERR_DAY_OF_YEAR_AND_DAY = -5025,     // DDD contradicts the day
    DV_ERR_SSSSS_AND_HOUR = -5026,
    DV_ERR_SSSSS_AND_MINUTE = -5027,
    DV_ERR_SSSSS_AND_SECOND = -5028,
    DV_ERR_SYYYY_AND_ERA = -5039,
    DV_ERR_HH24_AND_MERIDIEM = -5040,
    DV_ERR_FRACTION_PRECISION = -5041,      // fraction precision outside 0..9
    DV_ERR_RADIX = -5042,                   // no "." before the fraction
    DV_ERR_TEXT_ENDED = -5045,              // the text ended while the model asks for date fields
    DV_ERR_UNIT_LEFT_OVER = -5048,          // text behind a unit of truncation
    DV_ERR_MODEL_LEFT_OVER = -5049,         // model left over after the text ended
    DV_ERR_J_NOT_WRITABLE = -5054,
    DV_ERR_ITV_TEXT = -5056,                // empty text, no digit, wrong separator
    DV_ERR_ITV_TO_TEXT_PRECISION = -5057,   // leading precision outside 0..9, fraction precision outside 1..9
    DV_ERR_ITV_QUALIFIER = -5059,           // a field that the qualifier does not have
    DV_ERR_ITV_MONTH = -5060,               // trailing months outside -11..11
    DV_ERR_ITV_HOUR = -5061,                // trailing hours of 24 and more
    DV_ERR_ITV_MINUTE = -5062,              // trailing minutes of 60 and more
    DV_ERR_ITV_SECOND = -5063,              // trailing seconds of 60 and more
    DV_ERR_ITV_LEADING_PRECISION = -5064,   // more leading digits than the precision allows
    DV_ERR_ITV_DIVISION_BY_ZERO = -5065,

    DV_ERR_NUMBER_TEXT_SHORTENED = -5067,   // written rounded, in scientific form
    DV_ERR_NUMBER_OVERFLOW = -5068,         // base-100 exponent minus one above 62
    DV_ERR_NUMBER_UNDERFLOW = -5069,        // base-100 exponent minus one below -65
    DV_ERR_NUMBER_DIVISION_BY_ZERO = -5070,
    DV_ERR_NUMBER_TARGET_RANGE = -5072,     // outside the range of the machine type
    DV_ERR_NUMBER_DOMAIN = -5073,           // outside the domain of the function
    DV_ERR_NUMBER_TEXT = -5074,             // the text is no number
    DV_ERR_NUMBER_FORMAT = -5075,           // unknown number format

    DV_ERR_ROWID_TEXT = -5080,              // no digit of base 64; or a row number above 64 bits
    DV_ERR_ROWID_SGMT = -5081,              // segment above 32 bits; in a whole rowid the block, too
    DV_ERR_ROWID_FILE = -5082,              // file above 16 bits
    DV_ERR_ROWID_BLOCK = -5083,             // block above 32 bits, read alone
    DV_ERR_ROWID_ROW = -5084,               // row above 16 bits
    DV_ERR_ITV_TOTAL_SECONDS = -5087,       // the days of a total of seconds do not fit 32 bits
    DV_ERR_EXACT_WIDTH = -5088,             // under FX: a number of another width than its element
    DV_ERR_EXACT_TEXT = -5089,              // under FX: other punctuation or literal text
    DV_ERR_ZONE_ELEMENT = -5091,            // unknown time zone element
    DV_ERR_ZONE_NAME_CONFLICT = -5096,      // (element) TZR or TZD contradicts another zone element
    DV_ERR_ZONE_OFFSET_CONFLICT = -5097,    // (element) TZH or TZM beside TZR or TZD
    DV_ERR_ZONE_HOUR = -5098,               // UTC offset: hours outside -12..14
    DV_ERR_ZONE_MINUTE = -5099,             // UTC offset: minutes above 59, or outside -12:59..+14:00
    DV_ERR_ZONE_SECOND = -5100,             // UTC offset: seconds outside 0..59
    DV_ERR_ZONE_OFFSET = -5103,             // the text is no UTC offset
    DV_ERR_ZONE_TEXT = -5104,               // the text is no time zone
    DV_ERR_ZONE_ABBREVIATION_TIME = -5109,  // the abbreviation is not in force at the local time
    DV_ERR_ZONE_GAP = -5110,                // the region's clocks never show the local time
    DV_ERR_NUMBER_PRECISION = -5111,        // (value as text, precision, scale)
    DV_ERR_FIELD_TWICE = -5112,             // (field) twice in one model
    DV_ERR_FIELD_TEXT = -5113,              // (field, text, note) the text is no such field
    DV_ERR_FIELD_RANGE = -5114,             // (field, value, lowest, highest)
    DV_ERR_COLUMN_OFFSETS = -5120,          // a row's offsets leave the bytes of its column
    DV_ERR_TOTAL_BYTES = -5121,             // not the bytes of a packed total
    DV_ERR_TOTAL_MEMORY = -5122,            // a total needs more memory than it has
    DV_ERR_ARROW = -5123,                   // (what is wrong) an Arrow array that cannot be taken or made
    DV_ERR_NLS_SETTING = -11035,            // no known language setting
} dv_error_code_e;
// clang-format on

#endif  // DVTYPES_ERROR_CODE_H
