# A private PostgreSQL server, for scripts/demo: its data are gone when the demo ends.

source "$ROOT/scripts/cluster.sh"
demo_cluster=demo
engine_name="'PostgreSQL ' || current_setting('server_version')"
real_sum="sum(dv_text(mib)::double precision)::text"

query() { cluster_psql "$demo_cluster" -q -A -t -F $'\t' -v ON_ERROR_STOP=1 -c "$1"; }

range_plan() { query "EXPLAIN (COSTS OFF) $1" | sed -n '/file_by_size/{s/^ *//;s/^-> *//;p;q}'; }

engine_build() {
    need_postgres
    build_postgres "$ROOT/build/postgres"
    cluster_open "$ROOT/build/postgres"
    cluster_start demo
    cluster_psql demo -q -c 'CREATE EXTENSION dvtypes'
}

# A list as COPY reads it: a line a row, without what is no UTF-8.
as_copy_text() {
    iconv -c -f UTF-8 -t UTF-8 "$1" | awk -v RS="$record" -v ORS='\n' -F "$field" -v OFS='\t' \
        '{gsub(/\\/, "\\\\"); gsub(/\n/, "\\n"); gsub(/\t/, "\\t"); $1 = $1; print}'
}

engine_load_postgres() {
    cluster_psql demo -q -v ON_ERROR_STOP=1 -f "$ROOT/scripts/demo_postgres.sql"
    as_copy_text "$data/packages.txt" | cluster_psql demo -q -c 'COPY package (name, version, section, size) FROM STDIN'
    as_copy_text "$data/files.txt" | cluster_psql demo -q -c 'COPY file (folder, path, size, changed) FROM STDIN'
    cluster_psql demo -q -c 'ANALYZE'
}

engine_load() { engine_load_postgres; }

engine_end() { echo "  All equal. Look around: scripts/postgres"; }
