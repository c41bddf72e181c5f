#!/usr/bin/env bash
# Databases that have the extension otherwise: dumped and restored, in another schema, installed by an owner who is no
# superuser, dropped, of another encoding; and rows that go through files.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"

database=$1
sql() { cluster_psql check -q -At -v ON_ERROR_STOP=1 -d "$1" "${@:2}"; }
drop() { cluster_psql check -q -c "DROP DATABASE IF EXISTS $1 WITH (FORCE)" 2>/dev/null; }

# expect NAME GOT WANT
expect() {
    [ "$2" = "$3" ] || { printf '%s: %s instead of %s\n' "$1" "$2" "$3"; exit 1; }
}

# 100,000 rows of every type, with modifiers, NULLs and what hangs on them.
sql "$database" <<'SQL'
CREATE TABLE made (i int PRIMARY KEY, n number(12, 2), m number, d dv_date, t dv_time(3), ts dv_timestamp, tz dv_timestamptz,
    ltz dv_timestampltz, ym dv_interval_ym(4), ds dv_interval_ds(4, 3), r dv_rowid, CHECK (n > number '-1e9'));
INSERT INTO made SELECT i, (i / 7.0)::numeric(12, 2)::text::number, CASE WHEN i % 10 > 0 THEN (i::text || 'e' || i % 100 - 50)::number END,
    dv_date(1 + i % 9999, 1 + i % 12, 1 + i % 28), dv_time(i % 24, i % 60, i % 60, i % 1000 * 1000000),
    dv_timestamp(1 + i % 9999, 1 + i % 12, 1 + i % 28, i % 24, i % 60, i % 60, i),
    from_tz(dv_timestamp(2000 + i % 20, 1 + i % 12, 5 + i % 20, i % 24, i % 60, i % 60, i), CASE i % 3 WHEN 0 THEN 'Asia/Seoul' WHEN 1 THEN '-05:30' ELSE 'UTC' END),
    '2024-02-29 13:05:00 Asia/Seoul', (i % 9999 || '-' || i % 12)::dv_interval_ym, (-i % 9999 || ' 1:02:03.5')::dv_interval_ds, dv_rowid(i, i % 65536, i, 1)
    FROM generate_series(1, 100000) AS i;
CREATE INDEX ON made (n);
CREATE INDEX ON made (to_char(d, 'YYYY'));
CREATE VIEW shown AS SELECT to_char(n, 'FM999G990D00') AS n, n * number '2' AS twice FROM made;
SQL
digest="SELECT count(*), md5(string_agg(made::text, ' ' ORDER BY i)) FROM made"
want=$(sql "$database" -c "$digest")
files=$cluster_home/files
mkdir -p "$files"

for format in text binary csv; do
    sql "$database" -c "\\copy made TO '$files/rows' (FORMAT $format)"
    sql "$database" -c 'CREATE TABLE copied (LIKE made)' -c "\\copy copied FROM '$files/rows' (FORMAT $format)"
    expect "COPY $format" "$(sql "$database" -c 'SELECT count(*) FROM (TABLE made EXCEPT TABLE copied) AS _')" 0
    expect "COPY $format back" "$(sql "$database" -c "${digest/FROM made/FROM copied AS made}")" "$want"
    sql "$database" -c 'DROP TABLE copied'
done

# Dumped and restored, as a script and as an archive.
drop restored
sql postgres -c 'CREATE DATABASE restored TEMPLATE template0'
"$cluster_bin/pg_dump" -h "$cluster_home/check/socket" -U postgres "$database" >"$files/dump.sql"
sql restored -f "$files/dump.sql" >/dev/null
expect 'restored script' "$(sql restored -c "$digest")" "$want"
expect 'restored column' "$(sql restored -c "SELECT format_type(atttypid, atttypmod) FROM pg_attribute WHERE attrelid = 'made'::regclass AND attname = 'ds'")" \
    'dv_interval_ds(4,3)'
drop restored
sql postgres -c 'CREATE DATABASE restored TEMPLATE template0'
"$cluster_bin/pg_dump" -Fc -h "$cluster_home/check/socket" -U postgres "$database" >"$files/dump"
"$cluster_bin/pg_restore" -h "$cluster_home/check/socket" -U postgres -d restored "$files/dump"
expect 'restored archive' "$(sql restored -c "$digest")" "$want"
expect 'view' "$(sql restored -c 'SELECT n, twice FROM shown ORDER BY twice LIMIT 1')" '0.14|.28'
drop restored

# In a schema that is not in the search path, moved to another, and installed by an owner who is no superuser.
drop elsewhere
sql postgres -c 'CREATE ROLE owner LOGIN' -c 'CREATE DATABASE elsewhere OWNER owner TEMPLATE template0'
owner() { sql elsewhere -U owner "$@"; }
owner -c 'CREATE SCHEMA types' -c 'CREATE EXTENSION dvtypes SCHEMA types'
expect 'owned' "$(owner -c "SELECT extowner::regrole FROM pg_extension WHERE extname = 'dvtypes'")" owner
expect 'qualified' "$(owner -c "SELECT to_char, v FROM types.to_char(types.number '1234.5', '9,999.9'), types.dv_series(types.number '1', '1', '1') AS _(v)")" ' 1,234.5|1'
expect 'operators' "$(owner -c "SELECT types.number '2' OPERATOR(types.*) types.number '3', greatest(types.number '10', types.number '9')")" '6|10'
expect 'functions of int' "$(owner -c 'SELECT types.dv_typeof(1), types.dump(1)' | cut -c1-20)" 'INTEGER|type=INTEGER'
owner -c "CREATE TABLE t (v types.number(5, 1) PRIMARY KEY)" -c "INSERT INTO t VALUES ('11'), ('9.95'), ('-1')"
expect 'order' "$(owner -c 'SELECT string_agg(v::text, chr(32) ORDER BY v) FROM t')" '-1 10 11'
sql elsewhere -c 'CREATE SCHEMA others AUTHORIZATION owner' -c 'ALTER EXTENSION dvtypes SET SCHEMA others'
expect 'moved, in the path' "$(owner -c 'SET search_path = others, public' -c "SELECT v + number '1', try_to_number('x') IS NULL FROM t WHERE v > '10'")" '12|t'

# Dropped: refused while a table has it, and nothing is left behind.
expect 'drop refused' "$(owner -c 'DROP EXTENSION dvtypes' 2>&1 | grep -c 'cannot drop extension')" 1
owner -c 'DROP TABLE t' -c 'DROP EXTENSION dvtypes'
expect 'left behind' "$(owner -c "SELECT count(*) FROM pg_proc WHERE proname ~ '^(dv_|try_)'" -c "SELECT count(*) FROM pg_type WHERE typname ~ '^(dv_|number)'" | tr '\n' ' ')" '0 0 '
owner -c 'CREATE EXTENSION dvtypes' -c "SELECT number '1'" >/dev/null
drop elsewhere
sql postgres -c 'DROP ROLE owner'

# Other encodings: texts go there and back; what an encoding does not have is an error of the server's.
encoded() {
    drop encoded
    sql postgres -c "CREATE DATABASE encoded ENCODING '$1' LOCALE 'C' TEMPLATE template0"
    sql encoded -c 'CREATE EXTENSION dvtypes'
    PGCLIENTENCODING=UTF8 sql encoded -c "$2"
}
day="SELECT to_char(dv_date '2024-02-29', 'YYYY DAY', 'KOREAN')"
expect 'EUC_KR' "$(encoded EUC_KR "$day")" '2024 목요일'
expect 'EUC_KR, read' "$(encoded EUC_KR "SELECT dv_to_date('2024년 3월 1일', 'YYYY\"년\" MON DD\"일\"', 'KOREAN')")" '2024-03-01 00:00:00'
expect 'EUC_KR, length' "$(encoded EUC_KR "SELECT octet_length(to_char(dv_date '2024-02-29', 'DAY', 'KOREAN'))")" 6
expect 'LATIN1' "$(encoded LATIN1 "SELECT to_char(dv_date '2024-02-29', '\"é\"DD'), dv_to_date('29é02é2024', 'DD\"é\"MM\"é\"YYYY')")" 'é29|2024-02-29 00:00:00'
expect 'LATIN1, punctuation' "$(encoded LATIN1 "SELECT to_char(number '-1234.5', 'FM9G999D9', ',' || chr(160))")" $'-1\xc2\xa0234,5'
expect 'LATIN1 lacks it' "$(encoded LATIN1 "$day" 2>&1 | grep -c 'has no equivalent in encoding "LATIN1"')" 1
expect 'LATIN1, works then' "$(sql encoded -c "SELECT to_char(dv_date '2024-02-29', 'DAY'), try_to_number('x') IS NULL")" 'THURSDAY |t'
expect 'SQL_ASCII' "$(encoded SQL_ASCII "SELECT to_char(dv_date '2024-02-29', '\"é\"DAY'), number '1.50'")" 'éTHURSDAY |1.5'
drop encoded
