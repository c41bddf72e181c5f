// TZ strings: "EST5EDT,M3.2.0,M11.1.0". Offsets are positive west of Greenwich; a day is "Mm.w.d" (weekday d
// of week w of month m, 5 for the last), "Jn" (day n of 1..365 that is never February 29) or "n" (0..365);
// its time of day is wall time and may lie up to a week away.

#include "posix_rule.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <iterator>
#include <stdexcept>

namespace tzgen {

namespace {

using namespace std::chrono;

constexpr int _day_seconds = 86400;
constexpr int _hour_seconds = 3600;

struct change_t {
    char form;  // 'M', 'J' or 'n'
    int month, week, day;
    int time;  // seconds of wall time from the day's midnight
};

struct rule_t {
    local_time_t standard;
    local_time_t daylight;
    bool has_daylight;
    change_t to_daylight, to_standard;
};

class rule_reader_t {
  public:
    explicit rule_reader_t(std::string_view text) : rest_(text) {}

    rule_t read() {
        rule_t rule{};
        rule.standard.abbrev = abbrev();
        rule.standard.offset = -time();
        rule.has_daylight = !rest_.empty();
        if (!rule.has_daylight) return rule;
        rule.daylight = {rule.standard.offset + _hour_seconds, /*is_dst=*/true, abbrev()};
        if (!begins_with(',')) rule.daylight.offset = -time();
        rule.to_daylight = change();
        rule.to_standard = change();
        if (!rest_.empty()) fail();
        return rule;
    }

  private:
    [[noreturn]] void fail() const {
        throw std::runtime_error("unreadable end of rule: " + std::string(rest_));
    }
    bool begins_with(char c) const { return !rest_.empty() && rest_[0] == c; }
    bool take_if(char c) {
        const bool is_there = begins_with(c);
        if (is_there) rest_.remove_prefix(1);
        return is_there;
    }
    void take(char c) {
        if (!take_if(c)) fail();
    }
    int number() {
        int value = 0;
        const auto [end, code] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (code != std::errc{}) fail();
        rest_.remove_prefix(static_cast<size_t>(end - rest_.data()));
        return value;
    }
    std::string abbrev() {
        const bool is_quoted = take_if('<');
        size_t length = rest_.find_first_of(is_quoted ? ">" : "+-,0123456789");
        if (length == std::string_view::npos || length == 0) fail();
        std::string name(rest_.substr(0, length));
        rest_.remove_prefix(length + (is_quoted ? 1 : 0));
        return name;
    }
    // [+-]hours[:minutes[:seconds]] in seconds
    int time() {
        const int sign = take_if('-') ? -1 : 1;
        take_if('+');
        int seconds = number() * _hour_seconds;
        if (take_if(':')) seconds += number() * 60;
        if (take_if(':')) seconds += number();
        return sign * seconds;
    }
    change_t change() {
        change_t result{'n', 0, 0, 0, 2 * _hour_seconds};
        take(',');
        if (take_if('M')) {
            result.form = 'M';
            result.month = number();
            take('.');
            result.week = number();
            take('.');
        } else if (take_if('J')) {
            result.form = 'J';
        }
        result.day = number();
        if (take_if('/')) result.time = time();
        return result;
    }

    std::string_view rest_;
};

sys_days day_of_(const change_t &change, year y) {
    const sys_days new_year = y / 1 / 1;
    if (change.form == 'n') return new_year + days{change.day};
    if (change.form == 'J') return new_year + days{change.day - 1 + (y.is_leap() && change.day > 59 ? 1 : 0)};
    const weekday day{static_cast<unsigned>(change.day)};
    const month m{static_cast<unsigned>(change.month)};
    if (change.week == 5) return y / m / day[last];
    return y / m / day[static_cast<unsigned>(change.week)];
}

// The offset is that of the wall time that ends.
instant_t instant_of_(const change_t &change, year y, int offset) {
    return instant_t{day_of_(change, y).time_since_epoch().count()} * _day_seconds + change.time - offset;
}

// Daylight time that ends as that of the next year begins never ends: the end comes first.
void append_year_(timeline_t &periods, const rule_t &rule, year y) {
    const instant_t to_daylight = instant_of_(rule.to_daylight, y, rule.standard.offset);
    const instant_t to_standard = instant_of_(rule.to_standard, y, rule.daylight.offset);
    period_t changes[] = {{to_standard, rule.standard}, {to_daylight, rule.daylight}};
    if (to_daylight < to_standard) std::swap(changes[0], changes[1]);
    periods.insert(periods.end(), std::begin(changes), std::end(changes));
}

int year_of_(instant_t at) {
    const auto day = floor<days>(sys_seconds{seconds{at}});
    return static_cast<int>(year_month_day{day}.year());
}

}  // namespace

void extend_by_rule(timeline_t &periods, std::string_view text, instant_t end) {
    const rule_t rule = rule_reader_t(text).read();
    const period_t last = periods.back();
    if (!rule.has_daylight) {
        if (last.local_time != rule.standard) throw std::runtime_error("the rule contradicts the list");
        return;
    }
    if (last.begin == BEGIN_OF_TIME) throw std::runtime_error("a rule for all time");
    timeline_t yielded;
    for (int y = year_of_(last.begin) - 1; y <= year_of_(end); ++y) append_year_(yielded, rule, year{y});
    std::copy_if(yielded.begin(), yielded.end(), std::back_inserter(periods),
                 [&](const period_t &period) { return period.begin > last.begin; });
}

}  // namespace tzgen
