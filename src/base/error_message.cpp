// The message catalogue, and error records made by it.
//
// One table row per code, sorted by code: the types of the message's arguments, one letter each ('t' text,
// 'i' int), and one English sentence with the placeholders "{1}" to "{4}". A placeholder in parentheses,
// " ({3})", stands for a remark: when its argument is empty the parentheses and the blank go with it.

#include "error_message.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

using namespace dv::impl;

namespace {

struct message_t {
    int code;
    std::string_view arg_types;
    const char *text;
};

// clang-format off
constexpr message_t _messages[] = {
    {-11035, "", "Invalid language setting: one assignment NAME=VALUE with a known name and value is expected."},
    {-5114, "tiii", "The value {2} of the field \"{1}\" is out of range: {3} to {4} is accepted."},
    {-5113, "ttt", "Invalid {1}: \"{2}\" ({3})."},
    {-5112, "t", "The field \"{1}\" is given twice in the format model."},
    {-5111, "tii", "The value {1} has more integer digits than NUMBER({2},{3}) holds."},
    {-5110, "", "The local time does not exist in its time zone: the clocks are set forward over it."},
    {-5109, "", "The time zone abbreviation is not in force in the time zone at this local time."},
    {-5104, "", "Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected."},
    {-5103, "", "Invalid time zone offset: hours and, after a colon, minutes are expected, such as +09:00."},
    {-5100, "", "The seconds of a time zone offset must be from 0 to 59."},
    {-5099, "", "A time zone offset must have minutes from 0 to 59 and lie between -12:59:59 and +14:00:00."},
    {-5098, "", "The hours of a time zone offset must be from -12 to 14."},
    {-5097, "t", "The time zone element \"{1}\" must not be combined with TZR or TZD."},
    {-5096, "t", "The time zone element \"{1}\" contradicts another one: it must agree with the region, and TZR or TZD must not be combined with TZH or TZM."},
    {-5091, "", "Unknown time zone element: TZH, TZM, TZR and TZD are accepted."},
    {-5089, "", "The punctuation or quoted text differs from the format model, which asks for an exact match (FX)."},
    {-5088, "", "A number has not as many digits as its format element, and the format model asks for an exact match (FX)."},
    {-5087, "", "The total of seconds is too large for an interval: its whole days must fit a 32-bit integer."},
    {-5084, "", "The row number in the rowid is too large: at most 65535 is accepted."},
    {-5083, "", "The block number in the rowid is too large: at most 4294967295 is accepted."},
    {-5082, "", "The file number in the rowid is too large: at most 65535 is accepted."},
    {-5081, "", "The segment part of the rowid, or its block part, is too large: at most 4294967295 is accepted."},
    {-5080, "", "Invalid rowid: only the letters A to Z and a to z, digits, \"+\" and \"/\" are accepted, up to the largest rowid."},
    {-5075, "", "Invalid number format model."},
    {-5074, "", "Invalid number: the text does not have the form of a number."},
    {-5073, "", "The argument is outside the domain of the function."},
    {-5072, "", "The number is outside the range of the target type."},
    {-5070, "", "A number is divided by zero."},
    {-5069, "", "Numeric underflow: the result is too close to zero for a NUMBER."},
    {-5068, "", "Numeric overflow: the result is too large for a NUMBER."},
    {-5067, "", "The number did not fit the output buffer and was written rounded, in scientific form."},
    {-5065, "", "An interval is divided by zero."},
    {-5064, "", "The leading field of the interval has more digits than its precision allows."},
    {-5063, "", "The seconds of the interval must be below 60, with at most 9 digits after the point."},
    {-5062, "", "The minutes of the interval must be from 0 to 59."},
    {-5061, "", "The hours of the interval must be from 0 to 23."},
    {-5060, "", "The months of the interval must be from 0 to 11."},
    {-5059, "", "The text has a field that the interval's qualifier does not allow."},
    {-5057, "", "The interval's leading precision must be from 0 to 9 and its fractional precision from 1 to 9."},
    {-5056, "", "Invalid interval: the text is empty, or lacks a digit or a separator."},
    {-5054, "", "The format element J cannot be used to write a date."},
    {-5049, "", "The text ended before the format model: no more elements may follow the last value."},
    {-5048, "", "The format model for TRUNC or ROUND must be one unit: other text follows it."},
    {-5045, "", "The text ended while the format model still asks for date fields."},
    {-5042, "", "A decimal point is missing before the fractional seconds."},
    {-5041, "", "The precision of fractional seconds must be from 0 to 9."},
    {-5040, "", "The format element HH24 must not be combined with AM or PM."},
    {-5039, "", "The format element SYYYY must not be combined with AD or BC."},
    {-5028, "", "The format element SSSSS must not be combined with an element for seconds."},
    {-5027, "", "The format element SSSSS must not be combined with an element for minutes."},
    {-5026, "", "The format element SSSSS must not be combined with an element for hours."},
    {-5025, "", "The day of the year (DDD) contradicts the day of the month."},
    {-5024, "", "The day of the year (DDD) contradicts the month."},
    {-5014, "", "Unknown format element, or no unit of truncation and rounding."},
    {-5013, "", "The format model has an element that can be written but not read."},
    {-5012, "", "The format model has an element that this type does not have: TIME takes no date or time zone, TIMESTAMP no time zone."},
    {-5011, "", "The format model has an element that this type does not have: DATE takes no fractional seconds or time zone, TIME no date or time zone."},
    {-5010, "", "Characters are left over after the value."},
    {-5009, "", "The interval's text ends before all its fields are given."},
    {-5008, "", "The fractional precision of an interval must be from 0 to 9."},
    {-5007, "", "The length of the text or of the output buffer must be at least 1."},
    {-5006, "", "The value's type does not have this field."},
    {-5005, "", "The target month does not have this day."},
    {-3006, "", "The number format model has the element B, or asks for roman numerals to be read."},
    {-3005, "", "The output buffer is too short for the text."},
    {DV_ERR_NO_MEMORY, "", "There is not enough memory."},
};
// clang-format on

constexpr bool is_sorted_by_code_() {
    return std::adjacent_find(std::begin(_messages), std::end(_messages),
                              [](auto &a, auto &b) { return a.code >= b.code; }) == std::end(_messages);
}

// Every argument has its placeholder, and no placeholder is without an argument.
constexpr bool fits_its_arguments_(const message_t &message) {
    const std::string_view text = message.text;
    std::string_view placeholder[] = {"{1}", "{2}", "{3}", "{4}"};
    for (size_t i = 0; i < std::size(placeholder); ++i) {
        if ((text.find(placeholder[i]) != text.npos) != (i < message.arg_types.size())) return false;
    }
    return message.arg_types.find_first_not_of("ti") == std::string_view::npos;
}

static_assert(std::size(_messages) > 0 && is_sorted_by_code_());
static_assert(std::all_of(std::begin(_messages), std::end(_messages), fits_its_arguments_));

const message_t *find_message_(int code) {
    const message_t *const found =
        std::lower_bound(std::begin(_messages), std::end(_messages), code,
                         [](const message_t &message, int wanted) { return message.code < wanted; });
    return found != std::end(_messages) && found->code == code ? found : nullptr;
}

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

void dv::impl::error_fill(dv_error_t &error, const char *src_file, int line, const char *function, int code,
                          va_list args) {
    error = dv_error_t{};
    error.code = code;
    error.line = line;
    set_text_(error.file, src_file);
    set_text_(error.function, function);

    const message_t *const message = find_message_(code);
    if (message == nullptr) {
        std::snprintf(error.message, sizeof error.message, "Unknown error %d.", code);
        return;
    }
    for (const char type : message->arg_types) {
        auto &text = error.args[error.arg_count++];
        if (type == 't') {
            set_text_(text, va_arg(args, const char *));
        } else {
            set_int_(text, va_arg(args, int));
        }
    }
    fill_in_(error, message->text);
}

void dv::impl::error_abort(const dv_error_t &error) {
    std::fprintf(stderr, "%s:%d: %s: error %d raised without a recovery point: %s\n", error.file, error.line,
                 error.function, error.code, error.message);
    std::abort();
}

extern "C" const char *dv_error_text(int code) {
    const message_t *const message = find_message_(code);
    return message != nullptr ? message->text : nullptr;
}
