// Calls of rows of the catalogue by the server.
//
// What a row keeps (a compiled model, a zone) lies in a memory context of its own below that of the call
// site, and serves as long as the text that it was made of is the same. Where the query has constants in its
// place, the text is not looked at again.

#include "postgres_call.h"

#include "error_message.h"
#include "sql_overload.h"

extern "C" {
#include <nodes/primnodes.h>
#include <utils/memutils.h>
}

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// What is kept
// ---------------------------------------------------------------------------------------------------------

// In front of an object, of which the text it was made of comes behind.
struct alignas(8) kept {
    MemoryContext context;  // of this
    const sql_keeper *keeper;
    int length;        // of the text; -1: there is no object
    int room;          // for the text
    bool is_constant;  // of what it was made the call site never has anything else

    void *object() { return this + 1; }
    char *made_of() { return static_cast<char *>(object()) + keeper->size; }
    sql_text text() { return {length > 0 ? made_of() : "", length}; }
};

// What the call site keeps and will always keep; NULL: it has to be asked for.
kept *constant_at_(const sql_function &row, const FmgrInfo &site) {
    auto *of = row.keeper == nullptr ? nullptr : static_cast<kept *>(site.fn_extra);
    return of != nullptr && of->is_constant ? of : nullptr;
}

// Does the query have constants for the arguments from one on? A parameter is none: a call site outlives its
// value.
bool are_constant_(const FmgrInfo &site, int from, int count) {
    const auto *call = reinterpret_cast<const FuncExpr *>(site.fn_expr);
    if (call == nullptr || !IsA(call, FuncExpr) || list_length(call->args) != count) return false;
    for (int i = from; i < count; ++i) {
        if (!IsA(list_nth(call->args, i), Const)) return false;
    }
    return true;
}

bool serves_(kept &of, const sql_call &call) {
    const sql_text &given = call.args[of.keeper->argument].text;
    const auto length = static_cast<size_t>(given.length);
    return given.length == of.length && memcmp(given.bytes, of.made_of(), length) == 0 &&
           of.keeper->serves(call, of.object());
}

constexpr int _least_room = 64;  // for texts; longer than most models and names of zones

// In a context that is dropped with that of the caller, until it is whole: making may raise. NULL: the call
// has failed.
kept *make_(const sql_keeper &keeper, sql_call &call, const FmgrInfo &site) {
    const sql_text &given = call.args[keeper.argument].text;
    const auto length = static_cast<size_t>(given.length);
    MemoryContext context =
        AllocSetContextCreate(CurrentMemoryContext, "dvtypes model", ALLOCSET_SMALL_SIZES);
    MemoryContext outside = MemoryContextSwitchTo(context);
    const int room = given.length < _least_room ? _least_room : given.length;
    const size_t size = sizeof(kept) + keeper.size + static_cast<size_t>(room);
    auto *made = static_cast<kept *>(palloc0(size));
    *made = {context, &keeper, given.length, room, are_constant_(site, keeper.argument, call.argc)};
    memcpy(made->made_of(), given.bytes, length);
    keeper.make(call, made->object());
    MemoryContextSwitchTo(outside);
    if (call.outcome != SQL_GIVEN) return nullptr;
    MemoryContextSetParent(context, site.fn_mcxt);
    return made;
}

// Where a text changes from row to row, an object that owns nothing is made anew in its place.
bool may_be_made_again_(const kept &of, const sql_call &call) {
    return of.keeper->release == sql_release_nothing && call.args[of.keeper->argument].text.length <= of.room;
}

// False: the call has failed.
bool make_again_(kept &of, sql_call &call) {
    const sql_text &given = call.args[of.keeper->argument].text;
    of.length = -1;
    memset(of.object(), 0, of.keeper->size);
    of.keeper->make(call, of.object());
    if (call.outcome != SQL_GIVEN) return false;
    memcpy(of.made_of(), given.bytes, static_cast<size_t>(given.length));
    of.length = given.length;
    return true;
}

// What is done at once with a model cannot be cancelled, and grows with the square of its length.
constexpr int _model_bytes_max = 65536;

// False: the call has failed.
bool keep_(const sql_function &row, sql_call &call, FmgrInfo &site) {
    const sql_keeper &keeper = *row.keeper;
    if (keeper.is_of_model && call.args[keeper.argument].text.length > _model_bytes_max) {
        sql_fail(call, "argument %d is longer than %d bytes", keeper.argument + 1, _model_bytes_max);
        return false;
    }
    auto *of = static_cast<kept *>(site.fn_extra);
    const bool serves = of != nullptr && serves_(*of, call);
    if (of != nullptr && !serves && may_be_made_again_(*of, call)) {
        if (!make_again_(*of, call)) return false;
    } else if (!serves) {
        site.fn_extra = nullptr;
        if (of != nullptr) MemoryContextDelete(of->context);
        of = make_(keeper, call, site);
        if (of == nullptr) return false;
        site.fn_extra = of;
    }
    call.kept = of->object();
    return true;
}

// Bodies that write a text under a model keep room for it beside the model.
MemoryContext context_of_(const sql_call &call) {
    return call.kept == nullptr ? CurrentMemoryContext : (static_cast<kept *>(call.kept) - 1)->context;
}

// The arguments of the server's call; the text that a constant was made of is at hand.
void take_args_(const postgres_function &of, sql_call &call, FunctionCallInfo fcinfo) {
    kept *constant = constant_at_(of.function(), *fcinfo->flinfo);
    const int known = constant == nullptr ? -1 : constant->keeper->argument;
    for (; call.argc < fcinfo->nargs; ++call.argc) {
        const NullableDatum &arg = fcinfo->args[call.argc];
        sql_value &value = call.args[call.argc];
        value.kind = SQL_KIND_NULL;
        if (call.argc == known) {
            value.kind = SQL_KIND_TEXT;
            value.text = constant->text();
        } else if (!arg.isnull) {
            postgres_take(value, arg.value, of.params[call.argc]);
        }
    }
    call.kept = constant == nullptr ? nullptr : constant->object();
}

// ---------------------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------------------

struct request {
    const sql_function &row;
    sql_call &call;
    FmgrInfo &site;
};

void run_(request &of) {
    if (of.row.keeper != nullptr && of.call.kept == nullptr && !keep_(of.row, of.call, of.site)) return;
    MemoryContext outside = MemoryContextSwitchTo(context_of_(of.call));
    sql_convert(of.call, of.row.signature);
    of.row.body(of.call);
    MemoryContextSwitchTo(outside);
}

void run_whole_(void *arg) { run_(*static_cast<request *>(arg)); }

// False when it failed, but for want of memory.
bool try_(request &of) {
    MemoryContext outside = CurrentMemoryContext;
    dv_error_t error;
    const int code = dv_protect(run_whole_, &of, &error);
    MemoryContextSwitchTo(outside);
    if (code == DV_ERR_NO_MEMORY) dv_rethrow(&error);
    return code == 0 && of.call.outcome == SQL_GIVEN;
}

// The result in the kind that the function is declared with.
Datum give_(const postgres_function &of, sql_call &call, FunctionCallInfo fcinfo) {
    if (call.result.kind == SQL_KIND_NULL) PG_RETURN_NULL();
    if (of.result == SQL_KIND_NUMBER) {
        const bool is_integer = call.result.kind == SQL_KIND_INTEGER;
        if (is_integer || call.result.kind == SQL_KIND_REAL) sql_to_number(call.result);
    }
    if (call.result.kind != of.result) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE),
                        errmsg("%s gives %s here, not %s", of.function().signature.name,
                               sql_kind_name(call.result.kind), sql_kind_name(of.result)),
                        call.result.kind == SQL_KIND_TEXT
                            ? errhint("%s_text gives it.", of.function().signature.name)
                            : 0));
    }
    return postgres_give(call.result);
}

// ---------------------------------------------------------------------------------------------------------
// Rows
// ---------------------------------------------------------------------------------------------------------

bool is_row_(const sql_signature &signature, const char *name, std::initializer_list<sql_kind> params) {
    if (strcmp(signature.name, name) != 0 || sql_param_count(signature) != static_cast<int>(params.size()))
        return false;
    int i = 0;
    for (const sql_kind param : params) {
        if (signature.params[i++] != param) return false;
    }
    return true;
}

}  // namespace

constinit postgres_running dv::impl::postgres_current = {};

void dv::impl::postgres_enter() {
    postgres_current.row = nullptr;
    recovery_forget();
}

const sql_function *dv::impl::postgres_find(const char *name, std::initializer_list<sql_kind> params) {
    const sql_function *found = nullptr;
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        if (is_row_(row.signature, name, params)) found = &row;
    });
    Assert(found != nullptr);
    return found;
}

void dv::impl::postgres_fail(const sql_call &call, int sqlstate) {
    const int code = call.outcome == SQL_TOO_LONG ? ERRCODE_PROGRAM_LIMIT_EXCEEDED : sqlstate;
    const char *failure = call.outcome == SQL_TOO_LONG ? "the result is too long" : call.failure;
    const sql_text shown = {failure, static_cast<int>(strlen(failure))};
    ereport(ERROR, (errcode(code), errmsg("%s", postgres_give_cstring(shown))));
    pg_unreachable();
}

void dv::impl::postgres_run(const sql_function &row, sql_call &call, int sqlstate) {
    postgres_current = {&row, &call};
    row.body(call);
    postgres_current.row = nullptr;
    if (call.outcome != SQL_GIVEN) postgres_fail(call, sqlstate);
}

Datum dv::impl::postgres_operation(const postgres_function &of, FunctionCallInfo fcinfo) {
    const sql_function &row = of.function();
    number_t x, y;
    postgres_take_number(x, fcinfo->args[0].value);
    postgres_take_number(y, fcinfo->args[1].value);
    sql_call call;  // of which an error has its text
    sql_begin(call, &postgres_memory);
    postgres_current = {&row, &call};
    row.operation(&x, &y);
    postgres_current.row = nullptr;
    return postgres_give_number(x);
}

Datum dv::impl::postgres_call_numbers(const postgres_function &of, FunctionCallInfo fcinfo) {
    const sql_function &row = of.function();
    sql_call call;
    sql_begin(call, &postgres_memory);
    for (; call.argc < fcinfo->nargs; ++call.argc) {
        call.args[call.argc].kind = SQL_KIND_NUMBER;
        postgres_take_number(call.args[call.argc].number, fcinfo->args[call.argc].value);
    }
    postgres_run(row, call);
    return postgres_give_number(call.result.number);
}

Datum dv::impl::postgres_call(const postgres_function &of, FunctionCallInfo fcinfo) {
    const sql_function &row = of.function();
    sql_call call;
    sql_begin(call, &postgres_memory);
    take_args_(of, call, fcinfo);
    postgres_current = {&row, &call};
    request what = {row, call, *fcinfo->flinfo};
    if (row.is_try) {
        if (!try_(what)) PG_RETURN_NULL();
    } else {
        run_(what);
        if (call.outcome != SQL_GIVEN) postgres_fail(call);
    }
    postgres_current.row = nullptr;
    const Datum given = give_(of, call, fcinfo);
    if (call.block != nullptr) pfree(call.block);
    return given;
}
