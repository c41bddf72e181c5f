// Types of states: what aggregates are in before their result, as values that travel between processes,
// servers and releases.
//
// Their text is the hexadecimal digits of their bytes; both are checked when they come in.

#ifndef DV_POSTGRES_STATE_H
#define DV_POSTGRES_STATE_H

#include "postgres_api.h"

extern "C" {
#include <nodes/execnodes.h>
}

namespace dv::impl {

struct postgres_state_type {
    const char *name;  // in SQL
    int bytes_max;
    // The state that bytes are; NULL, or an error by itself, where they are none.
    varlena *(*read)(const uint8_t *bytes, int size);
    // Writes the bytes of a state, one sequence for each sum and count; returns how many.
    int (*write)(Datum state, uint8_t *bytes);
};

inline constexpr int POSTGRES_STATE_BYTES_MAX = 1024;  // of any type

// The functions of a type, each with the server's arguments.
Datum postgres_state_in(const postgres_state_type &type, FunctionCallInfo fcinfo);       // cstring
Datum postgres_state_out(const postgres_state_type &type, FunctionCallInfo fcinfo);      // state
Datum postgres_state_receive(const postgres_state_type &type, FunctionCallInfo fcinfo);  // internal
Datum postgres_state_send(const postgres_state_type &type, FunctionCallInfo fcinfo);     // state
Datum postgres_state_eq(const postgres_state_type &type, FunctionCallInfo fcinfo);       // state, state
Datum postgres_state_ne(const postgres_state_type &type, FunctionCallInfo fcinfo);       // state, state
Datum postgres_state_hash(const postgres_state_type &type, FunctionCallInfo fcinfo);     // state
Datum postgres_state_hash_extended(const postgres_state_type &type,
                                   FunctionCallInfo fcinfo);  // state, bigint

// Is the function called as part of an aggregate, whose state it may change where it is? As
// AggCheckCallContext tells, without a call.
inline bool postgres_in_aggregate(FunctionCallInfo fcinfo) {
    const Node *caller = fcinfo->context;
    return caller != nullptr && (IsA(caller, AggState) || IsA(caller, WindowAggState));
}

// A new varlena whose bytes are still to be written.
inline varlena *postgres_new_state(size_t bytes) {
    auto *state = static_cast<varlena *>(palloc(VARHDRSZ + bytes));
    SET_VARSIZE(state, VARHDRSZ + bytes);
    return state;
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_STATE_H
