# Private PostgreSQL servers over which the rows are spread, for scripts/demo: sums are computed where the rows are, and
# every one is compared with that of one server that has them all.

source "$ROOT/scripts/demo_postgres.sh"
source "$ROOT/scripts/shards.sh"
demo_cluster=coordinator
engine_name="'PostgreSQL ' || current_setting('server_version') || ' on $shards shards'"

range_plan() { cluster_psql shard1 -q -A -t -c "EXPLAIN (COSTS OFF) $1" | sed -n '/file_by_size/{s/^ *//;s/^-> *//;p;q}'; }

engine_build() {
    need_postgres
    need_packages python3
    build_postgres "$ROOT/build/postgres"
    cluster_open "$ROOT/build/postgres"
    shards_open "$shards"
    cluster_start demo
    shards_sql demo 'CREATE EXTENSION dvtypes'
}

# A list as CSV.
as_csv() {
    echo "$2"
    iconv -c -f UTF-8 -t UTF-8 "$1" | awk -v RS="$record" -v ORS='\n' -F "$field" -v OFS=',' \
        '{for (i = 1; i <= NF; ++i) {gsub(/"/, "\"\"", $i); $i = "\"" $i "\""}; print}'
}

engine_load() {
    demo_cluster=demo engine_load_postgres
    shards_create package 'name text, version text, section text, size number, mib number' name \
        'name text, version text, section text, size number,
         mib number GENERATED ALWAYS AS (dv_round(size / 1024, 3)) STORED'
    shards_create file 'folder text, path text, size number, changed dv_date, mib number, month dv_date' path \
        'folder text, path text, size number, changed dv_date,
         mib number GENERATED ALWAYS AS (dv_round(size / 1048576, 3)) STORED,
         month dv_date GENERATED ALWAYS AS (dv_trunc(changed, $$MM$$)) STORED'
    local i
    for ((i = 1; i <= shards; i++)); do shards_sql "shard$i" 'CREATE INDEX file_by_size ON file (size)'; done
    as_csv "$data/packages.txt" name,version,section,size | shards_load package name
    as_csv "$data/files.txt" folder,path,size,changed | shards_load file path
    for ((i = 1; i <= shards; i++)); do shards_sql "shard$i" ANALYZE; done
    cluster_psql coordinator -q -v ON_ERROR_STOP=1 -f "$ROOT/scripts/demo_shards.sql"
    shards_sql coordinator ANALYZE
}

engine_end() {
    local view
    for view in section folder month; do
        query "SELECT * FROM $view ORDER BY 1" >"$data/$view.shards.txt"
        cluster_psql demo -q -A -t -F $'\t' -c "SELECT * FROM $view ORDER BY 1" | diff "$data/$view.shards.txt" - ||
            { echo "demo: $view differs (< shards, > one server)" >&2; return 1; }
    done
    echo "  All equal, and equal to those of one server."
}
