// See datetime_support.h.

#include "datetime_support.h"

bool operator==(const dv_date_t &x, const dv_date_t &y) { return std::memcmp(&x, &y, sizeof x) == 0; }
bool operator==(const dv_time_t &x, const dv_time_t &y) { return std::memcmp(&x, &y, sizeof x) == 0; }
void PrintTo(const dv_date_t &date, std::ostream *out) { *out << dv::test::describe(date); }

namespace dv::test {

template <typename Record, typename... Values>
static std::string describe_(const Record &record, const char *format, Values... values) {
    char text[96];
    const auto *const byte = reinterpret_cast<const uint8_t *>(&record);
    for (size_t i = 0; i < 8; ++i) snprintf(text + 3 * i, 4, "%02x:", byte[i]);
    snprintf(text + 23, sizeof text - 23, format, values...);
    return text;
}

std::string describe(const dv_date_t &d) {
    const int year = 100 * (d.century - 100) + d.year - 100;
    return describe_(d, " (%d-%02d-%02d %02d:%02d:%02d)", year, d.month, d.day, d.hour, d.minute, d.second);
}

dv_date_t make_date(int year, int month, int day, int hour, int minute, int second) {
    const int fields[] = {year / 100 + 100, year % 100 + 100, month, day, hour, minute, second, 0};
    dv_date_t date;
    for (size_t i = 0; i < 8; ++i) reinterpret_cast<uint8_t *>(&date)[i] = static_cast<uint8_t>(fields[i]);
    return date;
}

dv_date_t random_date(number_source &source) {
    dv_date_t date = make_date(1, 1, 1, source.pick(0, 23), source.pick(0, 59), source.pick(0, 59));
    dv_date_from_julian_day(&date, source.pick(0, DV_JULIAN_DAY_MAX));
    return date;
}

}  // namespace dv::test

void PrintTo(const dv_time_t &t, std::ostream *out) {
    const uint32_t nanoseconds = (t.csec[0] * 256u + t.csec[1]) * 65536u + t.csec[2] * 256u + t.csec[3];
    *out << dv::test::describe_(t, " (%02d:%02d:%02d.%09u)", t.hour, t.minute, t.second, nanoseconds);
}
