// The server's headers, as C has them, and what makes a function of this module one of the server's.

#ifndef DV_POSTGRES_API_H
#define DV_POSTGRES_API_H

// Before the server's, which make printf and its like macros for functions of their own.
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#define PGDLLEXPORT __attribute__((visibility("default")))  // what the server looks up by name
extern "C" {
#include <postgres.h>

#include <fmgr.h>
}

static_assert(sizeof(Datum) == 8, "values of 8 bytes are passed by value");

namespace dv::impl {

// Forgets what an error of the server's own has left: the call of a row (postgres_call.h), and recovery
// points of the library.
void postgres_enter();

}  // namespace dv::impl

// Begins the definition of a function that the server finds by its name. Names begin with "dvpg_", which the
// version script exports.
// clang-format off
#define DV_POSTGRES_FUNCTION(name)                                                                    \
    extern "C" [[gnu::visibility("default")]] const Pg_finfo_record *pg_finfo_##name() {              \
        static constexpr Pg_finfo_record record = {1};                                                \
        return &record;                                                                               \
    }                                                                                                 \
    static Datum name##_body_(FunctionCallInfo fcinfo);                                               \
    extern "C" [[gnu::visibility("default")]] Datum name(FunctionCallInfo fcinfo) {                   \
        dv::impl::postgres_enter();                                                                   \
        return name##_body_(fcinfo);                                                                  \
    }                                                                                                 \
    static Datum name##_body_([[maybe_unused]] FunctionCallInfo fcinfo)
// clang-format on

#endif  // DV_POSTGRES_API_H
