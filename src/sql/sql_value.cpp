// The list of types, and the names of kinds.

#include "sql_value.h"

#include <array>

using namespace dv::impl;

namespace {

// By kind.
constexpr auto _types = [] {
    std::array<const sql_type *, DV_TYPE_MAX_PSM> types{};
    types[SQL_KIND_NUMBER] = &number_type;
    types[SQL_KIND_DATE] = &date_type;
    types[SQL_KIND_TIME] = &time_type;
    types[SQL_KIND_TIMESTAMP] = &timestamp_type;
    types[SQL_KIND_TS_TZ] = &ts_tz_type;
    types[SQL_KIND_ITV_YTM] = &itv_ytm_type;
    types[SQL_KIND_ITV_DTS] = &itv_dts_type;
    types[SQL_KIND_ROWID] = &rowid_type;
    return types;
}();

struct kind_name {
    sql_kind kind;
    const char *name;
};
constexpr kind_name _engine_kinds[] = {
    {SQL_KIND_NULL, "NULL"}, {SQL_KIND_INTEGER, "INTEGER"}, {SQL_KIND_REAL, "REAL"},
    {SQL_KIND_TEXT, "TEXT"}, {SQL_KIND_BLOB, "BLOB"},       {SQL_KIND_ANY, "any value"},
};

}  // namespace

const sql_type *dv::impl::sql_type_of(int kind) {
    const auto index = static_cast<size_t>(kind);
    return index < _types.size() ? _types[index] : nullptr;
}

const char *dv::impl::sql_kind_name(sql_kind kind) {
    for (const kind_name &row : _engine_kinds) {
        if (row.kind == kind) return row.name;
    }
    const sql_type *type = sql_type_of(kind);
    return type != nullptr ? type->name : "nothing";
}
