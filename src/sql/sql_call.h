// One call of a function of the catalogue: what its body gets and gives, and what helps bodies.
//
// A body gives its result with sql_return, fails with sql_fail, or raises as the library does; then it
// returns. Whatever it gives waits in the call until the engine takes it, outside of any recovery point.

#ifndef DV_SQL_CALL_H
#define DV_SQL_CALL_H

#include <span>

#include "sql_value.h"

namespace dv::impl {

inline constexpr int SQL_PARAMS_MAX = 7;
inline constexpr int SQL_ROOM_SIZE = 1280;
inline constexpr int SQL_FAILURE_SIZE = 1152;

enum sql_outcome : uint8_t {
    SQL_GIVEN,    // the result is in the call
    SQL_FAILED,   // why is in the call
    SQL_TOO_LONG  // the result would be longer than any engine takes
};

// Made by sql_begin; plain memory, over which a raise passes.
struct sql_call {
    allocator_t *memory;  // the engine's; its throw_ raises DV_ERR_NO_MEMORY
    int argc;
    sql_outcome outcome;
    sql_value args[SQL_PARAMS_MAX];  // each of the kind that its parameter names
    void *kept;                      // what the row's keeper keeps, NULL without one
    sql_value result;                // SQL NULL until one is given. A text lies in room, in block, in kept
                                     // or is a constant
    void *block;                     // of memory; the engine frees it after the call. NULL: none
    char room[SQL_ROOM_SIZE];        // for a body's text
    int hint;                        // where what was possible begins in failure, a blank; 0: it does not
    char failure[SQL_FAILURE_SIZE];  // NUL ended, without the function's name in front
};
static_assert(std::is_trivial_v<sql_call>);

// A call whose arguments are yet to come.
inline void sql_begin(sql_call &call, allocator_t *memory) {
    call.memory = memory;
    call.argc = 0;
    call.outcome = SQL_GIVEN;
    call.kept = nullptr;
    call.result.kind = SQL_KIND_NULL;
    call.block = nullptr;
    call.hint = 0;
}

// ---------------------------------------------------------------------------------------------------------
// Results
// ---------------------------------------------------------------------------------------------------------

inline void sql_return(sql_call &call, const sql_value &value) { call.result = value; }

inline void sql_return_text(sql_call &call, const char *bytes, int length) {
    call.result.kind = SQL_KIND_TEXT;
    call.result.text = {length > 0 ? bytes : "", length};
}

// The text from the beginning of the call's room up to `end`.
inline void sql_return_room(sql_call &call, const char *end) {
    sql_return_text(call, call.room, static_cast<int>(end - call.room));
}

// A NUL-ended text that outlives the call, or lies in it.
void sql_return_text(sql_call &call, const char *text);

// The body of a function that takes a value of its result type as it is.
inline void sql_return_argument(sql_call &call) { sql_return(call, call.args[0]); }

// Memory for a result that the room does not hold, in place of `block`, with its bytes. Raises
// DV_ERR_NO_MEMORY, the old block still there.
void *sql_resize(allocator_t *memory, void *block, size_t size);

// ---------------------------------------------------------------------------------------------------------
// Failures
// ---------------------------------------------------------------------------------------------------------

// Fails the call, with a text as printf makes it; what does not fit SQL_FAILURE_SIZE is cut.
[[gnu::format(printf, 2, 3), gnu::cold]] void sql_fail(sql_call &call, const char *format, ...);

// A text as a message shows it: in quotes, and cut behind a character, with "..." then, so that it stays
// short.
struct sql_quoted {
    static constexpr int longest = 64;
    char text[longest + sizeof "\"\"..."];
};
sql_quoted sql_quote(const sql_text &text);

// The library's codes that bodies raise themselves.
enum sql_error : int {
    SQL_ERR_FIELD_UNSUPPORTED = -5006,      // the value's type does not have this field
    SQL_ERR_ITV_LEADING_PRECISION = -5064,  // more leading digits than the precision allows
    SQL_ERR_ITV_DIVISION_BY_ZERO = -5065,
    SQL_ERR_ZONE_MINUTE = -5099,  // a UTC offset that no record holds
    SQL_ERR_NLS_SETTING = -11035  // no language
};
[[noreturn, gnu::cold]] void sql_raise(sql_error code, const char *file = __builtin_FILE(),
                                       int line = __builtin_LINE(),
                                       const char *function = __builtin_FUNCTION());

// ---------------------------------------------------------------------------------------------------------
// Arguments
// ---------------------------------------------------------------------------------------------------------

// The INTEGER arguments from position `first` on as ints, as many as `ints` has. False when one does not fit;
// the call has failed then.
bool sql_get_ints(sql_call &call, int first, std::span<int> ints);

// A word of a fixed list, such as a field of a date, and what it stands for, which is not 0.
struct sql_word {
    const char *text;
    int meaning;
};

// The meaning of the word that a TEXT argument is, in any case; 0 when it is none of them: the call has
// failed then.
int sql_get_word(sql_call &call, int position, std::span<const sql_word> words);

// Does a parameter take a value of this kind? A NUMBER parameter takes INTEGER and REAL too.
constexpr bool sql_accepts(sql_kind param, sql_kind kind) {
    if (param == kind || param == SQL_KIND_ANY) return true;
    return param == SQL_KIND_NUMBER && (kind == SQL_KIND_INTEGER || kind == SQL_KIND_REAL);
}

}  // namespace dv::impl

#endif  // DV_SQL_CALL_H
