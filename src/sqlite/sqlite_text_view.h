// Views that show the values of a table as text and take text: dv_create_text_view, dv_drop_text_view.

#ifndef DV_SQLITE_TEXT_VIEW_H
#define DV_SQLITE_TEXT_VIEW_H

#include <span>

#include "sqlite_api.h"

namespace dv::impl {

// A function that SQLite alone has. It changes the schema, so nothing that is stored in one may call it.
struct sqlite_own_function {
    const char *name;
    int arity;
    void (*call)(sqlite3_context *context, int argc, sqlite3_value **argv);
};

extern const std::span<const sqlite_own_function> sqlite_own_functions;

}  // namespace dv::impl

#endif  // DV_SQLITE_TEXT_VIEW_H
