// What is made for the extension: SQL statements, and the functions of the module that they name.

#ifndef DV_POSTGRES_SCRIPT_H
#define DV_POSTGRES_SCRIPT_H

#include <set>
#include <string>
#include <string_view>

#include "postgres_type.h"

namespace dv::impl {

// A function of the server that the module has.
struct made_function {
    std::string name;     // in SQL
    std::string params;   // with their types: "a number, b number"
    std::string result;   // behind RETURNS
    std::string symbol;   // behind "dvpg_"
    std::string body;     // in C++, of `fcinfo`
    std::string options;  // such as "STRICT"; every one is PARALLEL SAFE
};

class script {
  public:
    void add(std::string_view statement) { sql_.append(statement).append(";\n"); }
    void add_comment(std::string_view text) { sql_.append("\n-- ").append(text).append("\n\n"); }
    void add(const made_function &function);

    // A function that stands in the module by itself, without a body here.
    void add_present(const made_function &function) { create_(function, function.name); }

    // The same function of the module under another name in SQL.
    void add_alias(const made_function &function, const std::string &name);

    // A function of the server's own: a name of its table of built-in functions.
    void add_internal(const std::string &name, const std::string &params, const std::string &result,
                      const std::string &builtin);

    const std::string &sql() const { return sql_; }
    const std::string &functions() const { return functions_; }

  private:
    void create_(const made_function &function, const std::string &name);

    std::string sql_, functions_;
    std::set<std::string> symbols_;
};

// The family of operators in which DATE and TIMESTAMP have one order.
inline constexpr char POSTGRES_DATETIME_FAMILY[] = "dv_datetime_ops";

// Appends the types with their input and output, comparison and indexes; the functions, tables and operators
// of the catalogue; casts; comparison of two types.
void add_types(script &to);
void add_functions(script &to);
void add_casts(script &to);
void add_mixed_comparisons(script &to);

// Appends the aggregates, and their states as types.
void add_states(script &to);

}  // namespace dv::impl

#endif  // DV_POSTGRES_SCRIPT_H
