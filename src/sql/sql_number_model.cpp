// NUMBER under format models in SQL: to_char and to_number with a model, and with other punctuation than the
// library's "." and ",".
//
// Punctuation is the text ",.": the decimal point, and behind it the group separator, a character each. A
// model names them by its elements; what is written is put into their characters afterwards, and what is read
// before.

#include <cstring>
#include <string_view>

#include "dvtypes/column_number.h"
#include "dvtypes/number_fmt.h"
#include "sql_column.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

constexpr int _model_at = 1;
constexpr int _punctuation_at = 2;

struct punctuation {
    std::string_view point, separator;
};

// The first character of a text, with the bytes behind it that continue it; of an empty one, nothing.
std::string_view first_character_(std::string_view text) {
    size_t length = text.empty() ? 0 : 1;
    while (length < text.size() && (text[length] & 0xC0) == 0x80) ++length;
    return text.substr(0, length);
}

// One character: any but ASCII letters, digits, controls, and what models write beside digits.
bool is_mark_(std::string_view character) {
    constexpr size_t longest = 4;
    if (character.empty() || character.size() > longest) return false;
    const auto first = static_cast<unsigned char>(character.front());
    const unsigned char letter = first | 0x20;
    const bool is_letter_or_digit = (letter >= 'a' && letter <= 'z') || (first >= '0' && first <= '9');
    return first >= ' ' && first != 0x7F && !is_letter_or_digit && strchr("+-$#<>", first) == nullptr;
}

// False when the argument is no punctuation: the call has failed.
bool get_punctuation_(sql_call &call, punctuation &of) {
    const sql_text &given = call.args[_punctuation_at].text;
    const std::string_view text(given.bytes, static_cast<size_t>(given.length));
    std::string_view rest = text;  // not substr, which unoptimised builds call the C++ library for
    of.point = first_character_(rest);
    rest.remove_prefix(of.point.size());
    of.separator = first_character_(rest);
    const bool is_whole = of.point.size() + of.separator.size() == text.size();
    const bool are_two = is_mark_(of.point) && is_mark_(of.separator) && of.point != of.separator;
    if (is_whole && are_two && of.point != " ") return true;
    sql_fail(call, "argument %d, %s, is not a decimal point and a group separator, such as \",.\"",
             _punctuation_at + 1, sql_quote(given).text);
    return false;
}

char *put_(char *out, std::string_view text) {
    memcpy(out, text.data(), text.size());
    return out + text.size();
}

std::string_view trim_(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

// A text with the call's punctuation as the library would have it, in the room of the call. "." and "," that
// are not of the punctuation become what no number has.
std::string_view take_with_(sql_call &call, const punctuation &of, std::string_view text) {
    char *end = call.room;
    while (!text.empty()) {
        const std::string_view character = first_character_(text);
        text.remove_prefix(character.size());
        if (character == of.point) {
            *end++ = '.';
        } else if (character == of.separator) {
            *end++ = ',';
        } else {
            end = put_(end, character == "." || character == "," ? "?" : character);
        }
    }
    return {call.room, end};
}

// ---------------------------------------------------------------------------------------------------------
// Compiled models
// ---------------------------------------------------------------------------------------------------------

template <uchar ForReading>
void make_(sql_call &call, void *object) {
    const sql_text &model = call.args[_model_at].text;
    number_fmt_ctx_set(static_cast<number_fmt_ctx_t *>(object), model.length, model.bytes, ForReading);
}

template <uchar ForReading>
constexpr sql_keeper _keeper = {_model_at,         sizeof(number_fmt_ctx_t), make_<ForReading>,
                                sql_always_serves, sql_release_nothing,      /*is_of_model=*/true};
constexpr const sql_keeper *_for_writing = &_keeper<0>;
constexpr const sql_keeper *_for_reading = &_keeper<1>;

int write_(const sql_call &call, char *text) {
    return number_to_str_ctx(&call.args[0].number, NUMBER_FMT_TEXT_SIZE, text,
                             static_cast<number_fmt_ctx_t *>(call.kept));
}

// ---------------------------------------------------------------------------------------------------------
// Functions
// ---------------------------------------------------------------------------------------------------------

void to_char_(sql_call &call) {
    static_assert(NUMBER_FMT_TEXT_SIZE <= SQL_ROOM_SIZE);
    sql_return_room(call, call.room + write_(call, call.room));
}

void to_char_with_(sql_call &call) {
    static_assert(NUMBER_FMT_TEXT_SIZE * 4 <= SQL_ROOM_SIZE);
    punctuation of;
    if (!get_punctuation_(call, of)) return;
    char text[NUMBER_FMT_TEXT_SIZE];
    const char *const text_end = text + write_(call, text);
    char *end = call.room;
    for (const char *c = text; c != text_end; ++c)
        end = put_(end, *c == '.' ? of.point : *c == ',' ? of.separator : std::string_view(c, 1));
    sql_return_room(call, end);
}

void read_(sql_call &call, std::string_view text) {
    call.result.kind = SQL_KIND_NULL;
    number_from_str_ctx(&call.result.number, static_cast<int>(text.size()), text.data(),
                        static_cast<number_fmt_ctx_t *>(call.kept));
    call.result.kind = SQL_KIND_NUMBER;
}

void to_number_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    read_(call, {text.bytes, static_cast<size_t>(text.length)});
}

void to_numbers_(sql_call &call, const dv_column_t &texts, dv_column_t &result) {
    const sql_text &model = call.args[_model_at].text;
    dv_column_faults_t faults{};
    number_column_from_text_fmt(&texts, model.length, model.bytes, &result, &faults);
}

void to_number_with_(sql_call &call) {
    punctuation of;
    if (!get_punctuation_(call, of)) return;
    const sql_text &given = call.args[0].text;
    const std::string_view text = trim_({given.bytes, static_cast<size_t>(given.length)});
    if (text.size() > SQL_ROOM_SIZE)
        return sql_fail(call, "argument 1 is longer than %d bytes", SQL_ROOM_SIZE);
    read_(call, take_with_(call, of, text));
}

// Texts with the call's punctuation as the library would have it, where both are a byte.
void take_all_with_(const punctuation &of, const dv_column_t &texts) {
    auto *const bytes = static_cast<char *>(texts.values);
    for (int64_t i = texts.offsets[0]; i < texts.offsets[texts.count]; ++i) {
        const char c = bytes[i];
        bytes[i] = c == of.point[0] ? '.' : c == of.separator[0] ? ',' : c == '.' || c == ',' ? '?' : c;
    }
}

// Blanks around a text are none of it, whatever the separator is, and a long one is refused: these texts are
// left to the body.
void to_numbers_with_(sql_call &call, const dv_column_t &texts, dv_column_t &result) {
    punctuation of;
    if (!get_punctuation_(call, of) || of.point.size() + of.separator.size() > 2)
        return sql_leave_all_rows(result);
    take_all_with_(of, texts);
    to_numbers_(call, texts, result);
    const char blank = of.separator == " " ? ',' : ' ';
    for (int64_t row = 0; row < result.count; ++row) {
        const std::string_view text(static_cast<char *>(texts.values) + texts.offsets[row],
                                    static_cast<size_t>(texts.offsets[row + 1] - texts.offsets[row]));
        if (text.starts_with(blank) || text.ends_with(blank) || text.size() > SQL_ROOM_SIZE)
            sql_leave_row(result, row);
    }
}

constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _text = SQL_KIND_TEXT;
constexpr char _with[] = "the same with another decimal point and group separator, such as ',.'";

constexpr sql_function _rows[] = {
    {{"to_char", {_number, _text}, "v, model", _text, "as text under a number model"},
     to_char_,
     SQL_IMMUTABLE,
     _for_writing},
    {{"to_char", {_number, _text, _text}, "v, model, punctuation", _text, _with},
     to_char_with_,
     SQL_IMMUTABLE,
     _for_writing},
    sql_with_columns(
        {{"to_number", {_text, _text}, "v, model", _number, "reads a number under a number model"},
         to_number_,
         SQL_IMMUTABLE,
         _for_reading},
        to_numbers_),
    sql_with_columns({{"to_number", {_text, _text, _text}, "v, model, punctuation", _number, _with},
                      to_number_with_,
                      SQL_IMMUTABLE,
                      _for_reading},
                     to_numbers_with_),
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_function_table dv::impl::number_model_functions = _functions;
