#!/usr/bin/env bash
# Rows of every type travel to another server by logical replication, as text and as bytes; a key of a type finds them.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"

source_sql() { cluster_psql check -q -At -v ON_ERROR_STOP=1 -d "$1" "${@:2}"; }
target_sql() { cluster_psql replica -q -At -v ON_ERROR_STOP=1 "$@"; }
table='CREATE TABLE sent (n number PRIMARY KEY, p number(9, 2), d dv_date, t dv_time, ts dv_timestamp, tz dv_timestamptz,
    ltz dv_timestampltz, ym dv_interval_ym, ds dv_interval_ds, r dv_rowid)'
digest="SELECT count(*), md5(string_agg(sent::text, ' ' ORDER BY n)) FROM sent"

cluster_start replica
target_sql -c 'CREATE EXTENSION dvtypes' -c "$table"
source_sql "$1" -c "$table" -c 'CREATE PUBLICATION all_rows FOR TABLE sent'
source_sql "$1" <<'SQL'
INSERT INTO sent SELECT i::text::number, (i || '.005')::number, dv_date(2024, 1 + i % 12, 1 + i % 28), dv_time(i % 24, 0, 1, i),
    dv_timestamp(2024, 1, 1, 0, 0, 0, i), from_tz(dv_timestamp(2024, 1, 1, 0, 0, 0, i), CASE i % 2 WHEN 0 THEN 'Asia/Seoul' ELSE '-05:30' END),
    '2024-01-01 00:00 Asia/Seoul', '1-6', '-1 2:3:4.5', dv_rowid(i, 1, 2, 3) FROM generate_series(1, 1000) AS i;
SQL

# arrives WHAT: waits until the rows there are those here.
arrives() {
    local want got _
    want=$(source_sql "$database" -c "$digest")
    for _ in $(seq 200); do
        got=$(target_sql -c "$digest")
        [ "$got" != "$want" ] || return 0
        sleep 0.05
    done
    printf '%s: %s instead of %s\n' "$1" "$got" "$want"
    return 1
}

database=$1
for binary in false true; do
    target_sql -c "CREATE SUBSCRIPTION from_there CONNECTION 'host=$cluster_home/check/socket user=postgres dbname=$1'
        PUBLICATION all_rows WITH (binary = $binary)" 2>/dev/null
    arrives "copied, binary $binary"
    source_sql "$1" -c "UPDATE sent SET p = p + number '1.25', tz = at_time_zone(tz, 'America/New_York') WHERE n > number '500'" \
        -c "DELETE FROM sent WHERE n < number '10'" -c "INSERT INTO sent (n, ym) VALUES ('-1e125', '-999999999-11'), ('0.5', NULL)"
    arrives "changed, binary $binary"
    target_sql -c 'DROP SUBSCRIPTION from_there' -c 'TRUNCATE sent' 2>/dev/null
    source_sql "$1" -c "DELETE FROM sent WHERE n < number '1'"
done
cluster_stop replica
