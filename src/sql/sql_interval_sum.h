// Exact sums of intervals, of months and of nanoseconds, in 128 bits. The largest interval has 8.7e22
// nanoseconds, so 10^15 of them do not fill a sum.

#ifndef DV_SQL_INTERVAL_SUM_H
#define DV_SQL_INTERVAL_SUM_H

#include "sql_datetime.h"

namespace dv::impl {

struct sql_interval_sum {
    uint64_t low;  // of the total
    uint64_t high;
    int64_t count;

    __int128 total() const { return static_cast<__int128>(static_cast<unsigned __int128>(high) << 64 | low); }

    // False: the total or the count does not fit, which no rows of any table come to, and stays.
    bool add(__int128 terms, int64_t how_many) {
        __int128 sum;
        int64_t new_count;
        if (__builtin_add_overflow(total(), terms, &sum) ||
            __builtin_add_overflow(count, how_many, &new_count))
            return false;
        low = static_cast<uint64_t>(sum);
        high = static_cast<uint64_t>(static_cast<unsigned __int128>(sum) >> 64);
        count = new_count;
        return true;
    }
    bool add(const sql_interval_sum &other) { return add(other.total(), other.count); }

    // Cut toward zero, as dv_div cuts.
    __int128 average() const { return total() / count; }
};

constexpr bool sql_is_within(__int128 total, __int128 limit) { return total >= -limit && total <= limit; }

// What differs between the two types: how an interval is counted, and the interval of a total.
struct sql_sum_of_months {
    static constexpr sql_kind kind = SQL_KIND_ITV_YTM;
    static __int128 count(const sql_value &value) { return sql_total_months(value.ytm); }
    static void give(sql_call &call, __int128 months) {
        if (!sql_is_within(months, INT64_MAX)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
        sql_return_ytm(call, static_cast<int64_t>(months));
    }
};
struct sql_sum_of_nanoseconds {
    static constexpr sql_kind kind = SQL_KIND_ITV_DTS;
    static __int128 count(const sql_value &value) {
        const sql_seconds total = sql_total(value.dts);
        return __int128{total.whole} * SQL_NSEC_PER_SEC + total.nanoseconds;
    }
    static void give(sql_call &call, __int128 nanoseconds) {
        const __int128 seconds = nanoseconds / SQL_NSEC_PER_SEC;
        if (!sql_is_within(seconds, INT64_MAX)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
        sql_return_dts(call, sql_seconds{static_cast<int64_t>(seconds),
                                         static_cast<int>(nanoseconds % SQL_NSEC_PER_SEC)});
    }
};

}  // namespace dv::impl

#endif  // DV_SQL_INTERVAL_SUM_H
