// dv_sum and dv_avg of NUMBERs, over an exact sum: no order of the rows and no window frame changes a result.

#include "exact_sum.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

struct sum_state {
    exact_sum sum;
    int64_t count;
};

void step_(void *state, const sql_value &value) {
    auto &sum = *static_cast<sum_state *>(state);
    exact_sum_add(sum.sum, value.number);
    ++sum.count;
}

void inverse_(void *state, const sql_value &value) {
    auto &sum = *static_cast<sum_state *>(state);
    exact_sum_sub(sum.sum, value.number);
    --sum.count;
}

// Without rows the result stays SQL NULL.
void give_quotient_(sqlite3_context *context, const sum_state &state, int64_t divisor) {
    if (state.count == 0) return;
    sql_value result;
    result.kind = SQL_KIND_NUMBER;
    result.number = exact_sum_quotient(state.sum, divisor);
    sql_return(context, result);
}

void sum_(sqlite3_context *context, const void *state) {
    give_quotient_(context, *static_cast<const sum_state *>(state), /*divisor=*/1);
}

void average_(sqlite3_context *context, const void *state) {
    const auto &sum = *static_cast<const sum_state *>(state);
    give_quotient_(context, sum, sum.count);
}

constexpr sql_aggregate _aggregates[] = {
    {"dv_sum", SQL_KIND_NUMBER, sizeof(sum_state), step_, inverse_, sum_},
    {"dv_avg", SQL_KIND_NUMBER, sizeof(sum_state), step_, inverse_, average_},
};

}  // namespace

constinit const sql_aggregate_table dv::impl::number_aggregates = _aggregates;
