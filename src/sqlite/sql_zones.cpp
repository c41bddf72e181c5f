// Time zones as tables in SQL: the regions, and the changes of a region's clocks.
//
//     SELECT name, utc_offset FROM dv_zones WHERE abbreviation = 'JST'
//     SELECT dv_text(utc), offset_before, offset_after FROM dv_zone_transitions('Asia/Seoul')

#include <cstdlib>
#include <cstring>

#include "sql_datetime.h"
#include "sql_table.h"

using namespace dv::impl;

namespace {

void return_text_(sqlite3_context *context, const char *text) {
    sqlite3_result_text(context, text, -1, SQLITE_STATIC);
}

// ---------------------------------------------------------------------------------------------------------
// dv_zones
// ---------------------------------------------------------------------------------------------------------

enum zone_column { ZONE_NAME, ZONE_NUMBER, ZONE_OFFSET, ZONE_ABBREVIATION, ZONE_ENTRIES };

int begin_zones_(sqlite3_value *, sql_rows &walk, char *&) {
    walk = {region_tab_, TZ_ID_MAX};
    return SQLITE_OK;
}

void zone_column_(sqlite3_context *context, const void *, int row, int column) {
    const tz_region_t &region = region_tab_[row];
    switch (column) {
        case ZONE_NAME:
            return return_text_(context, region.canon_name);
        case ZONE_NUMBER:
            return sqlite3_result_int(context, region.id);
        case ZONE_OFFSET:
            return sql_return_utc_offset(context, info_at(region, sql_utc_now()));
        case ZONE_ABBREVIATION:
            return return_text_(context, info_at(region, sql_utc_now()).abbrev);
        default:
            return sqlite3_result_int(context, region.info_cnt);
    }
}

// ---------------------------------------------------------------------------------------------------------
// dv_zone_transitions(zone)
// ---------------------------------------------------------------------------------------------------------

enum transition_column {
    TRANSITION_UTC,
    TRANSITION_OFFSET_BEFORE,
    TRANSITION_ABBREVIATION_BEFORE,
    TRANSITION_OFFSET_AFTER,
    TRANSITION_ABBREVIATION_AFTER,
    TRANSITION_ZONE
};

// No rows for SQL NULL, as for functions.
int begin_transitions_(sqlite3_value *argument, sql_rows &walk, char *&fault) {
    if (sqlite3_value_type(argument) == SQLITE_NULL) return SQLITE_OK;
    const auto *name = reinterpret_cast<const char *>(sqlite3_value_text(argument));
    if (name == nullptr) return SQLITE_NOMEM;
    const bool is_whole = strlen(name) == static_cast<size_t>(sqlite3_value_bytes(argument));
    const tz_region_t *region = is_whole && *name != '\0' ? zonetab_search_region(name) : nullptr;
    if (region == nullptr) {
        fault = sqlite3_mprintf("dv_zone_transitions: there is no region \"%s\"", name);
        return SQLITE_ERROR;
    }
    walk = {region, region->info_cnt / 2};
    return SQLITE_OK;
}

// The entries of a transition. Oldest first; the table has the newest first, the period that begins before
// the one that ends.
const tz_info_t *transition_(const void *subject, int row) {
    const auto &region = *static_cast<const tz_region_t *>(subject);
    return region.infos + region.info_cnt - 2 * (row + 1);
}

// The history also has an entry where the daylight flag alone changes, or the seconds of the offset.
bool changes_clocks_(const void *subject, int row) {
    const tz_info_t *const pair = transition_(subject, row);
    return pair[0].utc_hour != pair[1].utc_hour || pair[0].utc_min != pair[1].utc_min ||
           strcmp(pair[0].abbrev, pair[1].abbrev) != 0;
}

void return_instant_(sqlite3_context *context, const dv_date_t &utc) {
    sql_value value{};
    value.kind = SQL_KIND_TIMESTAMP;
    date_part(value.timestamp) = utc;
    sql_return(context, value);
}

void transition_column_(sqlite3_context *context, const void *subject, int row, int column) {
    const tz_info_t *const pair = transition_(subject, row);
    switch (column) {
        case TRANSITION_UTC:
            return return_instant_(context, pair[0].normal);
        case TRANSITION_OFFSET_BEFORE:
            return sql_return_utc_offset(context, pair[1]);
        case TRANSITION_ABBREVIATION_BEFORE:
            return return_text_(context, pair[1].abbrev);
        case TRANSITION_OFFSET_AFTER:
            return sql_return_utc_offset(context, pair[0]);
        default:
            return return_text_(context, pair[0].abbrev);
    }
}

}  // namespace

void dv::impl::sql_return_utc_offset(sqlite3_context *context, const tz_info_t &info) {
    char text[sizeof "+00:00"];
    char *end = text;
    *end++ = info.utc_hour < 0 || info.utc_min < 0 ? '-' : '+';
    end = sql_put_digits(end, std::abs(info.utc_hour), 2);
    *end++ = ':';
    end = sql_put_digits(end, std::abs(info.utc_min), 2);
    sqlite3_result_text(context, text, static_cast<int>(end - text), SQLITE_TRANSIENT);
}

constinit const sql_table dv::impl::zones_table = {
    "dv_zones",
    "CREATE TABLE x(name TEXT, number INTEGER, utc_offset TEXT, abbreviation TEXT, entries INTEGER)",
    /*param_column=*/-1,
    begin_zones_,
    zone_column_,
};

constinit const sql_table dv::impl::zone_transitions_table = {
    "dv_zone_transitions",
    "CREATE TABLE x(utc TIMESTAMP, offset_before TEXT, abbreviation_before TEXT, offset_after TEXT,"
    " abbreviation_after TEXT, zone TEXT HIDDEN)",
    TRANSITION_ZONE,
    begin_transitions_,
    transition_column_,
    changes_clocks_,
};
