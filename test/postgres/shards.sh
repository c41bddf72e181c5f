#!/usr/bin/env bash
# Faults of shards: what is refused, what is told, and what goes on afterwards. In servers of its own beside that of the
# other suites.

source "$ROOT/scripts/common.sh"
source "$ROOT/scripts/cluster.sh"
source "$ROOT/scripts/shards.sh"

cluster_home=$cluster_home/shards
mkdir -p "$cluster_home"
chmod 755 "$cluster_home"
trap 'echo "shards: line $LINENO" >&2' ERR
trap cluster_stop_all EXIT

fail() {
    echo "shards: $*" >&2
    exit 1
}

# expect TEXT: what is read has the text in it.
expect() {
    local shown
    shown=$(cat)
    case $shown in
        *"$1"*) ;;
        *) fail "\"$1\" is not in: $shown" ;;
    esac
}

ask() { cluster_psql coordinator -q -A -t -c "$1" 2>&1 || true; }

# A value alone.
equal() {
    [ "$1" = "$2" ] || fail "$3: $1, not $2"
}

rows=60000
sales() {
    awk -v rows="$rows" 'BEGIN {
        print "id,section,day,amount"
        for (i = 1; i <= rows; i++) printf "%d,section %d,2024-%02d-11,%d.%02d\n", i, i % 7, 1 + i % 12, i % 9973, i % 100
    }'
}

kill_shard() { as_server "$cluster_bin/pg_ctl" -D "$cluster_home/shard$1/data" -m immediate -s stop; }
restart_shard() {
    as_server "$cluster_bin/pg_ctl" -D "$cluster_home/shard$1/data" -l "$cluster_home/shard$1/log" -w -s \
        -o "-k $cluster_home/shard$1/socket -c listen_addresses= -c fsync=off" start
}

shards_open 3
shards_create sales 'id bigint NOT NULL, section text NOT NULL, day dv_date NOT NULL, amount number(12,2)' id

# A shard dies while a load goes on: the load says which, and the same load again brings what is missing, once.
sales >"$cluster_home/sales.csv"
begin_load() {
    { head -n 30000 "$cluster_home/sales.csv"; sleep 2; tail -n +30001 "$cluster_home/sales.csv"; } |
        shards_load sales id >"$cluster_home/load" 2>&1 || true
}
begin_load &
sleep 1
kill_shard 2
wait
expect 'shard2: ' <"$cluster_home/load"
restart_shard 2
shards_load sales id <"$cluster_home/sales.csv" | expect 'shard3: '
total=$(awk -F , 'NR > 1 {t += 100 * $4} END {printf "%d.%02d", t / 100, t % 100}' "$cluster_home/sales.csv")
equal "$(ask "SELECT count(*), count(DISTINCT id), to_char(sum(amount), 'FM999999999990.00') FROM sales")" \
    "$rows|$rows|$total" 'after the second load'
shards_load sales id <"$cluster_home/sales.csv" | expect 'shard1: 0 rows loaded now'

# What is computed where the rows are.
plan() { ask "EXPLAIN (VERBOSE, COSTS OFF) $1" | sed -n 's/^ *Remote SQL: //p'; }
plan "SELECT count(*) FROM sales WHERE amount > number '5' AND day >= dv_date '2024-03-01'" |
    expect "WHERE ((amount OPERATOR(public.>) '5')) AND ((day OPERATOR(public.>=) '2024-03-01 00:00:00'))"
plan "SELECT id FROM sales WHERE dv_round(amount * number '1.19', 2) > number '100'" |
    expect "WHERE ((public.dv_round((amount OPERATOR(public.*) '1.19'), 2::bigint) OPERATOR(public.>) '100'"
plan 'SELECT id, amount FROM sales ORDER BY amount' | expect 'ORDER BY amount ASC NULLS LAST'
plan 'SELECT id, amount FROM sales_2 ORDER BY day LIMIT 3' | expect 'LIMIT 3'
plan 'SELECT section, sum(amount), max(day) FROM sales_2 GROUP BY section' |
    expect 'SELECT section, public.sum(amount), public.max(day) FROM public.sales GROUP BY 1'
states='SELECT section, dv_sum_merge(s) FROM
    (SELECT section, dv_sum_state(amount) AS s FROM sales GROUP BY shard, section) AS p GROUP BY section'
plan "$states" | expect 'public.dv_sum_state(amount), shard FROM public.sales GROUP BY'
plan "$(ask "SELECT dv_sharded_sql('sales', 'amount', 'section')")" |
    expect 'public.dv_sum_state(amount) FROM public.sales GROUP BY'
equal "$(ask "SELECT key, count, sum, avg FROM dv_sharded_sum('sales', 'amount', 'section') ORDER BY key")" \
    "$(ask 'SELECT section, count(*), sum(amount), avg(amount) FROM sales GROUP BY section ORDER BY section')" \
    'sums in two levels'
equal "$(ask "SELECT count, sum, avg FROM dv_sharded_sum('sales', 'amount')")" \
    "$(ask 'SELECT count(*), sum(amount), avg(amount) FROM sales')" 'a sum in two levels'

# In three levels: a server above the coordinator merges the states that a view there has.
shards_sql coordinator "CREATE VIEW section_state AS SELECT section, dv_state_merge(s) AS s
    FROM (SELECT section, dv_sum_state(amount) AS s FROM sales GROUP BY shard, section) AS shards GROUP BY section"
shards_sql shard1 "CREATE EXTENSION postgres_fdw;
    CREATE SERVER middle FOREIGN DATA WRAPPER postgres_fdw OPTIONS (
        host '$cluster_home/coordinator/socket', dbname 'postgres', extensions 'dvtypes');
    CREATE USER MAPPING FOR CURRENT_USER SERVER middle OPTIONS (user 'postgres');
    CREATE FOREIGN TABLE section_state (section text, s dv_number_state) SERVER middle"
equal "$(cluster_psql shard1 -q -A -t -c \
    'SELECT section, dv_sum_merge(s) FROM section_state GROUP BY section ORDER BY section')" \
    "$(ask 'SELECT section, sum(amount) FROM sales GROUP BY section ORDER BY section')" 'sums in three levels'

# The same by PL/Proxy.
shards_sql coordinator "CREATE EXTENSION plproxy;
    CREATE SERVER shards FOREIGN DATA WRAPPER plproxy OPTIONS (modular_mapping '1',
        p0 'dbname=postgres host=$cluster_home/shard1/socket', p1 'dbname=postgres host=$cluster_home/shard2/socket',
        p2 'dbname=postgres host=$cluster_home/shard3/socket');
    CREATE USER MAPPING FOR CURRENT_USER SERVER shards OPTIONS (user 'postgres');
    CREATE FUNCTION section_states(OUT section text, OUT s dv_number_state) RETURNS SETOF record LANGUAGE plproxy AS \$\$
        CLUSTER 'shards';
        RUN ON ALL;
        SELECT section, dv_sum_state(amount) AS s FROM sales GROUP BY section;
    \$\$"
equal "$(ask 'SELECT section, dv_sum_merge(s) FROM section_states() GROUP BY section ORDER BY section')" \
    "$(ask 'SELECT section, sum(amount) FROM sales GROUP BY section ORDER BY section')" 'sums by PL/Proxy'

# Rows move to a new shard, also when copying them is begun again; none is lost, none is there twice.
before=$(ask 'SELECT count(*), count(DISTINCT id), sum(amount) FROM sales')
shards_start 4
shards_sql shard4 'CREATE EXTENSION dvtypes; CREATE TABLE sales (shard integer NOT NULL DEFAULT 4 CHECK (shard = 4),
    id bigint PRIMARY KEY, section text NOT NULL, day dv_date NOT NULL, amount number(12,2))'
shards_add 4
shards_sql coordinator "BEGIN; CREATE FOREIGN TABLE sales_4 PARTITION OF sales FOR VALUES IN (4) SERVER shard4
    OPTIONS (table_name 'sales'); ALTER TABLE sales DETACH PARTITION sales_4; COMMIT"
copy='INSERT INTO sales_4 (shard, id, section, day, amount) SELECT 4, id, section, day, amount FROM sales_1'
shards_sql coordinator "$copy WHERE id < 20000 ON CONFLICT DO NOTHING"
shards_sql coordinator "$copy WHERE id < 30000 ON CONFLICT DO NOTHING"
equal "$(ask 'SELECT count(*), count(DISTINCT id), sum(amount) FROM sales')" "$before" 'while rows are copied'
shards_sql coordinator 'BEGIN; DELETE FROM sales_1 WHERE id < 30000;
    ALTER TABLE sales ATTACH PARTITION sales_4 FOR VALUES IN (4); COMMIT'
equal "$(ask 'SELECT count(*), count(DISTINCT id), sum(amount) FROM sales')" "$before" 'after the move'
equal "$(ask 'SELECT count(*) > 1000 FROM sales WHERE shard = 4')" t 'rows that have moved'

# A shard that dies in the middle of a query is named, in time, whether rows or sums of it are waited for, alone or beside
# other shards, in their order or as they come; the next query after its restart works.
shards_sql shard3 'CREATE VIEW slow AS SELECT shard, amount + length(pg_sleep(0.001)::text) AS amount FROM sales'
shards_sql coordinator "CREATE TABLE slow (shard integer NOT NULL, amount number) PARTITION BY LIST (shard);
    CREATE FOREIGN TABLE slow_2 PARTITION OF slow FOR VALUES IN (2) SERVER shard2 OPTIONS (table_name 'sales');
    CREATE FOREIGN TABLE slow_3 PARTITION OF slow FOR VALUES IN (3) SERVER shard3 OPTIONS (table_name 'slow')"
is_busy() {
    cluster_psql "shard$1" -q -A -t -c \
        "SELECT 1 FROM pg_stat_activity WHERE application_name = 'postgres_fdw' AND state = 'active'" | grep -q 1
}
dies() {
    local begin=$SECONDS
    (for _ in {1..100}; do ! is_busy 3 || break; sleep 0.1; done; kill_shard 3) &
    ask "$1" | expect "$2"
    [ $((SECONDS - begin)) -lt 15 ] || fail "a dead shard is noticed too late: $1"
    wait
}
while IFS= read -r query; do
    dies "$query" 'on shard "shard3"'
    restart_shard 3
done <<'QUERIES'
SELECT sum(amount) FROM slow WHERE shard = 3
SELECT amount FROM slow
SELECT amount FROM slow ORDER BY amount
SELECT shard, count(amount) FROM slow GROUP BY shard
QUERIES
dies "SELECT * FROM dv_sharded_sum('slow', 'amount')" 'shard shard3: server closed the connection'
ask "SELECT sum FROM dv_sharded_sum('sales', 'amount')" | expect 'shard shard3: could not establish connection'
ask 'SELECT count(*) FROM sales' | expect 'could not connect to server "shard3"'
equal "$(ask 'SELECT shard FROM dv_shards() WHERE problem IS NOT NULL')" shard3 'shards with a problem'
restart_shard 3
equal "$(ask "SELECT count FROM dv_sharded_sum('sales', 'amount')")" "$rows" 'after the restart'

# What a shard refuses is told with its name, too.
ask "INSERT INTO sales SELECT shard, id FROM sales WHERE shard = 2 LIMIT 3" | expect 'on shard "shard2"'
ask 'UPDATE sales SET section = NULL WHERE shard = 3' | expect 'on shard "shard3"'
ask 'WITH taken AS (DELETE FROM sales WHERE shard = 1 AND id / 0 = 1 RETURNING 1) SELECT FROM taken' |
    expect 'on shard "shard1"'

# A shard with another version of the extension, or without it, is refused.
shards_sql shard1 "UPDATE pg_extension SET extversion = '0.1' WHERE extname = 'dvtypes'"
ask "SELECT * FROM dv_sharded_sum('sales', 'amount')" | expect 'shard shard1 has version 0.1 of dvtypes, this server has '
shards_sql shard1 "DELETE FROM pg_extension WHERE extname = 'dvtypes'"
ask 'SELECT dv_check_shards()' | expect 'shard shard1: the extension dvtypes is missing'

# A state that is none is refused, whatever it claims to be.
shards_sql shard2 'CREATE TABLE lies (shard integer DEFAULT 2, s text)'
shards_sql coordinator "CREATE FOREIGN TABLE lies (shard integer, s dv_number_state) SERVER shard2"
merged='SELECT dv_sum_merge(s) FROM (SELECT s FROM lies OFFSET 0) AS l'  # here, not on the shard
honest=$(ask 'SELECT dv_sum_state(amount) FROM sales WHERE shard = 2 AND id < 100')
for lie in '' x 0 00 01 "02${honest#??}" "0101${honest#????}" "${honest:0:20}" "${honest:0:24}00${honest:24}" \
    "$(printf '01%.0sff' {1..300})"; do
    shards_sql shard2 "DELETE FROM lies; INSERT INTO lies (s) VALUES ('$lie')"
    ask "$merged" | grep -q 'ERROR:  .*\(not those of a total\|invalid input syntax\|invalid bytes\)' || fail "the state '$lie' is taken"
done
shards_sql shard2 "DELETE FROM lies; INSERT INTO lies (s) VALUES ('$honest')"
equal "$(ask "$merged")" "$(ask 'SELECT sum(amount) FROM sales WHERE shard = 2 AND id < 100')" \
    'an honest state'
