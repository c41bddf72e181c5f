// dv_sum and dv_avg of intervals: exact sums of months and of nanoseconds, in 128 bits. The largest interval
// has 8.7e22 nanoseconds, so 10^15 of them do not fill a sum.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

using int128_t = __int128;

struct sum_state {
    uint64_t low;  // of the total
    uint64_t high;
    int64_t count;

    int128_t total() const { return static_cast<int128_t>(static_cast<unsigned __int128>(high) << 64 | low); }
    void add(int128_t terms, int64_t how_many) {
        const auto sum = static_cast<unsigned __int128>(total() + terms);
        low = static_cast<uint64_t>(sum);
        high = static_cast<uint64_t>(sum >> 64);
        count += how_many;
    }
};
static_assert(alignof(sum_state) <= SQL_STATE_ALIGN_MAX);

sum_state &state_of_(void *state) { return *static_cast<sum_state *>(state); }
const sum_state &state_of_(const void *state) { return *static_cast<const sum_state *>(state); }

constexpr bool is_within_(int128_t total, int128_t limit) { return total >= -limit && total <= limit; }

// What differs between the two types: how an interval is counted, and the interval of a total.
struct of_months {
    static constexpr sql_kind kind = SQL_KIND_ITV_YTM;
    static int128_t count(const sql_value &value) { return sql_total_months(value.ytm); }
    static void give(sql_call &call, int128_t months) {
        if (!is_within_(months, INT64_MAX)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
        sql_return_ytm(call, static_cast<int64_t>(months));
    }
};
struct of_nanoseconds {
    static constexpr sql_kind kind = SQL_KIND_ITV_DTS;
    static int128_t count(const sql_value &value) {
        const sql_seconds total = sql_total(value.dts);
        return int128_t{total.whole} * SQL_NSEC_PER_SEC + total.nanoseconds;
    }
    static void give(sql_call &call, int128_t nanoseconds) {
        const int128_t seconds = nanoseconds / SQL_NSEC_PER_SEC;
        if (!is_within_(seconds, INT64_MAX)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
        sql_return_dts(call, sql_seconds{static_cast<int64_t>(seconds),
                                         static_cast<int>(nanoseconds % SQL_NSEC_PER_SEC)});
    }
};

template <typename Type>
void step_(void *state, const sql_value *args) {
    state_of_(state).add(Type::count(args[0]), 1);
}

template <typename Type>
void inverse_(void *state, const sql_value *args) {
    state_of_(state).add(-Type::count(args[0]), -1);
}

void combine_(void *state, const void *other) {
    state_of_(state).add(state_of_(other).total(), state_of_(other).count);
}

// Without rows the result stays SQL NULL.
template <typename Type>
void sum_(sql_call &call, const void *state) {
    if (state_of_(state).count > 0) Type::give(call, state_of_(state).total());
}

// Cut toward zero, as dv_div cuts.
template <typename Type>
void average_(sql_call &call, const void *state) {
    const sum_state &sum = state_of_(state);
    if (sum.count > 0) Type::give(call, sum.total() / sum.count);
}

template <typename Type>
constexpr sql_aggregate row_(const char *name, const char *manual, decltype(sql_aggregate::value) value) {
    return {{name, {Type::kind}, "v", Type::kind, manual},
            sizeof(sum_state),
            alignof(sum_state),
            step_<Type>,
            inverse_<Type>,
            combine_,
            value};
}

constexpr sql_aggregate _aggregates[] = {
    row_<of_months>("dv_sum", "the sum", sum_<of_months>),
    row_<of_months>("dv_avg", "the sum divided by the count, cut to a month", average_<of_months>),
    row_<of_nanoseconds>("dv_sum", "the sum", sum_<of_nanoseconds>),
    row_<of_nanoseconds>("dv_avg", "the sum divided by the count, cut to a nanosecond",
                         average_<of_nanoseconds>),
};

}  // namespace

constinit const sql_aggregate_table dv::impl::interval_aggregates = _aggregates;
