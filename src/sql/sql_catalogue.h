// The catalogue of SQL functions, aggregates and tables, which no engine owns: rows of tables, one table per
// file, listed in sql_catalogue.cpp. An engine walks it, makes what it has of each row, and calls the bodies
// (see README.md).
//
// A row is a name, the kinds of its parameters and its result, a line of the manual, and a body. Rows with
// the same name and number of parameters, wherever they stand, are overloads, told apart by the kinds of the
// arguments (sql_overload.h).

#ifndef DV_SQL_CATALOGUE_H
#define DV_SQL_CATALOGUE_H

#include <array>
#include <string_view>

#include "dvtypes/column_record.h"
#include "sql_call.h"

namespace dv::impl {

// Rules for every function: an argument of SQL NULL gives SQL NULL, unless its parameter is SQL_KIND_ANY. A
// NUMBER parameter takes INTEGER and finite REAL too, a TEXT parameter no text with a NUL inside. No function
// has side effects.
struct sql_signature {
    const char *name;
    sql_kind params[SQL_PARAMS_MAX];  // SQL_KIND_NONE behind the last
    const char *param_names;          // as the manual writes them: "d, n"
    sql_kind result;                  // the body may also give SQL NULL, or a kind that a parameter of
                                      // this kind takes, which engines with one type per function convert
    const char *manual;               // a line of it, without a full stop
};

int sql_param_count(const sql_signature &signature);
std::string_view sql_param_name(const sql_signature &signature, int position);

// What a result depends on.
enum sql_volatility : uint8_t {
    SQL_IMMUTABLE,  // the arguments alone: it may stand in indexes and generated columns
    SQL_STABLE,     // the host's clock and zone too: the same for a statement where the host's clock is
    SQL_VOLATILE    // anything
};
const char *sql_volatility_name(sql_volatility volatility);

// What a function makes once of arguments that are the same in many calls: of the texts from `argument` on,
// and of the kinds of all. One thread at a time uses it.
struct sql_keeper {
    int argument;  // the position of a text: the object is kept as long as that one is constant
    size_t size;   // of the object in bytes; it begins all 0, at a multiple of 8
    // Makes the object of a call's arguments. May fail and raise: release comes then, too.
    void (*make)(sql_call &call, void *object);
    bool (*serves)(const sql_call &call, const void *object);  // could it have been made of this call?
    void (*release)(allocator_t *memory, void *object);        // frees what the object owns, not the object
    bool is_of_model;  // the text is a model: of a wrong one it is shown where it does not compile
};

// For what owns nothing, and for what the text alone is made of.
inline void sql_release_nothing(allocator_t * /*memory*/, void * /*object*/) {}
inline bool sql_always_serves(const sql_call & /*call*/, const void * /*object*/) { return true; }

struct sql_function {
    sql_signature signature;
    void (*body)(sql_call &call);
    sql_volatility volatility = SQL_IMMUTABLE;
    const sql_keeper *keeper = nullptr;
    sql_kind other_result = SQL_KIND_NONE;  // by the value of an argument, the body gives this in place of
                                            // result, in engines whose functions need not have one type
    bool is_try = false;                    // gives SQL NULL where it fails or raises, but for memory
    bool is_json = false;                   // its texts are JSON, which engines may have a mark for

    // Many calls at once, for engines that have many rows. Their first arguments are the rows of `values`:
    // texts without a NUL inside, by offsets, which it may overwrite, or records, by stride; the others are
    // those of `call`, which the row takes. `result` is of records of the row's result kind, with a bitmap
    // from bit 0 on; it may be `values`. A row that has a value there afterwards has the one that body gives;
    // the others are left to body, and all where it raises. What call holds of a failure means nothing.
    // NULL: there is none.
    void (*column_body)(sql_call &call, const dv_column_t &values, dv_column_t &result) = nullptr;

    // What body does with two NUMBERs, in place on the first, for engines that have them at hand. NULL: more.
    void (*operation)(number_t *x, const number_t *y) = nullptr;
};

inline constexpr size_t SQL_STATE_ALIGN_MAX = 8;

// An aggregate that is a window function too. The state is plain memory, all 0 before the first row, and is
// dropped without notice. Rows with an argument of SQL NULL are left out; the others are all of one overload.
// Only `value` may raise.
struct sql_aggregate {
    sql_signature signature;
    size_t state_size, state_align;                       // in bytes, the second at most SQL_STATE_ALIGN_MAX
    void (*step)(void *state, const sql_value *args);     // takes a row in
    void (*inverse)(void *state, const sql_value *args);  // takes it out again
    void (*combine)(void *state, const void *other);      // takes in the rows of another state
    void (*value)(sql_call &call, const void *state);     // gives the result of the rows that are in
};

struct sql_column {
    const char *name;
    sql_kind kind;
};

// What a walk through a table goes through: `rows` rows of some subject, or of a series.
struct sql_rows {
    const void *subject;
    int64_t rows;
    sql_value from, step;  // of a series
};

// A read-only table, of the arguments of a call where it has parameters. With an argument of SQL NULL it has
// no rows. Overloads have columns of the same names.
struct sql_table {
    sql_signature signature;  // without a result
    std::span<const sql_column> columns;
    void (*begin)(sql_call &call, sql_rows &walk);  // what to walk; it comes all 0
    void (*field)(sql_call &call, const sql_rows &walk, int64_t row, int column);  // of row 0 to rows - 1
    bool (*is_shown)(const sql_rows &walk, int64_t row) = nullptr;                 // NULL: every row is
};

using sql_function_table = std::span<const sql_function>;
using sql_aggregate_table = std::span<const sql_aggregate>;

extern const sql_function_table general_functions;
extern const sql_function_table number_functions;
extern const sql_function_table date_functions;
extern const sql_function_table time_functions;
extern const sql_function_table timestamp_functions;
extern const sql_function_table ts_tz_functions;
extern const sql_function_table datetime_arithmetic_functions;
extern const sql_function_table calendar_functions;
extern const sql_function_table datetime_model_functions;
extern const sql_function_table datetime_read_functions;
extern const sql_function_table interval_functions;
extern const sql_function_table epoch_functions;
extern const sql_function_table greatest_functions;
extern const sql_function_table extract_functions;
extern const sql_function_table number_model_functions;
extern const sql_function_table rowid_functions;
extern const sql_function_table fraction_functions;
extern const sql_function_table json_functions;
extern const sql_function_table type_functions;
extern const sql_function_table error_functions;
extern const sql_aggregate_table number_aggregates;
extern const sql_aggregate_table interval_aggregates;
extern const sql_table types_table;
extern const sql_table zones_table;
extern const sql_table zone_transitions_table;
extern const sql_table functions_table;
extern const sql_table number_series_table;
extern const sql_table date_day_series_table;
extern const sql_table date_series_table;
extern const sql_table date_month_series_table;
extern const sql_table timestamp_series_table;
extern const sql_table timestamp_month_series_table;
extern const sql_table ts_tz_series_table;
extern const sql_table ts_tz_month_series_table;

struct sql_catalogue {
    std::span<const sql_function_table *const> functions;
    std::span<const sql_aggregate_table *const> aggregates;
    std::span<const sql_table *const> tables;
};

// All that an engine gets.
extern const sql_catalogue catalogue;

// Calls visit(row) with each row of the tables, in their order.
template <typename Row>
void sql_for_each(std::span<const std::span<const Row> *const> tables, auto visit) {
    for (const std::span<const Row> *table : tables) {
        for (const Row &row : *table) visit(row);
    }
}

// The rows of several tables as one.
template <const auto &...Tables>
constexpr auto sql_join() {
    std::array<sql_function, (std::size(Tables) + ...)> all{};
    size_t end = 0;
    (
        [&] {
            for (const sql_function &row : Tables) all[end++] = row;
        }(),
        ...);
    return all;
}

}  // namespace dv::impl

#endif  // DV_SQL_CATALOGUE_H
