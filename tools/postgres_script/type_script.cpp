// The types of the extension: shells, input and output, modifiers, comparison and classes of operators.

#include <string>

#include "comparison.h"
#include "script.h"

using namespace dv::impl;

namespace {

// What CREATE TYPE says beside names of functions.
struct type_facts {
    sql_kind kind;
    const char *category;  // of the server's: which types are alike where a function is chosen
    bool compares_whole;   // are equal values equal byte by byte?
};

constexpr type_facts _facts[] = {
    {SQL_KIND_NUMBER, "N", true},    {SQL_KIND_DATE, "D", true},    {SQL_KIND_TIME, "D", true},
    {SQL_KIND_TIMESTAMP, "D", true}, {SQL_KIND_TS_TZ, "D", false},  {POSTGRES_KIND_TS_LTZ, "D", true},
    {SQL_KIND_ITV_YTM, "T", true},   {SQL_KIND_ITV_DTS, "T", true}, {SQL_KIND_ROWID, "U", true},
};

std::string kind_name_(sql_kind kind) { return "static_cast<sql_kind>(" + std::to_string(kind) + ")"; }

// One of the functions of a type that postgres_io.h has.
made_function io_function_(const postgres_type &type, const std::string &what, const std::string &params,
                           const std::string &result, const std::string &body) {
    const std::string word = type.word;
    return {"dv_" + word + "_" + what,
            params,
            result,
            word + "_" + what,
            "return " + body + "(" + kind_name_(type.kind) + ", fcinfo);",
            "IMMUTABLE STRICT"};
}

void add_type_(script &to, const type_facts &facts) {
    const postgres_type &type = postgres_type_of(facts.kind);
    const std::string name = type.name, word = type.word;
    const bool has_modifier = postgres_has_modifier(type.kind);
    to.add_comment(name);
    to.add("CREATE TYPE " + name);
    to.add(io_function_(type, "in", "cstring, oid, integer", name, "postgres_in"));
    to.add(io_function_(type, "out", name, "cstring", "postgres_out"));
    to.add(io_function_(type, "recv", "internal, oid, integer", name, "postgres_receive"));
    to.add(io_function_(type, "send", name, "bytea", "postgres_send"));
    if (has_modifier) {
        to.add(io_function_(type, "typmod_in", "cstring[]", "integer", "postgres_modifier_in"));
        to.add(io_function_(type, "typmod_out", "integer", "cstring", "postgres_modifier_out"));
    }
    std::string of = "CREATE TYPE " + name + " (INPUT = dv_" + word + "_in, OUTPUT = dv_" + word +
                     "_out, RECEIVE = dv_" + word + "_recv, SEND = dv_" + word + "_send,\n    ";
    if (has_modifier)
        of += "TYPMOD_IN = dv_" + word + "_typmod_in, TYPMOD_OUT = dv_" + word + "_typmod_out, ";
    of += "CATEGORY = '" + std::string(facts.category) + "', ";
    if (type.length < 0) {
        of += "INTERNALLENGTH = VARIABLE, STORAGE = main";
    } else if (postgres_is_word(type.kind)) {
        of += "INTERNALLENGTH = 8, PASSEDBYVALUE, ALIGNMENT = double";
    } else {
        of += "INTERNALLENGTH = " + std::to_string(type.length) + ", ALIGNMENT = char";
    }
    to.add(of + ")");
    if (has_modifier) {
        to.add(
            io_function_(type, "apply_typmod", name + ", integer, boolean", name, "postgres_apply_modifier"));
        to.add("CREATE CAST (" + name + " AS " + name + ") WITH FUNCTION dv_" + word + "_apply_typmod(" +
               name + ", integer, boolean) AS IMPLICIT");
    }
}

// ---------------------------------------------------------------------------------------------------------
// Comparison
// ---------------------------------------------------------------------------------------------------------

// A function of a type that compares its values: the server's own for bytes of a NUMBER.
void add_comparing_(script &to, const postgres_type &type, const std::string &what, const std::string &params,
                    const std::string &result, const std::string &body, const std::string &builtin) {
    const std::string word = type.word, name = "dv_" + word + "_" + what;
    if (type.kind == SQL_KIND_NUMBER) return to.add_internal(name, params, result, builtin);
    to.add(made_function{name, params, result, word + "_" + what, body, "IMMUTABLE STRICT LEAKPROOF"});
}

void add_operator_(script &to, const postgres_type &type, const comparison &of) {
    const std::string name = type.name, both = name + ", " + name;
    const std::string order = "postgres_order<" + kind_name_(type.kind) + ">(fcinfo)";
    add_comparing_(to, type, of.word, both, "boolean", "PG_RETURN_BOOL(" + order + " " + of.test + ");",
                   std::string("bytea") + of.word);
    to.add(operator_statement(of, name, name, std::string("dv_") + type.word + "_" + of.word,
                              ", HASHES, MERGES"));
}

// The greater and the less of two, for min and max.
void add_choice_(script &to, const postgres_type &type, const std::string &what, const std::string &test,
                 const std::string &sign) {
    const std::string name = type.name, word = type.word;
    const std::string symbol = word + "_" + what;
    const std::string order = type.kind == SQL_KIND_NUMBER
                                  ? "postgres_order_of_numbers(fcinfo)"
                                  : "postgres_order<" + kind_name_(type.kind) + ">(fcinfo)";
    to.add(made_function{"dv_" + symbol, name + ", " + name, name, symbol,
                         "return PG_GETARG_DATUM(" + order + " " + test + " ? 0 : 1);", "IMMUTABLE STRICT"});
    to.add("CREATE AGGREGATE " + std::string(what == "larger" ? "max" : "min") + "(" + name +
           ") (SFUNC = dv_" + symbol + ", STYPE = " + name + ",\n    SORTOP = OPERATOR(" + sign +
           "), COMBINEFUNC = dv_" + symbol + ", PARALLEL = SAFE)");
}

// DATE and TIMESTAMP compare with each other, too (mixed_script.cpp).
std::string family_of_(sql_kind kind) {
    const bool is_mixed = kind == SQL_KIND_DATE || kind == SQL_KIND_TIMESTAMP;
    return is_mixed ? std::string(" FAMILY ") + POSTGRES_DATETIME_FAMILY : "";
}

void add_comparison_(script &to, const type_facts &facts) {
    const postgres_type &type = postgres_type_of(facts.kind);
    const std::string name = type.name, word = "dv_" + std::string(type.word), kind = kind_name_(type.kind);
    to.add_comment("comparison of " + name);
    for (const comparison &each : COMPARISONS) add_operator_(to, type, each);
    add_comparing_(to, type, "cmp", name + ", " + name, "integer",
                   "PG_RETURN_INT32(postgres_order<" + kind + ">(fcinfo));", "byteacmp");
    add_comparing_(to, type, "hash", name, "integer", "return postgres_hash<" + kind + ">(fcinfo);",
                   "hashvarlena");
    add_comparing_(to, type, "hash_extended", name + ", bigint", "bigint",
                   "return postgres_hash_extended<" + kind + ">(fcinfo);", "hashvarlenaextended");
    add_comparing_(to, type, "sortsupport", "internal", "void",
                   "return postgres_sort_support<" + kind + ">(fcinfo);", "bytea_sortsupport");
    const std::string operators = "OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >";
    to.add("CREATE OPERATOR CLASS " + word + "_ops DEFAULT FOR TYPE " + name + " USING btree" +
           family_of_(type.kind) + " AS " + operators + ",\n    FUNCTION 1 " + word + "_cmp(" + name + ", " +
           name + "), FUNCTION 2 " + word + "_sortsupport(internal)" +
           (facts.compares_whole ? ", FUNCTION 4 btequalimage(oid)" : ""));
    to.add("CREATE OPERATOR CLASS " + word + "_hash_ops DEFAULT FOR TYPE " + name +
           " USING hash AS OPERATOR 1 =,\n    FUNCTION 1 " + word + "_hash(" + name + "), FUNCTION 2 " +
           word + "_hash_extended(" + name + ", bigint)");
    to.add("CREATE OPERATOR CLASS " + word + "_minmax_ops DEFAULT FOR TYPE " + name + " USING brin AS " +
           operators +
           ",\n    FUNCTION 1 brin_minmax_opcinfo(internal), "
           "FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),\n    "
           "FUNCTION 3 brin_minmax_consistent(internal, internal, internal), "
           "FUNCTION 4 brin_minmax_union(internal, internal, internal)");
    add_choice_(to, type, "larger", ">= 0", ">");
    add_choice_(to, type, "smaller", "<= 0", "<");
}

}  // namespace

void dv::impl::add_types(script &to) {
    for (const type_facts &facts : _facts) add_type_(to, facts);
    to.add(std::string("CREATE OPERATOR FAMILY ") + POSTGRES_DATETIME_FAMILY + " USING btree");
    for (const type_facts &facts : _facts) add_comparison_(to, facts);
}
