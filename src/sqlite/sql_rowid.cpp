// ROWID in SQL: its stored form and its functions.
//
// The bytes behind the tag are segment, file, block and row, big-endian: 4 + 2 + 4 + 2. So rows sort by
// place, in the order of the fields of the text form.

#include <cstring>
#include <type_traits>

#include "../common/datatype/bytes.h"
#include "dvtypes/erowid.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

constexpr int _file_at = 4;
constexpr int _block_at = 6;
constexpr int _row_at = 10;
constexpr int _stored_size = 12;

const char *decode_(sql_value &value, const uint8_t *bytes, int length) {
    if (length != _stored_size) return "a ROWID has 12 bytes";
    value.rowid.sgmt = load_be32(bytes);
    value.rowid.file = load_be16(bytes + _file_at);
    value.rowid.block = load_be32(bytes + _block_at);
    value.rowid.row = load_be16(bytes + _row_at);
    return nullptr;
}

int encode_(const sql_value &value, uint8_t *bytes) {
    store_be32(bytes, value.rowid.sgmt);
    store_be16(bytes + _file_at, value.rowid.file);
    store_be32(bytes + _block_at, value.rowid.block);
    store_be16(bytes + _row_at, value.rowid.row);
    return _stored_size;
}

// The INTEGER argument at a position. False when the field does not hold it: the call has failed then.
template <typename Number>
bool get_number_(const sql_call &call, int position, Number &number) {
    static_assert(std::is_unsigned_v<Number>);
    const sqlite3_int64 given = call.args[position].integer;
    number = static_cast<Number>(given);
    if (number == given) return true;
    char text[64];
    sqlite3_snprintf(sizeof text, text, "argument %d is out of range: %lld", position + 1, given);
    sql_fail_with_text(call, text);
    return false;
}

void make_(sql_call &call) {
    sql_value value{};
    value.kind = SQL_KIND_ROWID;
    value.rowid = {};
    if (get_number_(call, 0, value.rowid.sgmt) && get_number_(call, 1, value.rowid.file) &&
        get_number_(call, 2, value.rowid.block) && get_number_(call, 3, value.rowid.row)) {
        sql_return(call.context, value);
    }
}

void from_text_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    erowid_t erowid;
    if (text.length != sizeof erowid) return sql_fail_with_text(call, "a rowid has 18 characters");
    memcpy(&erowid, text.bytes, sizeof erowid);
    sql_value value{};
    value.kind = SQL_KIND_ROWID;
    erowid_get_rowid(&erowid, &value.rowid);
    sql_return(call.context, value);
}

void to_text_(sql_call &call) {
    const rowid_t &rowid = call.args[0].rowid;
    erowid_t erowid;
    erowid_new(&erowid, rowid.sgmt, rowid.file, rowid.block, rowid.row);
    sql_return(call.context, sql_text_value(erowid.text, sizeof erowid.text));
}

template <auto Field>
void field_(sql_call &call) {
    sql_return(call.context, sql_integer(call.args[0].rowid.*Field));
}

constexpr sql_kind _rowid = SQL_KIND_ROWID;
constexpr sql_kind _integer = SQL_KIND_INTEGER;

constexpr sql_function _functions[] = {
    {"dv_rowid", {_integer, _integer, _integer, _integer}, make_},
    {"dv_rowid", {SQL_KIND_TEXT}, from_text_},
    {"dv_rowid", {_rowid}, sql_return_argument},
    {"dv_text", {_rowid}, to_text_},
    {"dv_rowid_sgmt", {_rowid}, field_<&rowid_t::sgmt>},
    {"dv_rowid_file", {_rowid}, field_<&rowid_t::file>},
    {"dv_rowid_block", {_rowid}, field_<&rowid_t::block>},
    {"dv_rowid_row", {_rowid}, field_<&rowid_t::row>},
};

}  // namespace

constinit const sql_type dv::impl::rowid_type = {SQL_KIND_ROWID, "ROWID", "dv_rowid", decode_, encode_};

constinit const sql_function_table dv::impl::rowid_functions = _functions;
