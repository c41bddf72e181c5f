// A foreign data wrapper whose errors name the server they come from: postgres_fdw's, with a line of context
// around what it does while a statement runs. Its own errors tell the remote statement, which may be a FETCH,
// and the words of a connection that is lost, which name nothing.

#include <type_traits>

#include "postgres_api.h"

extern "C" {
#include <foreign/fdwapi.h>
#include <foreign/foreign.h>
#include <utils/hsearch.h>
#include <utils/rel.h>
}

namespace {

FdwRoutine _postgres_fdw;

// ---------------------------------------------------------------------------------------------------------
// Names of servers, kept for errors: in one the catalogue is not to be read.
// ---------------------------------------------------------------------------------------------------------

struct server_name {
    Oid server;  // the key
    char name[NAMEDATALEN];
};

HTAB *_names;

void keep_name_(Oid server) {
    if (_names == nullptr) {
        HASHCTL control = {};
        control.keysize = sizeof(Oid);
        control.entrysize = sizeof(server_name);
        _names = hash_create("dvtypes names of servers", 16, &control, HASH_ELEM | HASH_BLOBS);
    }
    const char *name = GetForeignServer(server)->servername;
    auto *entry = static_cast<server_name *>(hash_search(_names, &server, HASH_ENTER, nullptr));
    strlcpy(entry->name, name, sizeof entry->name);
}

void tell_server_(void *server) {
    const auto *entry = static_cast<server_name *>(hash_search(_names, server, HASH_FIND, nullptr));
    if (entry != nullptr) errcontext("on shard \"%s\"", entry->name);
}

// ---------------------------------------------------------------------------------------------------------
// The server that a callback is for
// ---------------------------------------------------------------------------------------------------------

template <typename... Rest>
Oid server_of_(const ForeignScanState *scan, Rest...) {
    return reinterpret_cast<const ForeignScan *>(scan->ss.ps.plan)->fs_server;
}

Oid server_of_(const AsyncRequest *request) {
    return server_of_(reinterpret_cast<const ForeignScanState *>(request->requestee));
}

template <typename State, typename... Rest>
Oid server_of_(State *, const ResultRelInfo *changed, Rest...) {
    return GetForeignServerIdByRelId(RelationGetRelid(changed->ri_RelationDesc));
}

// ---------------------------------------------------------------------------------------------------------
// Callbacks with the context around them
// ---------------------------------------------------------------------------------------------------------

enum when { BEGINS, GOES_ON };  // what begins with a server keeps its name

template <when When, auto member, typename Function>
struct with_context;

template <when When, auto member, typename Result, typename... Given>
struct with_context<When, member, Result (*)(Given...)> {
    static Result call(Given... given) {
        Oid server = server_of_(given...);
        if constexpr (When == BEGINS) keep_name_(server);
        ErrorContextCallback context = {error_context_stack, tell_server_, &server};
        error_context_stack = &context;
        if constexpr (std::is_void_v<Result>) {
            (_postgres_fdw.*member)(given...);
            error_context_stack = context.previous;
        } else {
            Result result = (_postgres_fdw.*member)(given...);
            error_context_stack = context.previous;
            return result;
        }
    }
};

template <when When, auto member>
void add_context_(FdwRoutine *routine) {
    auto &callback = routine->*member;
    callback = with_context<When, member, std::remove_reference_t<decltype(callback)>>::call;
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_shard_handler) {
    const auto handler = reinterpret_cast<PGFunction>(
        load_external_function("$libdir/postgres_fdw", "postgres_fdw_handler", /*signalNotFound=*/true,
                               /*filehandle=*/nullptr));
    auto *routine = reinterpret_cast<FdwRoutine *>(DatumGetPointer(DirectFunctionCall1(handler, Datum{0})));
    _postgres_fdw = *routine;
    add_context_<BEGINS, &FdwRoutine::BeginForeignScan>(routine);
    add_context_<GOES_ON, &FdwRoutine::IterateForeignScan>(routine);
    add_context_<GOES_ON, &FdwRoutine::ReScanForeignScan>(routine);
    add_context_<GOES_ON, &FdwRoutine::EndForeignScan>(routine);
    add_context_<GOES_ON, &FdwRoutine::ForeignAsyncRequest>(routine);
    add_context_<GOES_ON, &FdwRoutine::ForeignAsyncConfigureWait>(routine);
    add_context_<GOES_ON, &FdwRoutine::ForeignAsyncNotify>(routine);
    add_context_<BEGINS, &FdwRoutine::BeginDirectModify>(routine);
    add_context_<GOES_ON, &FdwRoutine::IterateDirectModify>(routine);
    add_context_<BEGINS, &FdwRoutine::BeginForeignModify>(routine);
    add_context_<BEGINS, &FdwRoutine::BeginForeignInsert>(routine);
    add_context_<GOES_ON, &FdwRoutine::ExecForeignInsert>(routine);
    add_context_<GOES_ON, &FdwRoutine::ExecForeignBatchInsert>(routine);
    add_context_<GOES_ON, &FdwRoutine::ExecForeignUpdate>(routine);
    add_context_<GOES_ON, &FdwRoutine::ExecForeignDelete>(routine);
    PG_RETURN_POINTER(routine);
}
