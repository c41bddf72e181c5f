# Plain SQL means the same with the extension as without: the type and the value of every operator and function of numbers
# and times over the server's own types, literals without a type among them, in a database that has it and in one that has not.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/cluster.sh"

name=$1
statements=$DV_RESULTS/statements.sql
cat >"$statements" <<'SQL'
CREATE FUNCTION pg_temp.given(expression text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE result text;
BEGIN
    EXECUTE format('SELECT pg_typeof(v) || '' '' || v::text FROM (SELECT %s AS v) AS _', expression) INTO result;
    RETURN coalesce(result, 'NULL');
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE || ' ' || SQLERRM;
END $$;
SET timezone = UTC;
CREATE TEMP TABLE operand AS SELECT unnest(ARRAY['5::smallint', '5', '5::bigint', '2.5', '2.5::real', '2.5::float8', '''5''', '''2.5''', 'NULL',
    'date ''2024-01-02''', 'time ''01:02:03''', 'timestamp ''2024-01-02 03:04:05''', 'timestamptz ''2024-01-02 03:04:05Z''',
    'interval ''1 day''', 'text ''7''', 'jsonb ''7''', 'oid ''7''', 'money ''7''', '''2024-01-02''', '''1 day''']) AS x;
SELECT e, pg_temp.given(e) FROM (SELECT a.x || ' ' || sign || ' ' || b.x AS e FROM operand AS a, operand AS b,
    unnest(ARRAY['+', '-', '*', '/', '%', '^', '=', '<>', '<', '<=', '>', '>=', 'IS DISTINCT FROM']) AS sign) AS _ ORDER BY e;
SELECT e, pg_temp.given(e) FROM (SELECT format(form, x) AS e FROM operand, unnest(ARRAY['- %s', '+ %s', '@ %s', '|/ %s', 'abs(%s)', 'round(%s)',
    'trunc(%s)', 'ceil(%s)', 'floor(%s)', 'sign(%s)', 'sqrt(%s)', 'exp(%s)', 'ln(%s)', 'sum(%s)', 'avg(%s)', 'min(%s)', 'max(%s)', 'count(%s)',
    'stddev(%s)', 'variance(%s)', 'bool_and(%s IS NULL)', 'to_timestamp(%s)', 'to_char(%s, ''999'')', 'to_char(%s, ''YYYY-MM-DD'')',
    'to_number(%s, ''999'')', 'to_date(%s, ''YYYY-MM-DD'')', 'to_timestamp(%s, ''YYYY-MM-DD'')', 'coalesce(%s, 1)', 'coalesce(%s, 1.5)',
    'coalesce(NULL, %s)', 'greatest(%s, 3)', 'least(%s, 3.5)', 'nullif(%s, 3)', 'to_json(%s)', 'to_jsonb(%s)', 'ARRAY[%s, 1]',
    'CASE WHEN true THEN %s ELSE 0 END', '%s IN (1, 2, 5)', '%s = ANY (ARRAY[1, 2, 5])', '%s BETWEEN 1 AND 7', 'mod(%s, 3)',
    'power(%s, 2)', 'round(%s, 1)', 'trunc(%s, 1)', 'div(%s, 2)', 'log(%s)', 'extract(year FROM %s)', 'date_trunc(''year'', %s)',
    'age(%s)', 'int4range(%s, 9)', 'numrange(%s, 9)', '%s::text', '%s::int', '%s::numeric', '%s::date', '%s::interval',
    'width_bucket(%s, 0, 10, 5)', 'make_interval(days => %s)', 'sum(%s) OVER ()', 'percentile_cont(0.5) WITHIN GROUP (ORDER BY %s)',
    'string_agg(%s, '','')', 'array_agg(%s)', 'length(%s)', '%s || ''x''', '''x'' || %s', 'concat(%s, 1)', 'md5(%s)',
    'generate_series(%s, 6)', 'random() < %s', 'jsonb_build_object(''a'', %s)', 'hashtext(%s)', 'to_hex(%s)']) AS form
    ) AS _ ORDER BY e;
SQL

shown() { cluster_psql check -A -t -q -d "$1" -f - <"$statements"; }
shown postgres >"$DV_RESULTS/without" || exit
shown "$name" >"$DV_RESULTS/with" || exit
echo "$(wc -l <"$DV_RESULTS/with") expressions"
diff "$DV_RESULTS/without" "$DV_RESULTS/with" | head -50
cmp -s "$DV_RESULTS/without" "$DV_RESULTS/with"
