// Dates and timestamps from text in SQL: to_date, to_timestamp, to_timestamp_tz.
//
// Reading never asks the clock, so that what it gives may stand in indexes: where a model leaves the year or
// the month open, the caller gives a date to take them from. Without a model the text is one of ISO 8601.

#include <algorithm>
#include <initializer_list>

#include "dvtypes/column_datetime_text.h"
#include "dvtypes/iso.h"
#include "sql_column.h"
#include "sql_model.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// The types: reading with and without a model
// ---------------------------------------------------------------------------------------------------------

struct date_reader {
    using record = dv_date_t;
    static constexpr const char *name = "to_date",
                                *iso_line = "reads a text of ISO 8601, such as dv_text writes";
    static constexpr const sql_keeper *keeper = &date_model_keeper;
    static void read_iso(record &date, const sql_text &text) {
        dv_date_from_iso(&date, text.bytes, text.length);
    }
    static void read(record &date, const sql_text &text, const dt_fmt_ctx_t &model, const dv_date_t &as_of) {
        dv_date_from_str_as_of(&date, text.bytes, text.length, &model, &as_of);
    }
    static constexpr auto read_iso_column = dv_date_column_from_iso;
    static void read_column(const dv_column_t &texts, const dt_fmt_ctx_t &model, const dv_date_t &as_of,
                            dv_column_t &result, dv_column_faults_t &faults) {
        dv_date_column_from_str(&texts, &model, &as_of, &result, &faults);
    }
};

struct timestamp_reader {
    using record = dv_timestamp_t;
    static constexpr const char *name = "to_timestamp", *iso_line = date_reader::iso_line;
    static constexpr const sql_keeper *keeper = &timestamp_model_keeper;
    static void read_iso(record &ts, const sql_text &text) {
        dv_timestamp_from_iso(&ts, text.bytes, text.length);
    }
    static void read(record &ts, const sql_text &text, const dt_fmt_ctx_t &model, const dv_date_t &as_of) {
        dv_timestamp_from_str_as_of(&ts, text.bytes, text.length, &model, SQL_FRACTION_DIGITS, &as_of);
    }
    static constexpr auto read_iso_column = dv_timestamp_column_from_iso;
    static void read_column(const dv_column_t &texts, const dt_fmt_ctx_t &model, const dv_date_t &as_of,
                            dv_column_t &result, dv_column_faults_t &faults) {
        dv_timestamp_column_from_str(&texts, &model, SQL_FRACTION_DIGITS, &as_of, &result, &faults);
    }
};

struct ts_tz_reader {
    using record = dv_ts_tz_t;
    static constexpr const char
        *name = "to_timestamp_tz",
        *iso_line = "reads a text of ISO 8601, of +00:00 without a zone, or what dv_text writes";
    static constexpr const sql_keeper *keeper = &ts_tz_model_keeper;
    static void read_iso(record &ts_tz, const sql_text &text) {
        dv_ts_tz_from_iso(&ts_tz, text.bytes, text.length);
    }
    static void read(record &ts_tz, const sql_text &text, const dt_fmt_ctx_t &model, const dv_date_t &as_of) {
        dv_ts_tz_from_str_as_of(&ts_tz, text.bytes, text.length, &model, SQL_FRACTION_DIGITS, &SQL_UTC,
                                &as_of);
    }
    static constexpr auto read_iso_column = dv_ts_tz_column_from_iso;
    static void read_column(const dv_column_t &texts, const dt_fmt_ctx_t &model, const dv_date_t &as_of,
                            dv_column_t &result, dv_column_faults_t &faults) {
        dv_ts_tz_column_from_str(&texts, &model, SQL_FRACTION_DIGITS, &SQL_UTC, &as_of, &result, &faults);
    }
};

template <typename Reader>
void read_iso_(sql_call &call) {
    using record = typename Reader::record;
    Reader::read_iso(sql_record_of<record>(call.result), call.args[0].text);
    sql_return_datetime_in_place<record>(call);
}

template <typename Reader>
void read_iso_column_(sql_call &, const dv_column_t &texts, dv_column_t &result) {
    dv_column_faults_t faults{};
    Reader::read_iso_column(&texts, &result, &faults);
    sql_leave_datetimes_at_ends<typename Reader::record>(result);
}

// ---------------------------------------------------------------------------------------------------------
// What a model leaves open
// ---------------------------------------------------------------------------------------------------------

// What stands for the present where a call gives no date. Years of two digits lie in 2000 to 2099, or with RR
// in 1950 to 2049, of three in 2000 to 2999. The month is not seen; from the middle of the year a time zone
// does not move a day of the year into another one.
constexpr dv_date_t _middle_of_2000 = {120, 100, 7, 1, 0, 0, 0, 0};  // 2000-07-01

// The date that stands for the present: the last argument, unless that is a text.
const dv_date_t &as_of_(const sql_call &call) {
    const sql_value &last = call.args[call.argc - 1];
    switch (last.kind) {
        case SQL_KIND_DATE:
            return last.date;
        case SQL_KIND_TIMESTAMP:
            return sql_date_part(last.timestamp);
        default:
            return _middle_of_2000;
    }
}

// "the year and the month", "the year" or "the month" that the call would have to give, and does not; NULL
// when nothing is missing.
const char *missing_(const sql_call &call, const compiled_model &model) {
    if (&as_of_(call) != &_middle_of_2000) return nullptr;
    switch (model.open_fields) {
        case DT_FMT_UNIT_NONE:
            return nullptr;
        case DT_FMT_UNIT_YEAR:
            return "the year";
        case DT_FMT_UNIT_MONTH:
            return "the month";
        default:
            return "the year and the month";
    }
}

// Does the model leave open what nothing else in the call gives?
bool is_open_(const sql_call &call, const compiled_model &model) {
    return missing_(call, model) != nullptr || model.has_lone_abbreviation;
}

// Fails where it does.
void check_is_closed_(sql_call &call, const compiled_model &model) {
    const char *missing = missing_(call, model);
    if (missing != nullptr)
        return sql_fail(
            call,
            "the model %s leaves %s open; a DATE or TIMESTAMP as the last argument, such as sysdate(), gives "
            "what is missing",
            sql_quote(call.args[1].text).text, missing);
    if (model.has_lone_abbreviation)
        sql_fail(call, "the model %s has TZD without TZR: an abbreviation such as EDT names no zone",
                 sql_quote(call.args[1].text).text);
}

// ---------------------------------------------------------------------------------------------------------
// Reading under the model of the call
// ---------------------------------------------------------------------------------------------------------

// What the model leaves open is reported when the text has been read, so that an element that nobody can
// read, such as IYYY, is named first.
template <typename Reader>
void read_(sql_call &call) {
    const compiled_model &model = sql_model_of(call);
    using record = typename Reader::record;
    Reader::read(sql_record_of<record>(call.result), call.args[0].text, model.fmt_ctx, as_of_(call));
    sql_return_datetime_in_place<record>(call);
    check_is_closed_(call, model);
}

template <typename Reader>
void read_column_(sql_call &call, const dv_column_t &texts, dv_column_t &result) {
    const compiled_model &model = sql_model_of(call);
    if (is_open_(call, model)) return sql_leave_all_rows(result);
    dv_column_faults_t faults{};
    Reader::read_column(texts, model.fmt_ctx, as_of_(call), result, faults);
    sql_leave_datetimes_at_ends<typename Reader::record>(result);
}

constexpr sql_kind _text = SQL_KIND_TEXT;
constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;

template <typename Reader>
constexpr sql_kind _kind = sql_kind_of<typename Reader::record>;

// A row of one reader under a model of the call.
template <typename Reader>
constexpr sql_function under_model_(std::initializer_list<sql_kind> params, const char *param_names,
                                    const char *manual) {
    sql_function row{
        {Reader::name, {}, param_names, _kind<Reader>, manual}, read_<Reader>, SQL_IMMUTABLE, Reader::keeper};
    std::ranges::copy(params, row.signature.params);
    return sql_with_columns(row, read_column_<Reader>);
}

constexpr char _as_of[] = "v, model, as_of", _language_as_of[] = "v, model, language, as_of";
constexpr char _as_of_line[] = "the same; as_of gives the year and the month that the model leaves open",
               _language_as_of_line[] = "the same in a language; as_of gives what the model leaves open";

template <typename Reader>
constexpr sql_function _rows_of[] = {
    sql_with_columns({{Reader::name, {_text}, "v", _kind<Reader>, Reader::iso_line}, read_iso_<Reader>},
                     read_iso_column_<Reader>),
    {{Reader::name, {_kind<Reader>}, "v", _kind<Reader>, "the value itself"}, sql_return_argument},
    under_model_<Reader>({_text, _text}, "v, model", "reads text under a format model"),
    under_model_<Reader>({_text, _text, _text}, "v, model, language", "the same in a language"),
    under_model_<Reader>({_text, _text, _date}, _as_of, _as_of_line),
    under_model_<Reader>({_text, _text, _timestamp}, _as_of, _as_of_line),
    under_model_<Reader>({_text, _text, _text, _date}, _language_as_of, _language_as_of_line),
    under_model_<Reader>({_text, _text, _text, _timestamp}, _language_as_of, _language_as_of_line),
};

constexpr auto _rows = sql_join<_rows_of<ts_tz_reader>, _rows_of<timestamp_reader>, _rows_of<date_reader>>();
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_function_table dv::impl::datetime_read_functions = _functions;
