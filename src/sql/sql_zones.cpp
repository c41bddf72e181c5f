// Time zones as tables in SQL: the regions, and the changes of a region's clocks.
//
//     SELECT name, utc_offset FROM dv_zones WHERE abbreviation = 'JST'
//     SELECT dv_text(utc), offset_before, offset_after FROM dv_zone_transitions('Asia/Seoul')

#include <cstdlib>
#include <cstring>
#include <iterator>

#include "sql_datetime.h"
#include "sql_region.h"

using namespace dv::impl;

namespace {

// "+09:00"
char *put_offset_(char *out, bool is_west, int hour, int minute) {
    *out++ = is_west ? '-' : '+';
    out = sql_put_digits(out, hour, 2);
    *out++ = ':';
    return sql_put_digits(out, minute, 2);
}

// ---------------------------------------------------------------------------------------------------------
// dv_zones
// ---------------------------------------------------------------------------------------------------------

enum zone_column { ZONE_NAME, ZONE_NUMBER, ZONE_OFFSET, ZONE_ABBREVIATION, ZONE_ENTRIES };
constexpr sql_column _zone_columns[] = {
    {"name", SQL_KIND_TEXT},         {"number", SQL_KIND_INTEGER},  {"utc_offset", SQL_KIND_TEXT},
    {"abbreviation", SQL_KIND_TEXT}, {"entries", SQL_KIND_INTEGER},
};
static_assert(std::size(_zone_columns) == ZONE_ENTRIES + 1);

void begin_zones_(sql_call &, sql_rows &walk) { walk.rows = TZ_ID_MAX; }

const tz_info_t &info_now_(const tz_region_t &region) {
    const dv_date_t now = sql_utc_now();
    return *zonetab_get_info(&region, &now);
}

void zone_field_(sql_call &call, const sql_rows &, int64_t row, int column) {
    const tz_region_t &region = region_tab_[row];
    switch (column) {
        case ZONE_NAME:
            return sql_return_text(call, region.canon_name);
        case ZONE_NUMBER:
            return sql_return(call, sql_integer(region.id));
        case ZONE_OFFSET:
            return sql_return_utc_offset(call, info_now_(region));
        case ZONE_ABBREVIATION:
            return sql_return_text(call, info_now_(region).abbrev);
        default:
            return sql_return(call, sql_integer(region.info_cnt));
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
    TRANSITION_ABBREVIATION_AFTER
};
constexpr sql_column _transition_columns[] = {
    {"utc", SQL_KIND_TIMESTAMP},
    {"offset_before", SQL_KIND_TEXT},
    {"abbreviation_before", SQL_KIND_TEXT},
    {"offset_after", SQL_KIND_TEXT},
    {"abbreviation_after", SQL_KIND_TEXT},
};
static_assert(std::size(_transition_columns) == TRANSITION_ABBREVIATION_AFTER + 1);

// NULL: there is none.
const tz_region_t *region_of_(const sql_text &text) {
    char name[TZ_NAME_TEXT_SIZE];
    if (text.length == 0 || text.length > TZ_NAME_MAX) return nullptr;
    memcpy(name, text.bytes, static_cast<size_t>(text.length));
    name[text.length] = '\0';
    return zonetab_search_region(name);
}

void fail_without_region_(sql_call &call, const sql_text &name) {
    sql_text_list near;
    sql_append_near_regions(near, {name.bytes, static_cast<size_t>(name.length)});
    sql_fail(call, "there is no region %s%s%s", sql_quote(name).text, near.length() > 0 ? "." : "",
             near.text());
}

void begin_transitions_(sql_call &call, sql_rows &walk) {
    const sql_text &name = call.args[0].text;
    const tz_region_t *region = region_of_(name);
    if (region != nullptr) {
        walk.subject = region;
        walk.rows = region->info_cnt / 2;
    } else {
        fail_without_region_(call, name);
    }
}

// The entries of a transition. Oldest first; the table has the newest first, the period that begins before
// the one that ends.
const tz_info_t *transition_(const sql_rows &walk, int64_t row) {
    const auto &region = *static_cast<const tz_region_t *>(walk.subject);
    return region.infos + region.info_cnt - 2 * (row + 1);
}

// The history also has an entry where the daylight flag alone changes, or the seconds of the offset.
bool changes_clocks_(const sql_rows &walk, int64_t row) {
    const tz_info_t *const pair = transition_(walk, row);
    return pair[0].utc_hour != pair[1].utc_hour || pair[0].utc_min != pair[1].utc_min ||
           strcmp(pair[0].abbrev, pair[1].abbrev) != 0;
}

void return_instant_(sql_call &call, const dv_date_t &utc) {
    sql_value value{};
    value.kind = SQL_KIND_TIMESTAMP;
    sql_date_part(value.timestamp) = utc;
    sql_return(call, value);
}

void transition_field_(sql_call &call, const sql_rows &walk, int64_t row, int column) {
    const tz_info_t *const pair = transition_(walk, row);
    switch (column) {
        case TRANSITION_UTC:
            return return_instant_(call, pair[0].normal);
        case TRANSITION_OFFSET_BEFORE:
            return sql_return_utc_offset(call, pair[1]);
        case TRANSITION_ABBREVIATION_BEFORE:
            return sql_return_text(call, pair[1].abbrev);
        case TRANSITION_OFFSET_AFTER:
            return sql_return_utc_offset(call, pair[0]);
        default:
            return sql_return_text(call, pair[0].abbrev);
    }
}

}  // namespace

char *dv::impl::sql_put_utc_offset(char *out, const tz_info_t &info) {
    const bool is_west = info.utc_hour < 0 || info.utc_min < 0;
    return put_offset_(out, is_west, std::abs(info.utc_hour), std::abs(info.utc_min));
}

char *dv::impl::sql_put_utc_offset(char *out, const timezone_t &zone) {
    const int hour = timezone_get_field(&zone, TZ_FLD_UTC_HOUR), minute = zone.utc_min;
    return put_offset_(out, hour < 0 || (hour == 0 && minute > 0), std::abs(hour), minute);
}

void dv::impl::sql_return_utc_offset(sql_call &call, const tz_info_t &info) {
    sql_return_room(call, sql_put_utc_offset(call.room, info));
}

constinit const sql_table dv::impl::zones_table = {
    {"dv_zones", {}, "", SQL_KIND_NONE, "the regions, with the offset and the abbreviation in force now"},
    _zone_columns,
    begin_zones_,
    zone_field_,
};

constinit const sql_table dv::impl::zone_transitions_table = {
    {"dv_zone_transitions", {SQL_KIND_TEXT}, "zone", SQL_KIND_NONE, "the changes of a region's clocks"},
    _transition_columns,
    begin_transitions_,
    transition_field_,
    changes_clocks_,
};
