// The message catalogue, and error records made by it.
//
// One line per code: the types of the message's arguments, one letter each ('t' text,
// 'i' int), and one English sentence with the placeholders "{1}" to "{4}". A placeholder in parentheses,
// " ({3})", stands for a remark: when its argument is empty the parentheses and the blank go with it.

#include "error_message.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

#include "../common/datatype/error.h"

using namespace dv::impl;

namespace {

struct message_t {
    std::string_view arg_types;
    const char *text;  // nullptr: unknown code
};

// A code without a line here does not compile (-Wswitch), nor one with two.
// clang-format off
constexpr message_t message_of_(dv_error_code_e code) {  // NOLINT(readability-function-size): a table
    switch (code) {
        case DV_ERR_NO_MEMORY: return {"", "There is not enough memory."};
        case DV_ERR_CHARSET_UNUSABLE: return {"t", "The C library cannot convert texts of the character set {1}: the modules of its iconv are not installed."};
        case DV_ERR_TEXT_BUFFER_SIZE: return {"", "The output buffer is too short for the text."};
        case DV_ERR_NUMBER_MODEL: return {"", "The number format model has the element B, or asks for roman numerals to be read."};
        case DV_ERR_MONTH_LACKS_DAY: return {"", "The target month does not have this day."};
        case DV_ERR_FIELD_UNSUPPORTED: return {"", "The value's type does not have this field."};
        case DV_ERR_TEXT_LENGTH: return {"", "The length of the text or of the output buffer must be at least 1."};
        case DV_ERR_ITV_TRIM_PRECISION: return {"", "The fractional precision of an interval must be from 0 to 9."};
        case DV_ERR_ITV_TEXT_ENDED: return {"", "The interval's text ends before all its fields are given."};
        case DV_ERR_TRAILING_TEXT: return {"", "Characters are left over after the value."};
        case DV_ERR_MODEL_FOR_DATE: return {"", "The format model has an element that this type does not have: DATE takes no fractional seconds or time zone, TIME no date or time zone, TIMESTAMP no time zone."};
        case DV_ERR_MODEL_FOR_TIME: return {"", "The format model has an element that this type does not have: TIME takes no date or time zone, TIMESTAMP no time zone."};
        case DV_ERR_ELEMENT_NOT_READABLE: return {"", "The format model has an element that can be written but not read."};
        case DV_ERR_MODEL_ELEMENT: return {"", "Unknown format element, or no unit of truncation and rounding."};
        case DV_ERR_DAY_OF_YEAR_AND_MONTH: return {"", "The day of the year (DDD) contradicts the month."};
        case DV_ERR_DAY_OF_YEAR_AND_DAY: return {"", "The day of the year (DDD) contradicts the day of the month."};
        case DV_ERR_SSSSS_AND_HOUR: return {"", "The format element SSSSS must not be combined with an element for hours."};
        case DV_ERR_SSSSS_AND_MINUTE: return {"", "The format element SSSSS must not be combined with an element for minutes."};
        case DV_ERR_SSSSS_AND_SECOND: return {"", "The format element SSSSS must not be combined with an element for seconds."};
        case DV_ERR_SYYYY_AND_ERA: return {"", "The format element SYYYY must not be combined with AD or BC."};
        case DV_ERR_HH24_AND_MERIDIEM: return {"", "The format element HH24 must not be combined with AM or PM."};
        case DV_ERR_FRACTION_PRECISION: return {"", "Invalid precision of fractional seconds: FF1 to FF9 are accepted in a format model, 0 to 9 for a type."};
        case DV_ERR_RADIX: return {"", "A decimal point is missing before the fractional seconds."};
        case DV_ERR_TEXT_ENDED: return {"", "The text ended while the format model still asks for date fields."};
        case DV_ERR_UNIT_LEFT_OVER: return {"", "The format model for TRUNC or ROUND must be one unit: other text follows it."};
        case DV_ERR_MODEL_LEFT_OVER: return {"", "The text ended before the format model: no more elements may follow the last value."};
        case DV_ERR_J_NOT_WRITABLE: return {"", "The format element J cannot be used to write a date."};
        case DV_ERR_ITV_TEXT: return {"", "Invalid interval: the text is empty, or lacks a digit or a separator."};
        case DV_ERR_ITV_TO_TEXT_PRECISION: return {"", "The interval's leading precision must be from 0 to 9 and its fractional precision from 1 to 9."};
        case DV_ERR_ITV_QUALIFIER: return {"", "The text has a field that the interval's qualifier does not allow."};
        case DV_ERR_ITV_MONTH: return {"", "The months of the interval must be from 0 to 11."};
        case DV_ERR_ITV_HOUR: return {"", "The hours of the interval must be from 0 to 23."};
        case DV_ERR_ITV_MINUTE: return {"", "The minutes of the interval must be from 0 to 59."};
        case DV_ERR_ITV_SECOND: return {"", "The seconds of the interval must be below 60, with at most 9 digits after the point."};
        case DV_ERR_ITV_LEADING_PRECISION: return {"", "The leading field of the interval has more digits than its precision allows."};
        case DV_ERR_ITV_DIVISION_BY_ZERO: return {"", "An interval is divided by zero."};
        case DV_ERR_NUMBER_TEXT_SHORTENED: return {"", "The number did not fit the output buffer and was written rounded, in scientific form."};
        case DV_ERR_NUMBER_OVERFLOW: return {"", "Numeric overflow: the result is too large for a NUMBER."};
        case DV_ERR_NUMBER_UNDERFLOW: return {"", "Numeric underflow: the result is too close to zero for a NUMBER."};
        case DV_ERR_NUMBER_DIVISION_BY_ZERO: return {"", "A number is divided by zero."};
        case DV_ERR_NUMBER_TARGET_RANGE: return {"", "The number is outside the range of the target type."};
        case DV_ERR_NUMBER_DOMAIN: return {"", "The argument is outside the domain of the function."};
        case DV_ERR_NUMBER_TEXT: return {"", "Invalid number: the text does not have the form of a number."};
        case DV_ERR_NUMBER_FORMAT: return {"", "Invalid number format model."};
        case DV_ERR_ROWID_TEXT: return {"", "Invalid rowid: only the letters A to Z and a to z, digits, \"+\" and \"/\" are accepted, up to the largest rowid."};
        case DV_ERR_ROWID_SGMT: return {"", "The segment part of the rowid, or its block part, is too large: at most 4294967295 is accepted."};
        case DV_ERR_ROWID_FILE: return {"", "The file number in the rowid is too large: at most 65535 is accepted."};
        case DV_ERR_ROWID_BLOCK: return {"", "The block number in the rowid is too large: at most 4294967295 is accepted."};
        case DV_ERR_ROWID_ROW: return {"", "The row number in the rowid is too large: at most 65535 is accepted."};
        case DV_ERR_ITV_TOTAL_SECONDS: return {"", "The total of seconds is too large for an interval: its whole days must fit a 32-bit integer."};
        case DV_ERR_EXACT_WIDTH: return {"", "A number has not as many digits as its format element, and the format model asks for an exact match (FX)."};
        case DV_ERR_EXACT_TEXT: return {"", "The punctuation or quoted text differs from the format model, which asks for an exact match (FX)."};
        case DV_ERR_ZONE_ELEMENT: return {"", "Unknown time zone element: TZH, TZM, TZR and TZD are accepted."};
        case DV_ERR_ZONE_NAME_CONFLICT: return {"t", "The time zone element \"{1}\" contradicts another one: it must agree with the region, and TZR or TZD must not be combined with TZH or TZM."};
        case DV_ERR_ZONE_OFFSET_CONFLICT: return {"t", "The time zone element \"{1}\" must not be combined with TZR or TZD."};
        case DV_ERR_ZONE_HOUR: return {"", "The hours of a time zone offset must be from -12 to 14."};
        case DV_ERR_ZONE_MINUTE: return {"", "A time zone offset must have minutes from 0 to 59 and lie between -12:59:59 and +14:00:00."};
        case DV_ERR_ZONE_SECOND: return {"", "The seconds of a time zone offset must be from 0 to 59."};
        case DV_ERR_ZONE_OFFSET: return {"", "Invalid time zone offset: hours and, after a colon, minutes are expected, such as +09:00."};
        case DV_ERR_ZONE_TEXT: return {"", "Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected."};
        case DV_ERR_ZONE_ABBREVIATION_TIME: return {"", "The time zone abbreviation is not in force in the time zone at this local time."};
        case DV_ERR_ZONE_GAP: return {"", "The local time does not exist in its time zone: the clocks are set forward over it."};
        case DV_ERR_NUMBER_PRECISION: return {"tii", "The value {1} has more integer digits than NUMBER({2},{3}) holds."};
        case DV_ERR_FIELD_TWICE: return {"t", "The field \"{1}\" is given twice in the format model."};
        case DV_ERR_FIELD_TEXT: return {"ttt", "Invalid {1}: \"{2}\" ({3})."};
        case DV_ERR_FIELD_RANGE: return {"tiii", "The value {2} of the field \"{1}\" is out of range: {3} to {4} is accepted."};
        case DV_ERR_COLUMN_OFFSETS: return {"", "The offsets of a row run backwards, leave the bytes of the column, or give a value more bytes than it can have."};
        case DV_ERR_TOTAL_BYTES: return {"", "The bytes are not those of a total."};
        case DV_ERR_TOTAL_MEMORY: return {"", "The total needs more memory than it has."};
        case DV_ERR_ARROW: return {"t", "The Arrow array cannot be exchanged: {1}."};
        case DV_ERR_NLS_SETTING: return {"", "Invalid language setting: one assignment NAME=VALUE with a known name and value is expected."};
    }
    return {"", nullptr};
}
// clang-format on

constexpr message_t message_of_(int code) { return message_of_(static_cast<dv_error_code_e>(code)); }

// Every argument has its placeholder, and no placeholder is without an argument.
constexpr bool fits_its_arguments_(const message_t &message) {
    const std::string_view text = message.text;
    std::string_view placeholder[] = {"{1}", "{2}", "{3}", "{4}"};
    for (size_t i = 0; i < std::size(placeholder); ++i) {
        if ((text.find(placeholder[i]) != text.npos) != (i < message.arg_types.size())) return false;
    }
    return message.arg_types.find_first_not_of("ti") == std::string_view::npos;
}

constexpr bool every_message_fits_its_arguments_() {
    for (int code = -20'000; code <= 0; ++code) {  // more than all codes
        const message_t message = message_of_(code);
        if (message.text != nullptr && !fits_its_arguments_(message)) return false;
    }
    return true;
}
static_assert(every_message_fits_its_arguments_());

// A NUL-ended text under construction in a fixed array; what does not fit is dropped as a whole tail.
class bounded_text_t {
  public:
    template <size_t N>
    explicit bounded_text_t(char (&text)[N]) : text_(text), capacity_(N - 1) {
        text_[0] = '\0';
    }

    void append(std::string_view piece) {
        if (is_full_) return;
        const size_t size = piece.size() <= capacity_ - size_ ? piece.size() : cut_(piece, capacity_ - size_);
        is_full_ = size < piece.size();
        std::memcpy(text_ + size_, piece.data(), size);
        size_ += size;
        text_[size_] = '\0';
    }

  private:
    // The largest size up to limit < piece.size() that ends before, not inside, a UTF-8 sequence.
    static size_t cut_(std::string_view piece, size_t limit) {
        size_t size = limit;
        for (int back = 0; back < 3 && size > 0 && is_continuation_(piece[size]); ++back) --size;
        return is_continuation_(piece[size]) ? limit : size;
    }
    static bool is_continuation_(char c) { return (static_cast<uchar>(c) & 0xC0) == 0x80; }

    char *text_;
    size_t capacity_;
    size_t size_ = 0;
    bool is_full_ = false;
};

template <size_t N>
void set_text_(char (&text)[N], const char *value) {
    bounded_text_t(text).append(value != nullptr ? value : "(null)");
}

template <size_t N>
void set_int_(char (&text)[N], int value) {
    std::snprintf(text, N, "%d", value);
}

// The number 1..4 of the placeholder that text begins with, or 0.
int placeholder_(std::string_view text) {
    const bool is_one = text.size() >= 3 && text[0] == '{' && text[2] == '}';
    return is_one ? text[1] - '0' : 0;
}

// The number of the placeholder in the remark, " ({3})", that text begins with, or 0.
int remark_(std::string_view text) {
    if (!text.starts_with(" (")) return 0;
    text.remove_prefix(2);
    return placeholder_(text);
}

void fill_in_(dv_error_t &error, std::string_view text) {
    bounded_text_t message(error.message);
    while (!text.empty()) {
        const int remark = remark_(text);
        if (remark != 0 && error.args[remark - 1][0] == '\0') {
            text.remove_prefix(std::string_view(" ({1})").size());
            continue;
        }
        const int number = placeholder_(text);
        message.append(number != 0 ? std::string_view(error.args[number - 1])
                                   : std::string_view(text.data(), 1));
        text.remove_prefix(number != 0 ? 3 : 1);
    }
}

}  // namespace

extern "C" void dv_error_fill(dv_error_t *filled, const char *src_file, int line, const char *func_name,
                              int code, va_list args) {
    dv_error_t &error = *filled;
    error = dv_error_t{};
    error.code = code;
    error.line = line;
    set_text_(error.file, src_file);
    set_text_(error.function, func_name);

    const message_t message = message_of_(code);
    if (message.text == nullptr) {
        std::snprintf(error.message, sizeof error.message, "Unknown error %d.", code);
        return;
    }
    for (const char type : message.arg_types) {
        auto &text = error.args[error.arg_count++];
        if (type == 't') {
            set_text_(text, va_arg(args, const char *));
        } else {
            set_int_(text, va_arg(args, int));
        }
    }
    fill_in_(error, message.text);
}

extern "C" const char *dv_error_text(int code) { return message_of_(code).text; }
