// dv_sum and dv_avg of intervals.

#include "sql_interval_sum.h"

#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

sql_interval_sum &state_of_(void *state) { return *static_cast<sql_interval_sum *>(state); }
const sql_interval_sum &state_of_(const void *state) { return *static_cast<const sql_interval_sum *>(state); }
static_assert(alignof(sql_interval_sum) <= SQL_STATE_ALIGN_MAX);

template <typename Type>
void step_(void *state, const sql_value *args) {
    state_of_(state).add(Type::count(args[0]), 1);
}

template <typename Type>
void inverse_(void *state, const sql_value *args) {
    state_of_(state).add(-Type::count(args[0]), -1);
}

void combine_(void *state, const void *other) { state_of_(state).add(state_of_(other)); }

// Without rows the result stays SQL NULL.
template <typename Type>
void sum_(sql_call &call, const void *state) {
    if (state_of_(state).count > 0) Type::give(call, state_of_(state).total());
}

template <typename Type>
void average_(sql_call &call, const void *state) {
    if (state_of_(state).count > 0) Type::give(call, state_of_(state).average());
}

template <typename Type>
constexpr sql_aggregate row_(const char *name, const char *manual, decltype(sql_aggregate::value) value) {
    return {{name, {Type::kind}, "v", Type::kind, manual},
            sizeof(sql_interval_sum),
            alignof(sql_interval_sum),
            step_<Type>,
            inverse_<Type>,
            combine_,
            value};
}

constexpr sql_aggregate _aggregates[] = {
    row_<sql_sum_of_months>("dv_sum", "the sum", sum_<sql_sum_of_months>),
    row_<sql_sum_of_months>("dv_avg", "the sum divided by the count, cut to a month",
                            average_<sql_sum_of_months>),
    row_<sql_sum_of_nanoseconds>("dv_sum", "the sum", sum_<sql_sum_of_nanoseconds>),
    row_<sql_sum_of_nanoseconds>("dv_avg", "the sum divided by the count, cut to a nanosecond",
                                 average_<sql_sum_of_nanoseconds>),
};

}  // namespace

constinit const sql_aggregate_table dv::impl::interval_aggregates = _aggregates;
