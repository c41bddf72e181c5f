// Shared pieces of the timestamp tests: zones by name, random values.

#ifndef DV_TEST_ZONED_SUPPORT_H
#define DV_TEST_ZONED_SUPPORT_H

#include "../datetime_fmt/model_text.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::test {

inline timezone_t zone_of(const char *text) {
    timezone_t tz;
    timezone_parse(&tz, text, static_cast<int>(std::strlen(text)));
    return tz;
}

inline const dv_date_t &date_of(const dv_timestamp_t &ts) { return reinterpret_cast<const dv_date_t &>(ts); }

inline dv_timestamp_t random_timestamp(number_source &source) {
    dv_timestamp_t ts;
    const dv_date_t date = random_date(source);
    dv_timestamp_from_date(&ts, &date);
    const int most = source.pick(0, 7) == 0 ? 3 : 333'333'333;
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, source.pick(0, 3) * source.pick(0, most), 1, 1);
    return ts;
}

template <typename Record>
bool same_bytes(const Record &x, const Record &y) {
    return std::memcmp(&x, &y, sizeof x) == 0;
}

}  // namespace dv::test

#endif  // DV_TEST_ZONED_SUPPORT_H
