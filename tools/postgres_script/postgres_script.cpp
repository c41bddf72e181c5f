// postgres_script: what follows from the catalogue of SQL functions for the PostgreSQL extension.
//
//   postgres_script functions FILE       the functions of the module
//   postgres_script sql FILE [SQL...]    the statements that name them, and behind them those of other files
//   postgres_script update FILE [SQL...] of these, what the first version, 0.9, lacks: all but the types

#include <fstream>
#include <iostream>

#include "script.h"

using namespace dv::impl;

namespace {

constexpr char _functions_head[] =
    "// Made by postgres_script while the extension is built.\n\n"
    "#include \"postgres_call.h\"\n#include \"postgres_compare.h\"\n#include \"postgres_io.h\"\n"
    "#include \"postgres_json.h\"\n"
    "#include \"postgres_table.h\"\n\nusing namespace dv::impl;\n\n";

constexpr char _sql_head[] =
    "-- Made by postgres_script while the extension is built. Loaded by CREATE EXTENSION.\n"
    "\\echo Use \"CREATE EXTENSION dvtypes\" to load this file. \\quit\n";

constexpr char _update_head[] =
    "-- Made by postgres_script while the extension is built. Loaded by ALTER EXTENSION.\n"
    "\\echo Use \"ALTER EXTENSION dvtypes UPDATE\" to load this file. \\quit\n";

}  // namespace

int main(int argc, char **argv) {
    if (argc < 3) return 2;
    const bool is_update = std::string_view(argv[1]) == "update";
    script made;
    if (!is_update) add_types(made);
    add_functions(made);
    add_casts(made);
    add_states(made);
    add_mixed_comparisons(made);
    std::ofstream file(argv[2]);
    if (std::string_view(argv[1]) == "functions") {
        file << _functions_head << made.functions();
    } else {
        file << (is_update ? _update_head : _sql_head) << made.sql();
        for (int i = 3; i < argc; ++i) {
            std::ifstream more(argv[i]);
            file << '\n' << std::string(std::istreambuf_iterator(more), {});
        }
    }
    file.close();
    if (file) return 0;
    std::cerr << "postgres_script: cannot write " << argv[2] << '\n';
    return 1;
}
