// Statements and functions, written out.

#include "script.h"

#include <cstdio>
#include <cstdlib>

using namespace dv::impl;

void script::create_(const made_function &function, const std::string &name) {
    add("CREATE FUNCTION " + name + "(" + function.params + ") RETURNS " + function.result +
        "\n    AS 'MODULE_PATHNAME', 'dvpg_" + function.symbol + "' LANGUAGE C " + function.options +
        " PARALLEL SAFE");
}

void script::add(const made_function &function) {
    if (!symbols_.insert(function.symbol).second) {
        std::fprintf(stderr, "two functions are called dvpg_%s\n", function.symbol.c_str());
        std::exit(1);
    }
    functions_ += "DV_POSTGRES_FUNCTION(dvpg_" + function.symbol + ") { " + function.body + " }\n";
    create_(function, function.name);
}

void script::add_alias(const made_function &function, const std::string &name) { create_(function, name); }

void script::add_internal(const std::string &name, const std::string &params, const std::string &result,
                          const std::string &builtin) {
    add("CREATE FUNCTION " + name + "(" + params + ") RETURNS " + result + "\n    AS '" + builtin +
        "' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE");
}
