// NUMBER under format models in SQL: to_char and to_number with a model.

#include <cstring>

#include "dvtypes/number_fmt.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

void to_char_(sql_call &call) {
    const sql_text &model = call.args[1].text;
    char text[NUMBER_FMT_TEXT_SIZE];
    number_to_str_fmt(&call.args[0].number, sizeof text, text, model.length, model.bytes);
    sql_return(call.context, sql_text_value(text, static_cast<int>(strlen(text))));
}

void to_number_(sql_call &call) {
    const sql_text &text = call.args[0].text, &model = call.args[1].text;
    sql_value value{};
    value.kind = SQL_KIND_NUMBER;
    number_from_str_fmt(&value.number, text.length, text.bytes, model.length, model.bytes);
    sql_return(call.context, value);
}

constexpr sql_function _functions[] = {
    {"to_char", {SQL_KIND_NUMBER, SQL_KIND_TEXT}, to_char_},
    {"to_number", {SQL_KIND_TEXT, SQL_KIND_TEXT}, to_number_},
};

}  // namespace

constinit const sql_function_table dv::impl::number_model_functions = _functions;
