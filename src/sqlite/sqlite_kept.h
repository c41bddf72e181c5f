// What functions keep (sql_keeper) as blocks of SQLite's memory, with what releases them.

#ifndef DV_SQLITE_KEPT_H
#define DV_SQLITE_KEPT_H

#include "sql_catalogue.h"
#include "sqlite_api.h"

namespace dv::impl {

// In front of an object.
struct alignas(8) sqlite_kept {
    const sql_keeper *keeper;

    void *object() { return this + 1; }
};

// Makes the object of a call: 0, or the code that was raised, with *error filled in. *kept is NULL then, and
// also when there is no memory or the call has failed.
int sqlite_keep(const sql_keeper &keeper, sql_call &call, sqlite_kept **kept, dv_error_t *error);

// Releases the object, and the block.
void sqlite_release(void *kept);

}  // namespace dv::impl

#endif  // DV_SQLITE_KEPT_H
