// Casts that every type has.

#include <string>

#include "script.h"

using namespace dv::impl;

namespace {

// The server's to_json and to_jsonb, and what is made of rows by them, go by these casts.
void add_json_(script &to, const postgres_type &type, const std::string &json) {
    const std::string name = type.name, symbol = std::string(type.word) + "_to_" + json;
    to.add(made_function{
        "dv_" + symbol, name, json, symbol,
        "return postgres_to_" + json + "(static_cast<sql_kind>(" + std::to_string(type.kind) + "), fcinfo);",
        "IMMUTABLE STRICT"});
    to.add("CREATE CAST (" + name + " AS " + json + ") WITH FUNCTION dv_" + symbol + "(" + name +
           ") AS ASSIGNMENT");
}

}  // namespace

void dv::impl::add_casts(script &to) {
    to.add_comment("casts");
    for (const postgres_type &type : POSTGRES_TYPES) {
        if (!postgres_is_of_extension(type.kind)) continue;
        add_json_(to, type, "json");
        add_json_(to, type, "jsonb");
    }
}
