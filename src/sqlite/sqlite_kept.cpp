// Blocks of what functions keep.

#include "sqlite_kept.h"

#include <cstring>

#include "sqlite_value.h"

using namespace dv::impl;

namespace {

struct making {
    const sql_keeper &keeper;
    sql_call &call;
    void *object;
};

void make_(void *arg) {
    const auto &[keeper, call, object] = *static_cast<making *>(arg);
    keeper.make(call, object);
}

}  // namespace

int dv::impl::sqlite_keep(const sql_keeper &keeper, sql_call &call, sqlite_kept **kept, dv_error_t *error) {
    *kept = nullptr;
    auto *made = static_cast<sqlite_kept *>(sqlite3_malloc64(sizeof(sqlite_kept) + keeper.size));
    if (made == nullptr) return 0;
    made->keeper = &keeper;
    memset(made->object(), 0, keeper.size);
    making request = {keeper, call, made->object()};
    const int code = dv_protect(make_, &request, error);
    if (code == 0 && call.outcome == SQL_GIVEN) {
        *kept = made;
    } else {
        sqlite_release(made);
    }
    return code;
}

void dv::impl::sqlite_release(void *kept) {
    auto *of = static_cast<sqlite_kept *>(kept);
    of->keeper->release(&sqlite_memory, of->object());
    sqlite3_free(of);
}
