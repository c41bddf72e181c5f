// All rows of the catalogue, by the tables of its files.

#include "sql_catalogue.h"

#include <iterator>

using namespace dv::impl;

namespace {

constexpr const sql_function_table *_functions[] = {
    &general_functions,
    &number_functions,
    &date_functions,
    &time_functions,
    &timestamp_functions,
    &ts_tz_functions,
    &datetime_arithmetic_functions,
    &calendar_functions,
    &interval_functions,
    &epoch_functions,
    &greatest_functions,
    &extract_functions,
    &datetime_read_functions,
    &datetime_model_functions,
    &number_model_functions,
    &rowid_functions,
    &fraction_functions,
    &json_functions,
    &type_functions,
    &error_functions,
};
constexpr const sql_aggregate_table *_aggregates[] = {&number_aggregates, &interval_aggregates};
constexpr const sql_table *_tables[] = {
    &types_table,
    &zones_table,
    &zone_transitions_table,
    &functions_table,
    &number_series_table,
    &date_day_series_table,
    &date_series_table,
    &date_month_series_table,
    &timestamp_series_table,
    &timestamp_month_series_table,
    &ts_tz_series_table,
    &ts_tz_month_series_table,
};

constexpr const char *_volatilities[] = {"immutable", "stable", "volatile"};
static_assert(std::size(_volatilities) == SQL_VOLATILE + 1);

}  // namespace

constinit const sql_catalogue dv::impl::catalogue = {_functions, _aggregates, _tables};

int dv::impl::sql_param_count(const sql_signature &signature) {
    int count = 0;
    while (count < SQL_PARAMS_MAX && signature.params[count] != SQL_KIND_NONE) ++count;
    return count;
}

std::string_view dv::impl::sql_param_name(const sql_signature &signature, int position) {
    constexpr std::string_view separator = ", ";
    std::string_view names = signature.param_names;
    while (position-- > 0) names.remove_prefix(names.find(separator) + separator.size());
    return names.substr(0, names.find(separator));
}

const char *dv::impl::sql_volatility_name(sql_volatility volatility) { return _volatilities[volatility]; }
