// Finding the gap of a call: the region is one that its arguments name, and the local time what the call
// gives when it is made again in a zone whose clocks never change.

#include "sql_gap.h"

#include <algorithm>
#include <string_view>

#include "dvtypes/iso.h"
#include "sql_datetime.h"
#include "sql_region.h"
#include "sql_run.h"

using namespace dv::impl;

namespace {

constexpr std::string_view _steady = "Etc/UTC";
constexpr int _text_size = 512;

// The call in a zone without changes. NULL: it names no region, or its text is too long.
const tz_region_t *make_steady_(sql_call &call, char (&text)[_text_size]) {
    for (int i = 0; i < call.argc; ++i) {
        sql_value &value = call.args[i];
        if (value.kind == SQL_KIND_TS_TZ && sql_zone_number(value.ts_tz.tz) < TZ_ID_MAX) {
            const tz_region_t *region = &region_tab_[sql_zone_number(value.ts_tz.tz)];
            dv_timestamp_from_ts_tz(&value.ts_tz.utc, &value.ts_tz);
            value.ts_tz.tz = SQL_UTC;
            return region;
        }
        if (value.kind != SQL_KIND_TEXT) continue;
        const std::string_view whole(value.text.bytes, static_cast<size_t>(value.text.length));
        const named_region found = sql_find_region(whole);
        const size_t length = whole.size() - found.name.size() + _steady.size();
        if (found.region == nullptr || length >= _text_size) continue;
        char *end = std::copy(whole.data(), found.name.data(), text);
        end = std::ranges::copy(_steady, end).out;
        end = std::copy(found.name.data() + found.name.size(), whole.data() + whole.size(), end);
        *end = '\0';
        value.text = {text, static_cast<int>(length)};
        return found.region;
    }
    return nullptr;
}

void append_gap_(sql_text_list &text, const tz_region_t &region, const sql_gap &gap) {
    char begin[DV_ISO_DATE_SIZE], end[DV_ISO_DATE_SIZE];
    dv_date_to_iso(&gap.begin, begin, sizeof begin);
    dv_date_to_iso(&gap.end, end, sizeof end);
    const char *const pieces[] = {
        " In ", region.canon_name, " clocks were set forward from ", begin, " to ", end, "."};
    for (const char *piece : pieces) text.append(piece);
}

}  // namespace

// The entries are pairs, the new period's first.
sql_gap dv::impl::sql_find_gap(const tz_region_t &region, const dv_date_t &local) {
    for (int i = 0; i + 1 < region.info_cnt; i += 2) {
        const dv_date_t &end = region.infos[i].local;
        dv_date_t begin = region.infos[i + 1].local;  // the last second before
        if (dv_date_compare(&local, &begin) <= 0 || dv_date_compare(&local, &end) >= 0) continue;
        dv_date_add_field(&begin, DT_FMT_UNIT_SECOND, 1);
        return {true, begin, end};
    }
    return {};
}

void dv::impl::sql_append_gap(sql_text_list &text, const sql_call &call, const sql_function &row) {
    sql_call steady = call;
    char changed[_text_size];
    const tz_region_t *region = make_steady_(steady, changed);
    if (region == nullptr) return;
    dv_error_t error;
    steady.outcome = SQL_GIVEN;
    steady.block = nullptr;
    if (sql_run(row, steady, error) != 0 || steady.result.kind != SQL_KIND_TS_TZ) return;
    const sql_gap gap = sql_find_gap(*region, sql_date_part(steady.result.ts_tz));
    if (gap.is_found) append_gap_(text, *region, gap);
}
