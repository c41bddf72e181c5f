// DuckDB as a peer, through the C interface of its shared library, which is loaded while the program runs:
// the file comes out of a package that scripts/bench unpacks into the build folder. Without it its cases are
// left out.

#ifndef DV_BENCH_DUCKDB_H
#define DV_BENCH_DUCKDB_H

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace dv::bench {

class duckdb {
  public:
    // The one database in memory, which works in one thread; NULL without the library.
    static duckdb *get() {
        static duckdb database;
        return database.connection_ != nullptr ? &database : nullptr;
    }

    // Runs a statement, which must not fail; the first value of the first row as a text.
    std::string run(const std::string &sql) {
        result_t result{};
        if (query_(connection_, sql.c_str(), &result) != 0) {
            std::fprintf(stderr, "%s: %s\n", sql.c_str(), result_error_(&result));
            std::exit(1);
        }
        char *const text = value_varchar_(&result, 0, 0);
        const std::string value = text != nullptr ? text : "";
        free_(text);
        destroy_result_(&result);
        return value;
    }

  private:
    // duckdb_result, whose members are its own.
    struct result_t {
        uint64_t counts[3];
        void *columns, *error_message, *internal_data;
    };

    duckdb() {
        void *const library = dlopen(DV_DUCKDB, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) return;
        int (*open)(const char *path, void **database) = nullptr;
        int (*connect)(void *database, void **connection) = nullptr;
        find_(library, "duckdb_open", open);
        find_(library, "duckdb_connect", connect);
        find_(library, "duckdb_query", query_);
        find_(library, "duckdb_result_error", result_error_);
        find_(library, "duckdb_value_varchar", value_varchar_);
        find_(library, "duckdb_free", free_);
        find_(library, "duckdb_destroy_result", destroy_result_);
        void *database = nullptr;
        if (open(nullptr, &database) != 0 || connect(database, &connection_) != 0) connection_ = nullptr;
        if (connection_ != nullptr) run("SET threads = 1");
    }
    template <typename Function>
    static void find_(void *library, const char *symbol, Function *&function) {
        function = reinterpret_cast<Function *>(dlsym(library, symbol));
        if (function != nullptr) return;
        std::fprintf(stderr, "%s: no %s\n", DV_DUCKDB, symbol);
        std::exit(1);
    }

    void *connection_ = nullptr;
    int (*query_)(void *connection, const char *sql, result_t *result) = nullptr;
    const char *(*result_error_)(result_t *result) = nullptr;
    char *(*value_varchar_)(result_t *result, uint64_t column, uint64_t row) = nullptr;
    void (*free_)(void *memory) = nullptr;
    void (*destroy_result_)(result_t *result) = nullptr;
};

}  // namespace dv::bench

#endif  // DV_BENCH_DUCKDB_H
