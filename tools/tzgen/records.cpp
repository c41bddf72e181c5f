// Timelines as records. Every date lies in the Gregorian calendar, so the C++ library's calendar is that of
// dv_date_t.

#include "records.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>

namespace tzgen {

namespace {

using namespace std::chrono;

constexpr int _excess = 100;

constexpr dv_date_t _long_ago = {_excess - 99, _excess - 99, 1, 1, 0, 0, 0, 0};  // -9999-01-01

struct civil_t {
    sys_days day;
    year_month_day ymd;
    hh_mm_ss<seconds> time;
};

civil_t civil_(instant_t at) {
    const sys_seconds t{seconds{at}};
    const auto day = floor<days>(t);
    return {day, year_month_day{day}, hh_mm_ss<seconds>{t - day}};
}

dv_date_t date_(instant_t at) {
    const civil_t c = civil_(at);
    const int y = static_cast<int>(c.ymd.year());
    if (y < 1583 || y > 9999) throw std::runtime_error("a change in the year " + std::to_string(y));
    const auto byte = [](auto value) { return static_cast<uint8_t>(value); };
    return {byte(y / 100 + _excess),
            byte(y % 100 + _excess),
            byte(static_cast<unsigned>(c.ymd.month())),
            byte(static_cast<unsigned>(c.ymd.day())),
            byte(c.time.hours().count()),
            byte(c.time.minutes().count()),
            byte(c.time.seconds().count()),
            0};
}

void set_abbrev_(char (&dst)[TZ_ABBREV_TEXT_SIZE], const std::string &abbrev) {
    std::memcpy(dst, abbrev.data(), std::min(abbrev.size(), sizeof dst - 1));
}

tz_info_t entry_(const local_time_t &local_time) {
    tz_info_t entry{};
    const int offset = local_time.offset;  // division keeps its sign in each field
    entry.utc_hour = static_cast<int8_t>(offset / 3600);
    entry.utc_min = static_cast<int8_t>(offset / 60 % 60);
    entry.utc_sec = static_cast<int8_t>(offset % 60);
    set_abbrev_(entry.abbrev, local_time.abbrev);
    return entry;
}

tz_info_t entry_at_(const local_time_t &local_time, instant_t at) {
    tz_info_t entry = entry_(local_time);
    entry.normal = date_(at);
    entry.local = date_(at + local_time.offset);
    return entry;
}

tz_smpl_tm_t sample_at_(const timeline_t &timeline, instant_t at) {
    const local_time_t &local_time = period_at(timeline, at).local_time;
    const civil_t c = civil_(at + local_time.offset);
    tz_smpl_tm_t sample{};
    sample.tm_sec = static_cast<int32_t>(c.time.seconds().count());
    sample.tm_min = static_cast<int32_t>(c.time.minutes().count());
    sample.tm_hour = static_cast<int32_t>(c.time.hours().count());
    sample.tm_mday = static_cast<int32_t>(static_cast<unsigned>(c.ymd.day()));
    sample.tm_mon = static_cast<int32_t>(static_cast<unsigned>(c.ymd.month())) - 1;
    sample.tm_year = static_cast<int>(c.ymd.year()) - 1900;
    sample.tm_wday = static_cast<int32_t>(weekday{c.day}.c_encoding());
    sample.tm_yday = static_cast<int32_t>((c.day - sys_days{c.ymd.year() / 1 / 1}).count());
    sample.tm_isdst = local_time.is_dst ? 1 : 0;
    set_abbrev_(sample.abbrev, local_time.abbrev);
    return sample;
}

}  // namespace

std::vector<tz_info_t> make_history(const timeline_t &timeline) {
    std::vector<tz_info_t> history;
    for (size_t i = timeline.size() - 1; i > 0; --i) {
        history.push_back(entry_at_(timeline[i].local_time, timeline[i].begin));
        history.push_back(entry_at_(timeline[i - 1].local_time, timeline[i].begin - 1));
    }
    if (history.empty()) {
        history.push_back(entry_(timeline[0].local_time));
        history[0].normal = history[0].local = _long_ago;
    }
    return history;
}

tz_sample_t make_sample(tz_id_t id, const timeline_t &timeline) {
    tz_sample_t sample{};
    sample.id = id;
    for (int j = 0; j < TZ_SAMPLE_COUNT; ++j) {
        sample.stms[j] = sample_at_(timeline, TZ_SAMPLE_NEWEST - instant_t{j} * TZ_SAMPLE_STEP);
    }
    return sample;
}

}  // namespace tzgen
