// ROWID in SQL: its bytes and its functions.
//
// The bytes are segment, file, block and row, big-endian: 4 + 2 + 4 + 2. So rows sort by place, in the order
// of the fields of the text form.

#include <cstring>
#include <type_traits>

#include "dvtypes/erowid.h"
#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

constexpr int _file_at = 4;
constexpr int _block_at = 6;
constexpr int _row_at = 10;
constexpr int _size = 12;

const char *decode_(sql_value &value, const uint8_t *bytes, int length) {
    if (length != _size) return "a ROWID has 12 bytes";
    value.rowid.sgmt = sql_get_big_endian(bytes, 4);
    value.rowid.file = static_cast<uint16_t>(sql_get_big_endian(bytes + _file_at, 2));
    value.rowid.block = sql_get_big_endian(bytes + _block_at, 4);
    value.rowid.row = static_cast<uint16_t>(sql_get_big_endian(bytes + _row_at, 2));
    return nullptr;
}

int encode_(const sql_value &value, uint8_t *bytes) {
    sql_put_big_endian(bytes, value.rowid.sgmt, 4);
    sql_put_big_endian(bytes + _file_at, value.rowid.file, 2);
    sql_put_big_endian(bytes + _block_at, value.rowid.block, 4);
    sql_put_big_endian(bytes + _row_at, value.rowid.row, 2);
    return _size;
}

// The INTEGER argument at a position. False when the field does not hold it: the call has failed then.
template <typename Number>
bool get_number_(sql_call &call, int position, Number &number) {
    static_assert(std::is_unsigned_v<Number>);
    const int64_t given = call.args[position].integer;
    number = static_cast<Number>(given);
    if (number == given) return true;
    sql_fail(call, "argument %d is out of range: %lld", position + 1, static_cast<long long>(given));
    return false;
}

void make_(sql_call &call) {
    sql_value value{};
    value.kind = SQL_KIND_ROWID;
    value.rowid = {};
    if (get_number_(call, 0, value.rowid.sgmt) && get_number_(call, 1, value.rowid.file) &&
        get_number_(call, 2, value.rowid.block) && get_number_(call, 3, value.rowid.row)) {
        sql_return(call, value);
    }
}

void from_text_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    erowid_t erowid;
    if (text.length != sizeof erowid)
        return sql_fail(call, "%s is no rowid, which has 18 characters", sql_quote(text).text);
    memcpy(&erowid, text.bytes, sizeof erowid);
    sql_value value{};
    value.kind = SQL_KIND_ROWID;
    erowid_get_rowid(&erowid, &value.rowid);
    sql_return(call, value);
}

void to_text_(sql_call &call) {
    const rowid_t &rowid = call.args[0].rowid;
    erowid_t erowid;
    erowid_new(&erowid, rowid.sgmt, rowid.file, rowid.block, rowid.row);
    memcpy(call.room, erowid.text, sizeof erowid.text);
    sql_return_room(call, call.room + sizeof erowid.text);
}

template <auto Field>
void field_(sql_call &call) {
    sql_return(call, sql_integer(call.args[0].rowid.*Field));
}

constexpr sql_kind _rowid = SQL_KIND_ROWID;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _functions[] = {
    {{"dv_rowid",
      {_integer, _integer, _integer, _integer},
      "segment, file, block, row",
      _rowid,
      "the row identifier of these numbers"},
     make_},
    {{"dv_rowid", {_text}, "v", _rowid, "reads a row identifier of 18 characters"}, from_text_},
    {{"dv_rowid", {_rowid}, "v", _rowid, "the row identifier itself"}, sql_return_argument},
    {{"dv_text", {_rowid}, "r", _text, "as 18 characters"}, to_text_},
    {{"dv_rowid_sgmt", {_rowid}, "r", _integer, "the number of the segment"}, field_<&rowid_t::sgmt>},
    {{"dv_rowid_file", {_rowid}, "r", _integer, "the number of the file"}, field_<&rowid_t::file>},
    {{"dv_rowid_block", {_rowid}, "r", _integer, "the number of the block"}, field_<&rowid_t::block>},
    {{"dv_rowid_row", {_rowid}, "r", _integer, "the number of the row"}, field_<&rowid_t::row>},
};

}  // namespace

constinit const sql_type dv::impl::rowid_type = {SQL_KIND_ROWID, "ROWID", "dv_rowid", decode_, encode_};

constinit const sql_function_table dv::impl::rowid_functions = _functions;
