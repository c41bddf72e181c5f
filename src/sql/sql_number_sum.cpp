// dv_sum and dv_avg of NUMBERs, over an exact sum: no order of the rows and no window frame changes a result.

#include "dvtypes/number_sum.h"
#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

struct sum_state {
    number_sum_t sum;
    int64_t count;
};

sum_state &state_of_(void *state) { return *static_cast<sum_state *>(state); }
const sum_state &state_of_(const void *state) { return *static_cast<const sum_state *>(state); }

void step_(void *state, const sql_value *args) {
    number_sum_add(&state_of_(state).sum, &args[0].number);
    ++state_of_(state).count;
}

void inverse_(void *state, const sql_value *args) {
    number_sum_sub(&state_of_(state).sum, &args[0].number);
    --state_of_(state).count;
}

void combine_(void *state, const void *other) {
    number_sum_merge(&state_of_(state).sum, &state_of_(other).sum);
    state_of_(state).count += state_of_(other).count;
}

// Without rows the result stays SQL NULL.
void give_quotient_(sql_call &call, const sum_state &state, int64_t divisor) {
    if (state.count == 0) return;
    sql_value result{};
    result.kind = SQL_KIND_NUMBER;
    number_sum_quotient(&state.sum, divisor, &result.number);
    sql_return(call, result);
}

void sum_(sql_call &call, const void *state) { give_quotient_(call, state_of_(state), /*divisor=*/1); }

void average_(sql_call &call, const void *state) {
    give_quotient_(call, state_of_(state), state_of_(state).count);
}

constexpr size_t _size = sizeof(sum_state), _align = alignof(sum_state);
constexpr sql_kind _number = SQL_KIND_NUMBER;

constexpr sql_aggregate _aggregates[] = {
    {{"dv_sum", {_number}, "v", _number, "the exact sum, rounded once"},
     _size,
     _align,
     step_,
     inverse_,
     combine_,
     sum_},
    {{"dv_avg", {_number}, "v", _number, "the exact sum divided by the count, rounded once"},
     _size,
     _align,
     step_,
     inverse_,
     combine_,
     average_},
};

}  // namespace

constinit const sql_aggregate_table dv::impl::number_aggregates = _aggregates;
