// Tables as functions that return sets, a row a call.

#include "postgres_table.h"

#include "postgres_call.h"
#include "sql_overload.h"

extern "C" {
#include <funcapi.h>
#include <miscadmin.h>
#include <nodes/supportnodes.h>
#include <optimizer/optimizer.h>
}

using namespace dv::impl;

namespace {

struct walk {
    sql_rows rows;
    int64_t next;
    const sql_table *table;
};

// The server's context of a walk begins with it; the arguments that the rows need are in it.
walk *begin_(const sql_table &table, FunctionCallInfo fcinfo) {
    auto *begun = static_cast<walk *>(palloc0(sizeof(walk)));
    begun->table = &table;
    sql_call call;
    sql_begin(call, &postgres_memory);
    for (; call.argc < fcinfo->nargs; ++call.argc)
        postgres_take(call.args[call.argc], fcinfo->args[call.argc].value, table.signature.params[call.argc]);
    table.begin(call, begun->rows);
    if (call.outcome != SQL_GIVEN) postgres_fail(call);
    return begun;
}

// False: the row has ended. Goes on to the next row that is shown.
bool find_row_(walk &of) {
    const sql_table &table = *of.table;
    while (of.next < of.rows.rows && table.is_shown != nullptr && !table.is_shown(of.rows, of.next)) {
        CHECK_FOR_INTERRUPTS();
        ++of.next;
    }
    return of.next < of.rows.rows;
}

Datum field_(const walk &of, int column, bool &is_null) {
    sql_call call;
    sql_begin(call, &postgres_memory);
    of.table->field(call, of.rows, of.next, column);
    if (call.outcome != SQL_GIVEN) postgres_fail(call);
    is_null = call.result.kind == SQL_KIND_NULL;
    if (is_null) return 0;
    if (of.table->columns[static_cast<size_t>(column)].kind == SQL_KIND_NUMBER) sql_to_number(call.result);
    return postgres_give(call.result);
}

// The row as the function's declaration has it: a value, or a record.
Datum row_(const walk &of, TupleDesc descriptor, bool &is_null) {
    constexpr int columns_max = 16;
    Datum values[columns_max];
    bool nulls[columns_max];
    const int count = static_cast<int>(of.table->columns.size());
    Assert(count <= columns_max);
    for (int i = 0; i < count; ++i) values[i] = field_(of, i, nulls[i]);
    is_null = count == 1 && nulls[0];
    return count == 1 ? values[0] : HeapTupleGetDatum(heap_form_tuple(descriptor, values, nulls));
}

FuncCallContext *first_call_(const sql_table &table, FunctionCallInfo fcinfo) {
    FuncCallContext *context = SRF_FIRSTCALL_INIT();
    MemoryContext outside = MemoryContextSwitchTo(context->multi_call_memory_ctx);
    context->user_fctx = begin_(table, fcinfo);
    TupleDesc descriptor = nullptr;
    if (get_call_result_type(fcinfo, nullptr, &descriptor) == TYPEFUNC_COMPOSITE)
        context->tuple_desc = BlessTupleDesc(descriptor);
    MemoryContextSwitchTo(outside);
    return context;
}

// ---------------------------------------------------------------------------------------------------------
// Counting rows before there are any
// ---------------------------------------------------------------------------------------------------------

struct begun {
    const sql_table &table;
    sql_call call;
    sql_rows rows;
};

void begin_once_(void *arg) {
    auto &of = *static_cast<begun *>(arg);
    of.table.begin(of.call, of.rows);
}

// The arguments into a call; false when one is not known while planning, or NULL.
bool take_constants_(const SupportRequestRows &request, const sql_table &table, sql_call &call) {
    if (!IsA(request.node, FuncExpr)) return false;
    ListCell *each;
    foreach (each, reinterpret_cast<FuncExpr *>(request.node)->args) {
        Node *arg = estimate_expression_value(request.root, static_cast<Node *>(lfirst(each)));
        if (!IsA(arg, Const) || reinterpret_cast<Const *>(arg)->constisnull) return false;
        postgres_take(call.args[call.argc], reinterpret_cast<Const *>(arg)->constvalue,
                      table.signature.params[call.argc]);
        ++call.argc;
    }
    return true;
}

}  // namespace

// What a table would complain of is complained of when it is read.
Datum dv::impl::postgres_count_rows(int table, FunctionCallInfo fcinfo) {
    auto *node = reinterpret_cast<Node *>(PG_GETARG_POINTER(0));
    if (!IsA(node, SupportRequestRows)) PG_RETURN_POINTER(nullptr);
    auto *request = reinterpret_cast<SupportRequestRows *>(node);
    begun of = {*catalogue.tables[static_cast<size_t>(table)], {}, {}};
    sql_begin(of.call, &postgres_memory);
    if (!take_constants_(*request, of.table, of.call)) PG_RETURN_POINTER(nullptr);
    dv_error_t error;
    const int code = dv_protect(begin_once_, &of, &error);
    if (code != 0 || of.call.outcome != SQL_GIVEN) PG_RETURN_POINTER(nullptr);
    request->rows = static_cast<double>(of.rows.rows);
    PG_RETURN_POINTER(request);
}

Datum dv::impl::postgres_next_row(int table, FunctionCallInfo fcinfo) {
    const sql_table &of = *catalogue.tables[static_cast<size_t>(table)];
    FuncCallContext *context = SRF_IS_FIRSTCALL() ? first_call_(of, fcinfo) : SRF_PERCALL_SETUP();
    auto &walked = *static_cast<walk *>(context->user_fctx);
    if (!find_row_(walked)) SRF_RETURN_DONE(context);
    bool is_null = false;
    const Datum row = row_(walked, context->tuple_desc, is_null);
    ++walked.next;
    if (is_null) SRF_RETURN_NEXT_NULL(context);
    SRF_RETURN_NEXT(context, row);
}
