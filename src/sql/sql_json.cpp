// dv_json: a value as a JSON scalar (RFC 8259).
//
// Numbers are numbers with all their digits, datetimes strings of ISO 8601, without zeros behind the last
// digit of a fraction, and with the UTC offset in place of a region; intervals and row identifiers strings as
// dv_text writes them.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "dvtypes/erowid.h"
#include "dvtypes/iso.h"
#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------------------

// JSON has a digit in front of a point.
char *put_number_(char *out, const number_t &number) {
    char text[NUMBER_SCIENTIFIC_TEXT_SIZE];
    number_to_str(&number, sizeof text, text, nullptr);
    const char *from = text;
    if (*from == '-') *out++ = *from++;
    if (*from == '.') *out++ = '0';
    return std::copy(from, from + strlen(from), out);
}

// With as many digits as it takes to read the same REAL back, a point or an exponent.
char *put_real_(char *out, double real) {
    constexpr int size = 32, digits_min = 15, digits_max = 17;
    for (int digits = digits_min; digits <= digits_max; ++digits) {
        snprintf(out, size, "%.*g", digits, real);
        if (strtod(out, nullptr) == real) break;
    }
    char *const end = out + strlen(out);
    const auto is_of_point = [](char c) { return (c < '0' || c > '9') && c != '-' && c != '+' && c != 'e'; };
    std::replace_if(out, end, is_of_point, '.');  // of another locale
    const bool is_whole = std::none_of(out, end, [](char c) { return c == '.' || c == 'e'; });
    return is_whole ? std::copy_n(".0", 2, end) : end;
}

// ---------------------------------------------------------------------------------------------------------
// Strings
// ---------------------------------------------------------------------------------------------------------

constexpr int _escaped_max = 6;  // bytes of a character: \u001f

char *put_character_(char *out, char c) {
    constexpr char hex[] = "0123456789abcdef";
    if (c == '"' || c == '\\') *out++ = '\\';
    if (static_cast<unsigned char>(c) >= ' ') {
        *out++ = c;
        return out;
    }
    out = std::copy_n("\\u00", 4, out);
    *out++ = hex[c >> 4];
    *out++ = hex[c & 15];
    return out;
}

void return_string_(sql_call &call, const sql_text &text) {
    const int64_t size = int64_t{_escaped_max} * text.length + 2;
    if (size > INT32_MAX) {
        call.outcome = SQL_TOO_LONG;
        return;
    }
    char *begin = call.room;
    if (size > SQL_ROOM_SIZE) {
        call.block = sql_resize(call.memory, nullptr, static_cast<size_t>(size));
        begin = static_cast<char *>(call.block);
    }
    char *end = begin;
    *end++ = '"';
    for (int i = 0; i < text.length; ++i) end = put_character_(end, text.bytes[i]);
    *end++ = '"';
    sql_return(call, sql_text_value(begin, static_cast<int>(end - begin)));
}

// ---------------------------------------------------------------------------------------------------------
// Datetimes
// ---------------------------------------------------------------------------------------------------------

// Takes the zeros at the end of a fraction off, and its point.
char *trim_fraction_(char *end) {
    while (end[-1] == '0') --end;
    return end[-1] == '.' ? end - 1 : end;
}

char *put_date_(char *out, const dv_date_t &date) {
    char *const end = out + dv_date_to_iso(&date, out, DV_ISO_DATE_SIZE);
    std::replace(out, end, ' ', 'T');
    return end;
}

char *put_timestamp_(char *out, const dv_timestamp_t &ts) {
    char *const end = out + dv_timestamp_to_iso(&ts, out, DV_ISO_TIMESTAMP_SIZE);
    std::replace(out, end, ' ', 'T');
    return trim_fraction_(end);
}

char *put_ts_tz_(char *out, const dv_ts_tz_t &ts_tz) {
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &ts_tz);
    out = put_timestamp_(out, local);
    const int zone = sql_zone_number(ts_tz.tz);
    if (zone < TZ_ID_MAX)
        return sql_put_utc_offset(out, *zonetab_get_info(&region_tab_[zone], &sql_date_part(ts_tz)));
    return sql_put_utc_offset(out, ts_tz.tz);
}

char *put_time_(char *out, const dv_time_t &time) {
    return trim_fraction_(out + dv_time_to_iso(&time, out, DV_ISO_TIME_SIZE));
}

char *put_interval_(char *out, const sql_value &value) {
    if (value.kind == SQL_KIND_ITV_YTM) {
        dv_itv_ytm_to_str(&value.ytm, out, /*prec=*/2, DV_ITV_YTM_TEXT_SIZE);
    } else {
        dv_itv_dts_to_str(&value.dts, out, /*prec=*/2, SQL_FRACTION_DIGITS, DV_ITV_DTS_TEXT_SIZE);
    }
    return out + strlen(out);
}

char *put_rowid_(char *out, const rowid_t &rowid) {
    erowid_t erowid;
    erowid_new(&erowid, rowid.sgmt, rowid.file, rowid.block, rowid.row);
    return std::copy_n(erowid.text, sizeof erowid.text, out);
}

// What stands between the quotes.
char *put_quoted_(char *out, const sql_value &value) {
    switch (value.kind) {
        case SQL_KIND_DATE:
            return put_date_(out, value.date);
        case SQL_KIND_TIME:
            return put_time_(out, value.time);
        case SQL_KIND_TIMESTAMP:
            return put_timestamp_(out, value.timestamp);
        case SQL_KIND_TS_TZ:
            return put_ts_tz_(out, value.ts_tz);
        case SQL_KIND_ROWID:
            return put_rowid_(out, value.rowid);
        default:
            return put_interval_(out, value);
    }
}

void to_json_(sql_call &call) {
    const sql_value &value = call.args[0];
    char *const out = call.room;
    switch (value.kind) {
        case SQL_KIND_NULL:
            return sql_return_text(call, "null");
        case SQL_KIND_INTEGER:
            return sql_return_room(
                call, out + snprintf(out, SQL_ROOM_SIZE, "%lld", static_cast<long long>(value.integer)));
        case SQL_KIND_REAL:
            if (!std::isfinite(value.real)) return sql_fail(call, "JSON has no infinite number");
            return sql_return_room(call, put_real_(out, value.real));
        case SQL_KIND_TEXT:
            return return_string_(call, value.text);
        case SQL_KIND_BLOB:
            return sql_fail(call, "argument 1 is a BLOB that holds no value: %s", value.blob.fault);
        case SQL_KIND_NUMBER:
            return sql_return_room(call, put_number_(out, value.number));
        default:
            break;
    }
    *out = '"';
    char *const end = put_quoted_(out + 1, value);
    *end = '"';
    sql_return_room(call, end + 1);
}

constexpr sql_function _functions[] = {
    {{"dv_json", {SQL_KIND_ANY}, "v", SQL_KIND_TEXT, "as a JSON scalar; SQL NULL is null"},
     to_json_,
     SQL_IMMUTABLE,
     /*keeper=*/nullptr,
     /*other_result=*/SQL_KIND_NONE,
     /*is_try=*/false,
     /*is_json=*/true},
};

}  // namespace

constinit const sql_function_table dv::impl::json_functions = _functions;
