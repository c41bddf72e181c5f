// The next named weekday after a DATE. The names are those of the date languages, read by the format area.

#include <cstring>

#include "datetime_internal.h"

using namespace dv::impl;

extern "C" void dv_date_get_next_day(dv_date_t *date, const char *day_name, int day_name_len,
                                     dv_nls_date_lang_t nls_lang, dvstr_charset_t charset) {
    if (!is_given(date) || !DV_ASSERT(day_name != NULL)) return;
    if (day_name_len < 1) day_name_len = static_cast<int>(strlen(day_name));
    const int wanted = dt_fmt_get_day_idx_of_week(day_name, day_name_len, nls_lang, charset);
    const int ahead = wanted - weekday(date_day_number(*date));  // -6..6
    date_add_days(*date, ahead > 0 ? ahead : ahead + DAYS_PER_WEEK);
}
