// NUMBER under format models in SQL: to_char and to_number with a model.

#include "dvtypes/number_fmt.h"
#include "sql_catalogue.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

void to_char_(sql_call &call) {
    const sql_text &model = call.args[1].text;
    static_assert(NUMBER_FMT_TEXT_SIZE <= SQL_ROOM_SIZE);
    number_to_str_fmt(&call.args[0].number, NUMBER_FMT_TEXT_SIZE, call.room, model.length, model.bytes);
    sql_return_text(call, call.room);
}

void to_number_(sql_call &call) {
    const sql_text &text = call.args[0].text, &model = call.args[1].text;
    sql_value value{};
    value.kind = SQL_KIND_NUMBER;
    number_from_str_fmt(&value.number, text.length, text.bytes, model.length, model.bytes);
    sql_return(call, value);
}

constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _rows[] = {
    {{"to_char", {_number, _text}, "v, model", _text, "as text under a number model"}, to_char_},
    {{"to_number", {_text, _text}, "v, model", _number, "reads a number under a number model"}, to_number_},
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_function_table dv::impl::number_model_functions = _functions;
