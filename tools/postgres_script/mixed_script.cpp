// Comparison of two types, as dv_cmp has it: a DATE with both TIMESTAMPs.
//
// DATE and TIMESTAMP have one order, so that their operators are of one family, and an index on the one
// serves conditions with the other. With a TIMESTAMP WITH TIME ZONE a DATE compares by local time, though two
// of those compare by instant: no order has both, and the operators are of no family.

#include <string>

#include "comparison.h"
#include "script.h"

using namespace dv::impl;

namespace {

struct pair {
    sql_kind left, right;
    bool is_ordered;  // together with the orders of both types
};

constexpr pair _pairs[] = {
    {SQL_KIND_DATE, SQL_KIND_TIMESTAMP, true},
    {SQL_KIND_TIMESTAMP, SQL_KIND_DATE, true},
    {SQL_KIND_DATE, SQL_KIND_TS_TZ, false},
    {SQL_KIND_TS_TZ, SQL_KIND_DATE, false},
};

struct names {
    std::string left, right;  // types
    std::string symbol;       // "date_timestamp"
    std::string order;        // in C++

    explicit names(const pair &of)
        : left(postgres_type_of(of.left).name),
          right(postgres_type_of(of.right).name),
          symbol(std::string(postgres_type_of(of.left).word) + "_" + postgres_type_of(of.right).word),
          order("postgres_mixed_order<static_cast<sql_kind>(" + std::to_string(of.left) + ")>(fcinfo)") {}
};

void add_test_(script &to, const pair &of, const names &named, const comparison &test) {
    const std::string symbol = named.symbol + "_" + test.word, name = "dv_" + symbol;
    if (of.is_ordered) {
        to.add(made_function{name, named.left + ", " + named.right, "boolean", symbol,
                             "PG_RETURN_BOOL(" + named.order + " " + test.test + ");",
                             "IMMUTABLE STRICT LEAKPROOF"});
    } else {
        to.add("CREATE FUNCTION " + name + "(" + named.left + ", " + named.right +
               ") RETURNS boolean\n    IMMUTABLE STRICT PARALLEL SAFE RETURN dv_cmp($1, $2) " + test.sign +
               " 0");
    }
    to.add(operator_statement(test, named.left, named.right, name, of.is_ordered ? ", MERGES" : ""));
}

void add_to_family_(script &to, const names &named) {
    const std::string symbol = named.symbol + "_cmp", both = "(" + named.left + ", " + named.right + ")";
    to.add(made_function{"dv_" + symbol, named.left + ", " + named.right, "integer", symbol,
                         "PG_RETURN_INT32(" + named.order + ");", "IMMUTABLE STRICT LEAKPROOF"});
    std::string operators;
    for (const comparison &test : COMPARISONS) {
        if (test.strategy == 0) continue;
        operators += "OPERATOR " + std::to_string(test.strategy) + " " + test.sign + " " + both + ", ";
    }
    to.add(std::string("ALTER OPERATOR FAMILY ") + POSTGRES_DATETIME_FAMILY + " USING btree ADD " +
           operators + "\n    FUNCTION 1 " + both + " dv_" + symbol + both);
}

}  // namespace

void dv::impl::add_mixed_comparisons(script &to) {
    to.add_comment("comparison of two types");
    for (const pair &each : _pairs) {
        const names named(each);
        for (const comparison &test : COMPARISONS) add_test_(to, each, named, test);
        if (each.is_ordered) add_to_family_(to, named);
    }
}
