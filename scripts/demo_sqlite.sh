# SQLite, for scripts/demo: the database stays in the build folder.

dvsql=$build/bin/dvsql
database=$data/machine.db
engine_name="'SQLite ' || sqlite_version()"
real_sum="printf('%!.15g', sum(CAST(dv_text(mib) AS REAL)))"

query() { "$dvsql" -batch -bail -tabs "$database" "$1"; }

range_plan() { query "EXPLAIN QUERY PLAN $1" | sed -n 's/.*SEARCH/SEARCH/p'; }

engine_build() {
    need_packages g++ cmake ninja-build libsqlite3-dev sqlite3 tzdata libc-bin
    local log=$build/build.log
    if ! { cmake -S "$ROOT" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DDV_BUILD_TESTS=OFF -DDV_BUILD_BENCH=OFF -DDV_BUILD_SQLITE=ON &&
        cmake --build "$build" --target dvsqlite; } >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        return 1
    fi
    rm -f "$database"
}

engine_load() { (cd "$data" && "$dvsql" -batch -bail "$database" <"$ROOT/scripts/demo.sql"); }

engine_end() { echo "  All equal. Look around: ${dvsql#"$ROOT"/} ${database#"$ROOT"/}"; }
