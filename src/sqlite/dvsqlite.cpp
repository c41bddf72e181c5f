// The SQLite extension: dvtypes' values and functions in SQL. One self-contained file with one entry point.

#include "dvtypes/base.h"
#include "sqlite_load.h"

SQLITE_EXTENSION_INIT1

using namespace dv::impl;

namespace {

constexpr int _oldest_sqlite = 3'040'000;

// What SQLITE_EXTENSION_INIT2 does, but once for all connections: they may load the extension in several
// threads while others use it.
void keep_api_(const sqlite3_api_routines *api) {
    sqlite3_mutex *const mutex = api->mutex_alloc(SQLITE_MUTEX_STATIC_APP1);
    api->mutex_enter(mutex);
    if (sqlite3_api == nullptr) sqlite3_api = api;
    api->mutex_leave(mutex);
}

}  // namespace

// Called by SQLite when it loads the file; the name follows from the file's.
extern "C" DV_EXPORT int sqlite3_dvsqlite_init(sqlite3 *db, char **message, const sqlite3_api_routines *api) {
    keep_api_(api);
    if (sqlite3_libversion_number() < _oldest_sqlite) {
        *message = sqlite3_mprintf("dvsqlite needs SQLite 3.40 or later, this is %s", sqlite3_libversion());
        return SQLITE_ERROR;
    }
    return sqlite_load(db, catalogue, message);
}
