// What is wrong with the bytes of an interval that somebody else wrote: SQL has values of nine leading
// digits, whose fields are carried and have one sign.

#include <algorithm>

#include "interval_internal.h"

using namespace dv::impl;

namespace {

constexpr int _leading_digits = 9;

constexpr bool is_below_(int32_t field, int64_t limit) { return field < limit && field > -limit; }

constexpr bool have_one_sign_(std::initializer_list<int32_t> fields) {
    return std::min(fields) >= 0 || std::max(fields) <= 0;
}

}  // namespace

extern "C" const char *dv_itv_ytm_get_fault(const dv_itv_ytm_t *itv) {
    if (!DV_ASSERT(itv != NULL)) return nullptr;
    const int32_t years = itv_years(*itv), months = itv_months(*itv);
    if (!is_below_(years, itv_leading_limit(_leading_digits))) return "it has more than nine digits of years";
    if (!is_below_(months, MONTHS_PER_YEAR)) return "its months are out of range";
    return have_one_sign_({years, months}) ? nullptr : "its fields differ in sign";
}

extern "C" const char *dv_itv_dts_get_fault(const dv_itv_dts_t *itv) {
    if (!DV_ASSERT(itv != NULL)) return nullptr;
    const int32_t days = itv_days(*itv), seconds = itv_seconds(*itv), nanoseconds = itv_nanoseconds(*itv);
    if (!is_below_(days, itv_leading_limit(_leading_digits))) return "it has more than nine digits of days";
    if (!is_below_(seconds, SEC_PER_DAY)) return "its seconds are out of range";
    if (!is_below_(nanoseconds, NSEC_PER_SEC)) return "its nanoseconds are out of range";
    return have_one_sign_({days, seconds, nanoseconds}) ? nullptr : "its fields differ in sign";
}
