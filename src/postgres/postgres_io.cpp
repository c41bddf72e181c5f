// Text, bytes and modifiers of the types.
//
// A modifier is its numbers, each plus 128 in eight bits, the first one highest: number(10,2),
// dv_timestamp(3), dv_interval_ds(4,6). Their order and their bounds are those of the table below.

#include "postgres_io.h"

#include "postgres_call.h"
#include "sql_datetime.h"

extern "C" {
#include <libpq/pqformat.h>
#include <nodes/nodeFuncs.h>
#include <nodes/supportnodes.h>
#include <utils/array.h>
}

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Rows of the catalogue
// ---------------------------------------------------------------------------------------------------------

// TIMESTAMP WITH LOCAL TIME ZONE goes through TIMESTAMP WITH TIME ZONE, in UTC.
sql_kind catalogue_kind_(sql_kind kind) { return kind == POSTGRES_KIND_TS_LTZ ? SQL_KIND_TS_TZ : kind; }

struct text_rows {
    const sql_function *reader, *writer;
};

const text_rows &text_rows_of_(sql_kind kind) {
    static text_rows rows[DV_TYPE_MAX_PSM];
    text_rows &of = rows[kind];
    if (of.reader == nullptr) {
        of.writer = postgres_find("dv_text", {kind});
        of.reader = postgres_find(sql_type_of(kind)->reader, {SQL_KIND_TEXT});
    }
    return of;
}

// ---------------------------------------------------------------------------------------------------------
// Modifiers
// ---------------------------------------------------------------------------------------------------------

struct number_range {
    int least, most;
};

struct cast {
    const char *name;  // of the row of the catalogue that applies it
    int numbers;       // that the row takes
};

struct modifier {
    sql_kind kind;
    int numbers;  // at most; the second may be left out
    number_range range[2];
    cast casts[2];  // applied one after the other, each to the next of the numbers
};

constexpr number_range _digits = {0, 9};
constexpr modifier _modifiers[] = {
    {SQL_KIND_NUMBER, 2, {{1, NUMBER_PRECISION_MAX}, {-127, 127}}, {{"dv_cast_number", 2}}},
    {SQL_KIND_TIME, 1, {_digits}, {{"dv_cast_fraction", 1}}},
    {SQL_KIND_TIMESTAMP, 1, {_digits}, {{"dv_cast_fraction", 1}}},
    {SQL_KIND_TS_TZ, 1, {_digits}, {{"dv_cast_fraction", 1}}},
    {SQL_KIND_ITV_YTM, 1, {_digits}, {{"dv_cast_leading", 1}}},
    {SQL_KIND_ITV_DTS, 2, {_digits, _digits}, {{"dv_cast_leading", 1}, {"dv_cast_fraction", 1}}},
};
constexpr int _bits = 8;
constexpr int _excess = 128;
constexpr int _none = 0;  // in place of a number with its excess

// NULL: the type has none.
const modifier *modifier_of_(sql_kind kind) {
    for (const modifier &each : _modifiers) {
        if (each.kind == catalogue_kind_(kind)) return &each;
    }
    return nullptr;
}

int number_at_(int32 typmod, int position) {
    return (typmod >> (position == 0 ? _bits : 0) & ((1 << _bits) - 1)) - _excess;
}

bool has_number_(int32 typmod, int position) { return number_at_(typmod, position) != _none - _excess; }

// The row of a cast, looked for once.
const sql_function &row_of_(sql_kind kind, int place, const cast &by) {
    static const sql_function *rows[DV_TYPE_MAX_PSM][2];
    const sql_function *&row = rows[kind][place];
    if (row == nullptr) {
        row = by.numbers == 2 ? postgres_find(by.name, {kind, SQL_KIND_INTEGER, SQL_KIND_INTEGER})
                              : postgres_find(by.name, {kind, SQL_KIND_INTEGER});
    }
    return *row;
}

void apply_cast_(sql_value &value, const sql_function &row, int32 typmod, int position) {
    sql_call call;
    sql_begin(call, &postgres_memory);
    call.args[call.argc++] = value;
    while (call.argc < sql_param_count(row.signature))
        call.args[call.argc++] = sql_integer(number_at_(typmod, position++));
    postgres_run(row, call);
    value = call.result;
}

void apply_(sql_value &value, sql_kind kind, int32 typmod) {
    const modifier *of = typmod < 0 ? nullptr : modifier_of_(kind);
    if (of == nullptr) return;
    int position = 0;
    for (int place = 0; place < 2; ++place) {
        const cast &by = of->casts[place];
        if (by.name != nullptr && has_number_(typmod, position))
            apply_cast_(value, row_of_(value.kind, place, by), typmod, position);
        position += by.numbers;
    }
}

// ---------------------------------------------------------------------------------------------------------
// Values, among them TIMESTAMP WITH LOCAL TIME ZONE
// ---------------------------------------------------------------------------------------------------------

constexpr int _utc_zone_bytes = sizeof(dv_ts_tz_t) - sizeof(dv_timestamp_t);

Datum give_(const sql_value &value, sql_kind kind) {
    return kind == POSTGRES_KIND_TS_LTZ ? postgres_give_record(value.ts_tz.utc) : postgres_give(value);
}

// Otherwise the text of the value could not be read.
bool is_offset_in_force_(const dv_ts_tz_t &value) {
    timezone_t in_force = value.tz;
    timezone_adjust(&in_force, &sql_date_part(value));
    return memcmp(&in_force, &value.tz, sizeof in_force) == 0;
}

// Returns what is wrong with bytes from elsewhere, NULL when nothing is.
const char *decode_(sql_value &value, sql_kind kind, const uint8_t *bytes, int length) {
    value.kind = catalogue_kind_(kind);
    uint8_t with_zone[sizeof(dv_ts_tz_t)];
    if (kind == POSTGRES_KIND_TS_LTZ) {
        if (length != sizeof(dv_timestamp_t)) return "it does not have the length of its type";
        memcpy(with_zone, bytes, sizeof(dv_timestamp_t));
        memcpy(with_zone + sizeof(dv_timestamp_t), &SQL_UTC, _utc_zone_bytes);
        bytes = with_zone;
        length = sizeof with_zone;
    }
    const char *fault = sql_type_of(value.kind)->decode(value, bytes, length);
    if (fault == nullptr && value.kind == SQL_KIND_TS_TZ && !is_offset_in_force_(value.ts_tz))
        return "its UTC offset is not in force in its region then";
    return fault;
}

// Does what one modifier lets through stay as it is under another? Fractions and leading digits.
bool keeps_digits_(int32 from, int32 to) {
    for (int position = 0; position < 2; ++position) {
        const auto digits = [position](int32 of) {
            return has_number_(of, position) ? number_at_(of, position) : _digits.most;
        };
        if (digits(to) < digits(from)) return false;
    }
    return true;
}

// Precision and scale.
bool keeps_number_(int32 from, int32 to) {
    const auto integers = [](int32 of) { return number_at_(of, 0) - number_at_(of, 1); };
    return number_at_(to, 1) >= number_at_(from, 1) && integers(to) >= integers(from);
}

// For the planner: a call of postgres_apply_modifier is its argument where that has a modifier which lets
// through no more. So columns get wider without a new table.
Datum without_cast_(FunctionCallInfo fcinfo, bool (*keeps)(int32 from, int32 to)) {
    auto *request = reinterpret_cast<SupportRequestSimplify *>(PG_GETARG_POINTER(0));
    if (!IsA(request, SupportRequestSimplify)) PG_RETURN_POINTER(nullptr);
    auto *value = static_cast<Node *>(linitial(request->fcall->args));
    auto *modifier = static_cast<Const *>(lsecond(request->fcall->args));
    if (!IsA(modifier, Const) || modifier->constisnull) PG_RETURN_POINTER(nullptr);
    const int32 from = exprTypmod(value), to = DatumGetInt32(modifier->constvalue);
    const bool is_kept = to < 0 || (from >= 0 && keeps(from, to));
    PG_RETURN_POINTER(is_kept ? relabel_to_typmod(value, to) : nullptr);
}

// A NUMBER's text, which is ASCII, is written where it stays: what the catalogue's writer gives.
Datum number_out_(Datum datum) {
    number_t number;
    postgres_take_number(number, datum);
    auto *text = static_cast<char *>(palloc(NUMBER_SCIENTIFIC_TEXT_SIZE));
    number_to_str(&number, NUMBER_SCIENTIFIC_TEXT_SIZE, text, nullptr);
    return CStringGetDatum(text);
}

}  // namespace

Datum dv::impl::postgres_in(sql_kind kind, FunctionCallInfo fcinfo) {
    sql_call call;
    sql_begin(call, &postgres_memory);
    call.args[0].kind = SQL_KIND_TEXT;
    call.args[0].text = postgres_take_cstring(PG_GETARG_CSTRING(0));
    call.argc = 1;
    postgres_run(*text_rows_of_(catalogue_kind_(kind)).reader, call, ERRCODE_INVALID_TEXT_REPRESENTATION);
    apply_(call.result, kind, PG_GETARG_INT32(2));
    return give_(call.result, kind);
}

Datum dv::impl::postgres_out(sql_kind kind, FunctionCallInfo fcinfo) {
    if (kind == SQL_KIND_NUMBER) return number_out_(PG_GETARG_DATUM(0));
    sql_call call;
    sql_begin(call, &postgres_memory);
    postgres_take(call.args[0], PG_GETARG_DATUM(0), kind);
    call.argc = 1;
    postgres_run(*text_rows_of_(catalogue_kind_(kind)).writer, call);
    return CStringGetDatum(postgres_give_cstring(call.result.text));
}

Datum dv::impl::postgres_receive(sql_kind kind, FunctionCallInfo fcinfo) {
    auto *message = reinterpret_cast<StringInfo>(PG_GETARG_POINTER(0));
    const int length = message->len - message->cursor;
    const char *bytes = pq_getmsgbytes(message, length);
    sql_value value;
    const char *fault = decode_(value, kind, reinterpret_cast<const uint8_t *>(bytes), length);
    if (fault != nullptr) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_BINARY_REPRESENTATION),
                        errmsg("invalid bytes for type %s: %s", postgres_type_of(kind).name, fault)));
    }
    apply_(value, kind, PG_GETARG_INT32(2));
    return give_(value, kind);
}

Datum dv::impl::postgres_send(sql_kind kind, FunctionCallInfo fcinfo) {
    sql_value value;
    postgres_take(value, PG_GETARG_DATUM(0), kind);
    uint8_t bytes[SQL_VALUE_SIZE_MAX];
    int length = sql_type_of(value.kind)->encode(value, bytes);
    if (kind == POSTGRES_KIND_TS_LTZ) length = sizeof(dv_timestamp_t);
    StringInfoData message;
    pq_begintypsend(&message);
    pq_sendbytes(&message, reinterpret_cast<char *>(bytes), length);
    return PointerGetDatum(pq_endtypsend(&message));
}

Datum dv::impl::postgres_modifier_in(sql_kind kind, FunctionCallInfo fcinfo) {
    const modifier &of = *modifier_of_(kind);
    int count = 0;
    const int32 *given = ArrayGetIntegerTypmods(PG_GETARG_ARRAYTYPE_P(0), &count);
    if (count < 1 || count > of.numbers) {
        ereport(ERROR,
                (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("%s has at most %d numbers in parentheses",
                                                                  postgres_type_of(kind).name, of.numbers)));
    }
    int typmod = 0;
    for (int i = 0; i < 2; ++i) {
        // number(p) is number(p,0)
        const bool is_zero = i >= count && kind == SQL_KIND_NUMBER;
        const int number = i < count ? given[i] : is_zero ? 0 : _none - _excess;
        if (i < count && (number < of.range[i].least || number > of.range[i].most)) {
            ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE),
                            errmsg("%d in parentheses behind %s does not lie in %d..%d", number,
                                   postgres_type_of(kind).name, of.range[i].least, of.range[i].most)));
        }
        typmod = typmod << _bits | (number + _excess);
    }
    PG_RETURN_INT32(typmod);
}

Datum dv::impl::postgres_modifier_out(sql_kind /*kind*/, FunctionCallInfo fcinfo) {
    const int32 typmod = PG_GETARG_INT32(0);
    if (typmod < 0) PG_RETURN_CSTRING(pstrdup(""));
    if (!has_number_(typmod, 1)) PG_RETURN_CSTRING(psprintf("(%d)", number_at_(typmod, 0)));
    PG_RETURN_CSTRING(psprintf("(%d,%d)", number_at_(typmod, 0), number_at_(typmod, 1)));
}

Datum dv::impl::postgres_apply_modifier(sql_kind kind, FunctionCallInfo fcinfo) {
    sql_value value;
    postgres_take(value, PG_GETARG_DATUM(0), kind);
    apply_(value, kind, PG_GETARG_INT32(1));
    return give_(value, kind);
}

DV_POSTGRES_FUNCTION(dvpg_number_modifier_support) { return without_cast_(fcinfo, keeps_number_); }
DV_POSTGRES_FUNCTION(dvpg_digits_modifier_support) { return without_cast_(fcinfo, keeps_digits_); }
