// Running a row, with its keeper.

#include "sql_run.h"

#include <cstring>

#include "sql_overload.h"

using namespace dv::impl;

namespace {

struct request {
    const sql_function &row;
    sql_call &call;
    void *object;
    bool is_whole;  // the body, too
};

void run_(void *arg) {
    auto &[row, call, object, is_whole] = *static_cast<request *>(arg);
    if (row.keeper != nullptr) row.keeper->make(call, object);
    if (call.outcome != SQL_GIVEN || !is_whole) return;
    call.kept = object;
    sql_convert(call, row.signature);
    row.body(call);
}

void free_(allocator_t *memory, void *&block) {
    if (block != nullptr) memory->free(memory, block, "sql_run.cpp", __LINE__);
    block = nullptr;
}

int run_(request of, dv_error_t &error) {
    allocator_t *const memory = of.call.memory;
    const sql_keeper *keeper = of.row.keeper;
    if (keeper != nullptr) {
        of.object = sql_resize(memory, nullptr, keeper->size);
        memset(of.object, 0, keeper->size);
    }
    const int code = dv_protect(run_, &of, &error);
    if (keeper != nullptr) keeper->release(memory, of.object);
    free_(memory, of.object);
    free_(memory, of.call.block);
    if (code == DV_ERR_NO_MEMORY) dv_rethrow(&error);
    return code;
}

}  // namespace

int dv::impl::sql_run(const sql_function &row, sql_call &call, dv_error_t &error) {
    return run_({row, call, nullptr, /*is_whole=*/true}, error);
}

int dv::impl::sql_make(const sql_function &row, sql_call &call, dv_error_t &error) {
    return run_({row, call, nullptr, /*is_whole=*/false}, error);
}
