// SQLite as an extension sees it: every call goes through the table that SQLite hands over when it loads us.

#ifndef DV_SQLITE_API_H
#define DV_SQLITE_API_H

#include <sqlite3ext.h>

SQLITE_EXTENSION_INIT3

#endif  // DV_SQLITE_API_H
