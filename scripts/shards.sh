# A coordinator and shards, private clusters all, for scripts/shards and the tests. Sourced behind cluster.sh.
#
# Each shard is a foreign server of the coordinator, which ships to it whatever is immutable in the extension
# (the option `extensions`). A sharded table is partitioned BY LIST (shard), with a foreign table for each shard.

# shards_open N: starts the clusters coordinator and shard1 to shardN, in the tree that cluster_open has made.
shards_open() {
    local i
    shards_count=$1
    cluster_start coordinator -c enable_partitionwise_aggregate=on -c enable_partitionwise_join=on -c jit=off
    shards_sql coordinator 'CREATE EXTENSION dvtypes; CREATE EXTENSION postgres_fdw; CREATE EXTENSION dblink;
        CREATE FOREIGN DATA WRAPPER shard_fdw HANDLER dv_shard_handler VALIDATOR postgres_fdw_validator'
    for ((i = 1; i <= shards_count; i++)); do
        shards_start "$i"
        shards_sql "shard$i" 'CREATE EXTENSION dvtypes'
        shards_add "$i"
    done
    shards_sql coordinator 'SELECT dv_check_shards()' >/dev/null
}

# shards_start I: a new, empty cluster for a shard.
shards_start() { cluster_start "shard$1" -c jit=off; }

# shards_sql CLUSTER STATEMENTS: runs them all or fails.
shards_sql() { cluster_psql "$1" -q -v ON_ERROR_STOP=1 -c "$2"; }

# shards_add I: makes a shard known to the coordinator. A shard that does not answer is given up after five seconds.
shards_add() {
    shards_sql coordinator "
        CREATE SERVER shard$1 FOREIGN DATA WRAPPER shard_fdw OPTIONS (
            host '$cluster_home/shard$1/socket', dbname 'postgres', extensions 'dvtypes', async_capable 'true',
            fetch_size '10000', batch_size '1000', connect_timeout '5');
        CREATE USER MAPPING FOR CURRENT_USER SERVER shard$1 OPTIONS (user 'postgres')"
}

# shards_create TABLE COLUMNS KEY [COLUMNS]: a table of these columns over all shards, with a primary key of these on
# each. The second columns are those on the shards, where some are generated.
shards_create() {
    local table=$1 columns=$2 key=$3 of_shards=${4:-$2} i
    shards_sql coordinator "CREATE TABLE $table (shard integer NOT NULL, $columns) PARTITION BY LIST (shard)"
    for ((i = 1; i <= shards_count; i++)); do
        shards_sql "shard$i" "
            CREATE TABLE $table (shard integer NOT NULL DEFAULT $i CHECK (shard = $i), $of_shards, PRIMARY KEY ($key));
            CREATE TABLE ${table}_batches (batch bigint PRIMARY KEY, rows bigint NOT NULL)"
        shards_sql coordinator "
            CREATE FOREIGN TABLE ${table}_$i PARTITION OF $table FOR VALUES IN ($i)
                SERVER shard$i OPTIONS (table_name '$table')"
    done
}

# shards_load TABLE KEY... <CSV: loads lines of CSV, whose first names the columns, by a hash of the key's columns. What
# an earlier run has loaded is left out, so that a load that was cut short is just run again.
shards_load() {
    python3 "$ROOT/scripts/shard_load.py" --psql "$cluster_bin/psql" --sockets "$cluster_home/shard%d/socket" \
        --shards "$shards_count" "$@"
}
