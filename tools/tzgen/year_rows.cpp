// Rows of years, from the pairs of histories (records.h).
//
// A time in UTC belongs to the first pair, newest first, that it is not before. A local time belongs to the
// first pair that it is not before in both its clocks: the new ones and, a second behind the end, the old
// ones. Local times need not fall along a history, since clocks that go back show some times twice; a pair
// that begins later than a newer one is never the first.

#include "year_rows.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <stdexcept>

namespace tzgen {

namespace {

using namespace dv::impl;

uint64_t word_(const dv_date_t &date) { return load_be64(&date.century); }

// Before all times of a year.
uint64_t begin_(int year) {
    dv_date_t date{};
    date.century = static_cast<uint8_t>(year / 100 + 100);
    date.year = static_cast<uint8_t>(year % 100 + 100);
    return word_(date);
}

// Between a date and the next second.
uint64_t behind_(const dv_date_t &date) { return word_(date) + 0x100; }

struct change_t {
    uint64_t begin, plain;
    zone_period_t period;
};
using changes_t = std::vector<change_t>;

enum class time_e { UTC, LOCAL };

// Minutes have the sign of the hour, as they are applied.
zone_period_t period_(const tz_info_t &entry, time_e time) {
    const int minute = std::abs(entry.utc_min);
    const int minutes = entry.utc_hour * 60 + (entry.utc_hour > 0 ? minute : -minute);
    return {clock_shift(time == time_e::UTC ? minutes : -minutes),
            {static_cast<uint8_t>(entry.utc_hour + 100), static_cast<uint8_t>(minute)},
            {}};
}

// Newest first, and the oldest period from the beginning of time.
changes_t changes_(const std::vector<tz_info_t> &history, time_e time) {
    changes_t changes;
    uint64_t least = UINT64_MAX;
    for (size_t i = 0; i + 1 < history.size(); i += 2) {
        const tz_info_t &later = history[i], &earlier = history[i + 1];
        const uint64_t begin = word_(time == time_e::UTC ? later.normal : later.local),
                       end = time == time_e::UTC ? begin : behind_(earlier.local);
        least = std::min({least, begin, end});
        changes.push_back({least, std::max(begin, end), period_(later, time)});
    }
    changes.push_back({0, 0, period_(history.back(), time)});
    return changes;
}

// Row 0: all times are in its first period, and none has one meaning.
constexpr zone_year_t _no_year = {{}, {UINT64_MAX}, {}};

// The row of a year; _no_year if it has more than two changes, or times without one meaning at its end.
zone_year_t row_(const changes_t &changes, int year) {
    const uint64_t first = begin_(year), end = begin_(year + 1);
    auto change = changes.begin();
    while (change->begin >= end) ++change;
    zone_year_t row{};
    for (size_t i = 0; i < std::size(row.periods); ++i) {
        if (change->plain >= end) return _no_year;
        row.plain[i] = change->plain < first ? 0 : word_in_year(change->plain);
        row.periods[i] = change->period;
        if (change->begin < first) continue;  // once more, from the year's beginning
        if (i == std::size(row.begin)) return _no_year;
        row.begin[i] = word_in_year(change->begin);
        ++change;
    }
    return row;
}

// Numbers of rows; equal rows have one number.
class row_numbers_t {
  public:
    explicit row_numbers_t(std::vector<zone_year_t> &rows) : rows_(rows) { (*this)(_no_year); }  // number 0

    uint16_t operator()(const zone_year_t &row) {
        const std::string bytes(reinterpret_cast<const char *>(&row), sizeof row);
        const auto [at, is_new] = numbers_.emplace(bytes, rows_.size());
        if (is_new) rows_.push_back(row);
        if (rows_.size() > UINT16_MAX) throw std::runtime_error("too many different years");
        return static_cast<uint16_t>(at->second);
    }

  private:
    std::vector<zone_year_t> &rows_;
    std::map<std::string, size_t> numbers_;
};

}  // namespace

year_rows_t make_year_rows(const std::vector<zone_t> &zones) {
    year_rows_t made;
    row_numbers_t number_of(made.rows);
    made.years.resize(ZONE_YEAR_COUNT);  // of what is no region
    for (size_t id = 0; id < zones.size(); ++id) {
        if (zones[id].same_as != id) {
            made.first_years.push_back(made.first_years[zones[id].same_as]);
            continue;
        }
        const size_t first_year = made.years.size();
        made.first_years.push_back(static_cast<uint32_t>(first_year));
        made.years.resize(first_year + ZONE_YEAR_COUNT);
        const changes_t by_utc = changes_(zones[id].history, time_e::UTC),
                        by_local = changes_(zones[id].history, time_e::LOCAL);
        for (int year = ZONE_YEAR_FIRST; year <= ZONE_YEAR_LAST; ++year) {
            made.years[first_year + static_cast<size_t>(zone_year_index(year))] = {
                number_of(row_(by_utc, year)), number_of(row_(by_local, year))};
        }
    }
    made.first_years.resize(size_t{ZONE_ID_PAGES} * 256);
    return made;
}

}  // namespace tzgen
