// Finding the gap of a call, or what its offset contradicts: the region is one that its arguments name, and
// the local time what the call gives when it is made again in a zone whose clocks never change.

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

// A call that raised: its region, the local time in it, and the UTC offset that stands behind the region.
struct local_call {
    const tz_region_t *region;  // NULL: it names none, or its text is too long
    std::string_view offset;    // empty: none
    dv_date_t local;
};

std::string_view offset_of_(std::string_view behind_region) {
    const size_t begin = std::min(behind_region.find_first_not_of(' '), behind_region.size());
    const std::string_view offset = behind_region.substr(begin);
    return offset.starts_with('+') || offset.starts_with('-') ? offset : std::string_view{};
}

// Makes the call one in a zone without changes, and without an offset.
local_call make_steady_(sql_call &call, char (&text)[_text_size]) {
    for (int i = 0; i < call.argc; ++i) {
        sql_value &value = call.args[i];
        if (value.kind == SQL_KIND_TS_TZ && sql_zone_number(value.ts_tz.tz) < TZ_ID_MAX) {
            const tz_region_t *region = &region_tab_[sql_zone_number(value.ts_tz.tz)];
            dv_timestamp_from_ts_tz(&value.ts_tz.utc, &value.ts_tz);
            value.ts_tz.tz = SQL_UTC;
            return {region, {}, {}};
        }
        if (value.kind != SQL_KIND_TEXT) continue;
        const std::string_view whole(value.text.bytes, static_cast<size_t>(value.text.length));
        const named_region found = sql_find_region(whole);
        if (found.region == nullptr || whole.size() + _steady.size() >= _text_size) continue;
        std::string_view behind(found.name.data() + found.name.size(), whole.data() + whole.size());
        const std::string_view offset = offset_of_(behind);
        if (!offset.empty()) behind = {};
        char *end = std::copy(whole.data(), found.name.data(), text);
        end = std::ranges::copy(_steady, end).out;
        end = std::ranges::copy(behind, end).out;
        *end = '\0';
        value.text = {text, static_cast<int>(end - text)};
        return {found.region, offset, {}};
    }
    return {};
}

local_call find_local_(const sql_call &call, const sql_function &row) {
    sql_call steady = call;
    char changed[_text_size];
    local_call found = make_steady_(steady, changed);
    if (found.region == nullptr) return {};
    dv_error_t error;
    steady.outcome = SQL_GIVEN;
    steady.block = nullptr;
    if (sql_run(row, steady, error) != 0 || steady.result.kind != SQL_KIND_TS_TZ) return {};
    found.local = sql_date_part(steady.result.ts_tz);
    return found;
}

void append_gap_(sql_text_list &text, const tz_region_t &region, const sql_gap &gap) {
    char begin[DV_ISO_DATE_SIZE], end[DV_ISO_DATE_SIZE];
    dv_date_to_iso(&gap.begin, begin, sizeof begin);
    dv_date_to_iso(&gap.end, end, sizeof end);
    const char *const pieces[] = {
        " In ", region.canon_name, " clocks were set forward from ", begin, " to ", end, "."};
    for (const char *piece : pieces) text.append(piece);
}

// The offsets at which a region's clocks showed a local time, the later first. The entries are pairs, the new
// period's first; what is before the first change is the older one of the last pair.
void append_offsets_(sql_text_list &text, const tz_region_t &region, const dv_date_t &local) {
    const char *separator = "";
    for (int i = 0; i <= region.info_cnt / 2; ++i) {
        const tz_info_t *const begin = 2 * i < region.info_cnt ? &region.infos[2 * i] : nullptr;
        const tz_info_t *const end = i > 0 ? &region.infos[2 * i - 1] : nullptr;
        if (begin != nullptr && region.info_cnt > 1 && dv_date_compare(&local, &begin->local) < 0) continue;
        if (end != nullptr && dv_date_compare(&local, &end->local) > 0) continue;
        char offset[sizeof "+00:00"];
        *sql_put_utc_offset(offset, begin != nullptr ? *begin : *end) = '\0';
        text.append(separator);
        text.append(offset);
        separator = " or ";
    }
}

}  // namespace

sql_gap dv::impl::sql_find_gap(const tz_region_t &region, const dv_date_t &local) {
    const auto high = static_cast<uint8_t>(region.id >> 8), low = static_cast<uint8_t>(region.id);
    const timezone_t zone = {SQL_UTC.utc_hour, 0, 0, {high, low}};
    tz_local_times_t times;
    timezone_get_local_times(&zone, &local, &times);
    return {times.count == 0, times.begin, times.end};
}

void dv::impl::sql_append_gap(sql_text_list &text, const sql_call &call, const sql_function &row) {
    const local_call found = find_local_(call, row);
    if (found.region == nullptr) return;
    const sql_gap gap = sql_find_gap(*found.region, found.local);
    if (gap.is_found) append_gap_(text, *found.region, gap);
}

bool dv::impl::sql_append_contradiction(sql_text_list &text, const sql_call &call, const sql_function &row) {
    const local_call found = find_local_(call, row);
    if (found.region == nullptr || found.offset.empty()) return false;
    if (sql_find_gap(*found.region, found.local).is_found) return false;
    const std::string_view pieces[] = {"The UTC offset ", found.offset, " is not in force in ",
                                       found.region->canon_name, " at that local time, but "};
    for (const std::string_view piece : pieces) text.append(piece);
    append_offsets_(text, *found.region, found.local);
    text.append(".");
    return true;
}
