// The columns of a table to be filled, as --columns names them.

#ifndef DV_IMPORT_COLUMN_H
#define DV_IMPORT_COLUMN_H

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace dv::import {

// A call of an SQL function of a value and of constants: dv_cast_number(v, 10, 2).
struct call {
    std::string function;
    std::vector<std::variant<std::string, int>> constants;
};

// A field of each record.
struct column {
    std::string name;  // empty: the field is passed over
    std::string type;  // as declared: "NUMBER(10,2)"
    bool is_typed;     // of a type of the library: an empty text is SQL NULL
    bool has_model;
    std::string constraint;  // " NOT NULL UNIQUE"; empty: none

    std::vector<call> calls;  // what its value is of its text, by one function behind the other

    // The SQL expression of its value, given that of its text: "to_date(?, 'DD.MM.YYYY')".
    std::string value_of(const std::string &text) const;
};

// "day DATE 'DD.MM.YYYY', price NUMBER(10,2) 'FM999,990.00', seen 'TIMESTAMP WITH TIME ZONE', -": for each
// field a name, a type in words or in quotes, where there is one a format model in quotes, behind which its
// language or its punctuation may stand in quotes, and constraints: PRIMARY KEY, NOT NULL, UNIQUE; or -
// alone. Names may stand in double quotes. Throws std::runtime_error with what is wrong.
std::vector<column> parse_columns(std::string_view text);

// A name in double quotes, as SQL takes it.
std::string quoted_name(std::string_view name);

}  // namespace dv::import

#endif  // DV_IMPORT_COLUMN_H
