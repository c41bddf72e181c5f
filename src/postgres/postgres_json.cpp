// Values as JSON: a json is the text that dv_json gives, a jsonb is read from it.

#include "postgres_json.h"

#include "postgres_call.h"

extern "C" {
#include <utils/fmgrprotos.h>
}

using namespace dv::impl;

namespace {

const sql_function &row_() {
    static const sql_function *row;
    if (row == nullptr) row = postgres_find("dv_json", {SQL_KIND_ANY});
    return *row;
}

void write_(sql_call &call, sql_kind kind, FunctionCallInfo fcinfo) {
    sql_begin(call, &postgres_memory);
    postgres_take(call.args[0], PG_GETARG_DATUM(0), kind);
    call.argc = 1;
    postgres_run(row_(), call);
}

}  // namespace

Datum dv::impl::postgres_to_json(sql_kind kind, FunctionCallInfo fcinfo) {
    sql_call call;
    write_(call, kind, fcinfo);
    return postgres_give(call.result);
}

Datum dv::impl::postgres_to_jsonb(sql_kind kind, FunctionCallInfo fcinfo) {
    sql_call call;
    write_(call, kind, fcinfo);
    return DirectFunctionCall1(jsonb_in, CStringGetDatum(postgres_give_cstring(call.result.text)));
}
