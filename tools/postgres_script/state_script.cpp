// States of aggregates as types, and the aggregates over them: of values, and of the states of parts. The
// functions that they are made of stand in the module.

#include <string>
#include <string_view>

#include "comparison.h"
#include "script.h"

using namespace dv::impl;

namespace {

// A result of a state: of the aggregates NAME(value) and dv_NAME_merge(state), and of dv_NAME_of(state).
struct state_result {
    const char *name;
    const char *word;  // in the name of the function
};

struct state_type {
    const char *name;       // in SQL
    const char *word;       // in names of functions of the module
    const char *value;      // the type of the rows
    const char *aggregate;  // whose result is the state
    int space;              // bytes that one takes in memory
    bool has_dv_names;      // are there aggregates dv_NAME(value), too?
    state_result results[6];
};

constexpr state_result _sums[] = {{"sum", "sum"}, {"avg", "avg"}};

constexpr state_type _types[] = {
    {"dv_number_state", "number_state", "number", "dv_sum_state", 64, true, {_sums[0], _sums[1]}},
    {"dv_interval_ym_state",
     "interval_ym_state",
     "dv_interval_ym",
     "dv_sum_state",
     32,
     true,
     {_sums[0], _sums[1]}},
    {"dv_interval_ds_state",
     "interval_ds_state",
     "dv_interval_ds",
     "dv_sum_state",
     32,
     true,
     {_sums[0], _sums[1]}},
    {"dv_number_variance_state",
     "number_variance_state",
     "number",
     "dv_variance_state",
     128,
     false,
     {{"variance", "var_samp"},
      {"var_samp", "var_samp"},
      {"var_pop", "var_pop"},
      {"stddev", "stddev_samp"},
      {"stddev_samp", "stddev_samp"},
      {"stddev_pop", "stddev_pop"}}},
};

constexpr const char *_strict = "IMMUTABLE STRICT";
constexpr const char *_takes_null = "IMMUTABLE CALLED ON NULL INPUT";

// ---------------------------------------------------------------------------------------------------------
// Functions
// ---------------------------------------------------------------------------------------------------------

void add_function_(script &to, const state_type &type, const std::string &name, const std::string &params,
                   const std::string &result, const std::string &word, const char *options) {
    to.add_present(
        made_function{name, params, result, std::string(type.word) + "_" + word, /*body=*/"", options});
}

void add_type_(script &to, const state_type &type) {
    const std::string name = type.name;
    to.add_comment(name);
    to.add("CREATE TYPE " + name);
    add_function_(to, type, name + "_in", "cstring", name, "in", _strict);
    add_function_(to, type, name + "_out", name, "cstring", "out", _strict);
    add_function_(to, type, name + "_recv", "internal", name, "recv", _strict);
    add_function_(to, type, name + "_send", name, "bytea", "send", _strict);
    to.add("CREATE TYPE " + name + " (INPUT = " + name + "_in, OUTPUT = " + name + "_out, RECEIVE = " + name +
           "_recv, SEND = " + name + "_send,\n    INTERNALLENGTH = VARIABLE, STORAGE = main)");
}

// Equality and hashing; states have no order.
void add_equality_(script &to, const state_type &type) {
    const std::string name = type.name, both = name + ", " + name;
    for (const comparison &each : COMPARISONS) {
        if (const std::string_view word = each.word; word != "eq" && word != "ne") continue;
        add_function_(to, type, name + "_" + each.word, both, "boolean", each.word, _strict);
        to.add(operator_statement(each, name, name, name + "_" + each.word, ", HASHES"));
    }
    add_function_(to, type, name + "_hash", name, "integer", "hash", _strict);
    add_function_(to, type, name + "_hash_extended", name + ", bigint", "bigint", "hash_extended", _strict);
    to.add("CREATE OPERATOR CLASS " + name + "_hash_ops DEFAULT FOR TYPE " + name +
           " USING hash AS OPERATOR 1 =,\n    FUNCTION 1 " + name + "_hash(" + name + "), FUNCTION 2 " +
           name + "_hash_extended(" + name + ", bigint)");
}

// A state of NULL is that of no rows, and a row of NULL changes nothing.
void add_functions_(script &to, const state_type &type) {
    const std::string name = type.name;
    add_function_(to, type, "dv_state_add", name + ", " + type.value, name, "add", _takes_null);
    add_function_(to, type, "dv_state_sub", name + ", " + type.value, name, "sub", _takes_null);
    add_function_(to, type, "dv_state_merge", name + ", " + name, name, "merge", _strict);
    add_function_(to, type, "dv_state_pack", name, name, "pack", _strict);
    add_function_(to, type, "dv_count_of", name, "bigint", "count", _takes_null);
    for (const state_result &each : type.results) {
        if (each.name == nullptr) break;
        add_function_(to, type, std::string("dv_") + each.name + "_of", name, type.value, each.word, _strict);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Aggregates
// ---------------------------------------------------------------------------------------------------------

// Of values, also over moving frames.
void add_aggregate_(script &to, const state_type &type, const std::string &name, const std::string &final) {
    const std::string state = type.name, space = std::to_string(type.space);
    to.add("CREATE AGGREGATE " + name + "(" + type.value + ") (\n    SFUNC = dv_state_add, STYPE = " + state +
           ", SSPACE = " + space + ", FINALFUNC = " + final +
           ", COMBINEFUNC = dv_state_merge,\n    MSFUNC = dv_state_add, MINVFUNC = dv_state_sub, MSTYPE = " +
           state + ", MSSPACE = " + space + ",\n    MFINALFUNC = " + final + ", PARALLEL = SAFE)");
}

// Of states.
void add_merge_(script &to, const state_type &type, const std::string &name, const std::string &final) {
    const std::string state = type.name;
    to.add("CREATE AGGREGATE " + name + "(" + state + ") (SFUNC = dv_state_merge, STYPE = " + state +
           ", SSPACE = " + std::to_string(type.space) + ",\n    FINALFUNC = " + final +
           ", COMBINEFUNC = dv_state_merge, PARALLEL = SAFE)");
}

void add_aggregates_(script &to, const state_type &type) {
    for (const state_result &each : type.results) {
        if (each.name == nullptr) break;
        const std::string name = each.name, dv_name = "dv_" + name;
        add_aggregate_(to, type, name, dv_name + "_of");
        if (type.has_dv_names) add_aggregate_(to, type, dv_name, dv_name + "_of");
        add_merge_(to, type, dv_name + "_merge", dv_name + "_of");
    }
    add_aggregate_(to, type, type.aggregate, "dv_state_pack");
    add_merge_(to, type, "dv_state_merge", "dv_state_pack");
    add_merge_(to, type, "dv_count_merge", "dv_count_of");
}

}  // namespace

void dv::impl::add_states(script &to) {
    for (const state_type &type : _types) {
        add_type_(to, type);
        add_equality_(to, type);
        add_functions_(to, type);
        add_aggregates_(to, type);
    }
}
