// dv_interval_ym_state and dv_interval_ds_state: the exact sum of intervals, in months or in nanoseconds, and
// their count. They have one form, which aggregates change where it is, too.
//
//   byte 0     version, 1
//   byte 1     3: months, 4: nanoseconds
//   byte 2     count: eight bytes, as an integer in two's complement, the most significant first
//   byte 10    the sum: sixteen bytes, likewise

#include "postgres_call.h"
#include "postgres_state.h"
#include "sql_interval_sum.h"

extern "C" {
#include <port/pg_bswap.h>
}

using namespace dv::impl;

namespace {

constexpr int _size = 26;
constexpr uint8_t _version = 1;

uint64_t load_(const uint8_t *bytes) {
    uint64_t value;
    memcpy(&value, bytes, sizeof value);
    return pg_ntoh64(value);
}

void store_(uint8_t *bytes, uint64_t value) {
    value = pg_hton64(value);
    memcpy(bytes, &value, sizeof value);
}

sql_interval_sum sum_of_(const uint8_t *bytes) {
    return {load_(bytes + 18), load_(bytes + 10), static_cast<int64_t>(load_(bytes + 2))};
}

void write_sum_(const sql_interval_sum &sum, uint8_t *bytes) {
    store_(bytes + 2, static_cast<uint64_t>(sum.count));
    store_(bytes + 10, sum.high);
    store_(bytes + 18, sum.low);
}

template <typename Type>
constexpr uint8_t _mark = Type::kind == SQL_KIND_ITV_YTM ? 3 : 4;

varlena *new_state_(uint8_t mark) {
    varlena *state = postgres_new_state(_size);
    memset(VARDATA(state), 0, _size);
    VARDATA(state)[0] = _version;
    VARDATA(state)[1] = static_cast<char>(mark);
    return state;
}

// The bytes of a state, which came from this type's functions.
const uint8_t *bytes_of_(Datum state) {
    const varlena *from = PG_DETOAST_DATUM_PACKED(state);
    if (VARSIZE_ANY_EXHDR(from) != _size)
        ereport(ERROR, (errcode(ERRCODE_DATA_CORRUPTED), errmsg("not the bytes of a state")));
    return reinterpret_cast<const uint8_t *>(VARDATA_ANY(from));
}

template <typename Type>
varlena *read_(const uint8_t *bytes, int size) {
    if (size != _size || bytes[0] != _version || bytes[1] != _mark<Type>) return nullptr;
    varlena *state = postgres_new_state(_size);
    memcpy(VARDATA(state), bytes, _size);
    return state;
}

int write_(Datum state, uint8_t *bytes) {
    memcpy(bytes, bytes_of_(state), _size);
    return _size;
}

template <typename Type>
constexpr postgres_state_type _type = {
    Type::kind == SQL_KIND_ITV_YTM ? "dv_interval_ym_state" : "dv_interval_ds_state", _size, read_<Type>,
    write_};

template <typename Type>
varlena *copy_of_(Datum state) {
    varlena *copy = read_<Type>(bytes_of_(state), _size);
    if (copy == nullptr)
        ereport(ERROR, (errcode(ERRCODE_DATA_CORRUPTED), errmsg("not the bytes of a state")));
    return copy;
}

// Argument 0 in memory that may be changed: where it is in an aggregate, else a copy, or the empty state for
// NULL.
template <typename Type>
varlena *to_change_(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(0)) return new_state_(_mark<Type>);
    auto *given = reinterpret_cast<varlena *>(PG_GETARG_POINTER(0));
    if (VARATT_IS_4B_U(given) && VARSIZE_4B(given) == VARHDRSZ + _size && postgres_in_aggregate(fcinfo))
        return given;
    return copy_of_<Type>(PG_GETARG_DATUM(0));
}

template <typename Type>
Datum changed_(FunctionCallInfo fcinfo, const sql_interval_sum &by) {
    varlena *state = to_change_<Type>(fcinfo);
    auto *bytes = reinterpret_cast<uint8_t *>(VARDATA(state));
    sql_interval_sum sum = sum_of_(bytes);
    if (!sum.add(by)) {
        ereport(ERROR, (errcode(ERRCODE_INTERVAL_FIELD_OVERFLOW),
                        errmsg("the sum of the intervals is out of range")));
    }
    write_sum_(sum, bytes);
    PG_RETURN_POINTER(state);
}

// sign: 1 for an interval that comes in, -1 for one that is taken out.
template <typename Type, int sign>
Datum add_(FunctionCallInfo fcinfo) {
    sql_interval_sum by = {};
    if (!PG_ARGISNULL(1)) {
        sql_value value;
        postgres_take(value, PG_GETARG_DATUM(1), Type::kind);
        by.add(sign * Type::count(value), sign);
    }
    return changed_<Type>(fcinfo, by);
}

template <typename Type>
Datum merge_(FunctionCallInfo fcinfo) {
    return changed_<Type>(fcinfo, sum_of_(bytes_of_(PG_GETARG_DATUM(1))));
}

template <typename Type>
Datum give_(FunctionCallInfo fcinfo, bool is_average) {
    const sql_interval_sum sum = sum_of_(bytes_of_(PG_GETARG_DATUM(0)));
    if (sum.count <= 0) PG_RETURN_NULL();
    sql_call call;
    sql_begin(call, &postgres_memory);
    Type::give(call, is_average ? sum.average() : sum.total());
    return postgres_give(call.result);
}

template <typename Type>
Datum pack_(FunctionCallInfo fcinfo) {
    PG_RETURN_POINTER(copy_of_<Type>(PG_GETARG_DATUM(0)));
}

Datum count_(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(0)) PG_RETURN_INT64(0);
    PG_RETURN_INT64(sum_of_(bytes_of_(PG_GETARG_DATUM(0))).count);
}

using ym = sql_sum_of_months;
using ds = sql_sum_of_nanoseconds;

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_in) { return postgres_state_in(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_in) { return postgres_state_in(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_out) { return postgres_state_out(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_out) { return postgres_state_out(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_recv) { return postgres_state_receive(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_recv) { return postgres_state_receive(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_send) { return postgres_state_send(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_send) { return postgres_state_send(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_eq) { return postgres_state_eq(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_eq) { return postgres_state_eq(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_ne) { return postgres_state_ne(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_ne) { return postgres_state_ne(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_hash) { return postgres_state_hash(_type<ym>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_hash) { return postgres_state_hash(_type<ds>, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_hash_extended) {
    return postgres_state_hash_extended(_type<ym>, fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_hash_extended) {
    return postgres_state_hash_extended(_type<ds>, fcinfo);
}

DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_add) { return add_<ym, 1>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_add) { return add_<ds, 1>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_sub) { return add_<ym, -1>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_sub) { return add_<ds, -1>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_merge) { return merge_<ym>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_merge) { return merge_<ds>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_pack) { return pack_<ym>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_pack) { return pack_<ds>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_count) { return count_(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_count) { return count_(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_sum) { return give_<ym>(fcinfo, /*is_average=*/false); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_sum) { return give_<ds>(fcinfo, /*is_average=*/false); }
DV_POSTGRES_FUNCTION(dvpg_interval_ym_state_avg) { return give_<ym>(fcinfo, /*is_average=*/true); }
DV_POSTGRES_FUNCTION(dvpg_interval_ds_state_avg) { return give_<ds>(fcinfo, /*is_average=*/true); }
