-- Operators as users write them: integers beside NUMBER, days beside DATE, and types beside each other.
\pset format unaligned
SET datestyle = ISO;

-- What an expression gives and of what type, or its error.
CREATE FUNCTION given(expression text, OUT type text, OUT value text) LANGUAGE plpgsql AS $$
BEGIN
    EXECUTE format('SELECT pg_typeof(v)::text, v::text FROM (SELECT %s AS v) AS _', expression) INTO type, value;
EXCEPTION WHEN OTHERS THEN
    value := SQLSTATE || ' ' || SQLERRM;
END $$;

-- Classes and operators are whole: the server's own checks, and commutators and negators that are each other's.
SELECT opcname FROM pg_opclass WHERE oid IN (SELECT objid FROM pg_depend WHERE refclassid = 'pg_extension'::regclass
    AND classid = 'pg_opclass'::regclass) AND NOT amvalidate(oid);
SELECT oid::regoperator AS lacks FROM pg_operator AS o WHERE oprcode = 0
    OR (oprcom <> 0 AND NOT EXISTS (SELECT FROM pg_operator AS c WHERE c.oid = o.oprcom AND c.oprcom = o.oid))
    OR (oprnegate <> 0 AND NOT EXISTS (SELECT FROM pg_operator AS n WHERE n.oid = o.oprnegate AND n.oprnegate = o.oid));

-- Integers are taken for NUMBERs; a literal with a point is the server's numeric, so NUMBER goes to numeric, exactly.
SELECT e AS expression, g.* FROM unnest(ARRAY[
    'number ''5'' > 3', 'number ''5'' >= 5::bigint', 'number ''5'' = 5::smallint', '5 = number ''5''', 'number ''5'' IN (1, 5)',
    'number ''5'' = ANY (ARRAY[1, 5])', 'number ''5'' BETWEEN 4 AND 6', 'number ''5.5'' > ''5.4''', 'number ''5'' + 1',
    '1 - number ''5''', 'number ''5'' * 2::bigint', 'number ''5'' / 2', 'number ''5'' % 3', '- number ''5''',
    'coalesce(number ''5'', 0)', 'coalesce(0, number ''5'')', 'CASE WHEN true THEN 0 ELSE number ''5'' END',
    'greatest(1, number ''5'')', 'nullif(number ''5'', 5)', 'number ''5'' > 4.5', 'number ''5'' * 1.5', 'round(number ''2.345'', 2)',
    'number ''5'' > 4.5::float8', 'ARRAY[1, number ''2'']', 'number ''0.1'' + number ''0.2'' = ''0.3''']) AS e, given(e) AS g;

-- Days.
SELECT e AS expression, g.* FROM unnest(ARRAY[
    'dv_date ''2024-02-28'' + 2', '2 + dv_date ''2024-02-28''', 'dv_date ''2024-03-01'' - 1', 'dv_date ''2024-03-01'' - 0.25',
    'dv_date ''2024-03-01'' + number ''0.25''', 'number ''0.25'' + dv_date ''2024-03-01''', 'dv_date ''2024-03-01'' - number ''1''',
    '0.5 + dv_date ''2024-03-01''', 'dv_date ''2024-03-01'' + 1::smallint', 'dv_date ''2024-03-01'' + 1::bigint',
    'dv_date ''2024-03-01'' - (1.0 / 86400)', 'dv_date ''9999-12-31'' + 1', 'dv_date ''2024-03-01'' + ''NaN''::float8',
    'dv_date ''2024-03-01'' - ''Infinity''::float8', 'dv_date ''2024-03-01'' + 1e300', 'dv_sub_days(dv_date ''2024-03-01'', 1)']) AS e,
    given(e) AS g;

-- Intervals.
SELECT e AS expression, g.* FROM unnest(ARRAY[
    'dv_timestamp ''2024-03-01 00:00:00'' - dv_timestamp ''2024-02-28 12:00:00''', 'dv_date ''2024-03-01'' - dv_date ''2024-02-28''',
    'dv_date ''2024-03-01'' + dv_interval_ym ''0-1''', 'dv_interval_ds ''1 0:0:0'' + dv_timestamp ''2024-03-01 00:00:00''',
    'dv_interval_ds ''1 0:0:0'' * 3', '3 * dv_interval_ds ''1 0:0:0''', 'dv_interval_ds ''1 0:0:0'' * ''1.5''',
    'dv_interval_ym ''1-0'' / 5', '- dv_interval_ds ''1 0:0:0''', 'dv_interval_ym ''1-0'' - dv_interval_ym ''0-1''',
    'dv_timestampltz ''2024-03-01 00:00:00 UTC'' - dv_timestamptz ''2024-03-01 00:00:00 Asia/Seoul''']) AS e, given(e) AS g;

-- Types beside each other: every operator agrees with dv_cmp, for pairs of all values.
CREATE TABLE d (v dv_date);
INSERT INTO d SELECT dv_date '2024-02-29' + i / 4.0 FROM generate_series(-8, 8) AS i;
CREATE TABLE t (v dv_timestamp);
INSERT INTO t SELECT v FROM d UNION ALL SELECT v::dv_timestamp + dv_interval_ds '0 0:0:0.000000001' FROM d
    UNION ALL SELECT v::dv_timestamp - dv_interval_ds '0 0:0:0.000000001' FROM d;
CREATE TABLE z (v dv_timestamptz);
INSERT INTO z SELECT from_tz(v, zone) FROM t, unnest(ARRAY['+00:00', 'Asia/Seoul', 'America/New_York']) AS zone;
CREATE FUNCTION disagree(x text, y text) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE result bigint;
BEGIN
    EXECUTE format('SELECT count(*) FILTER (WHERE (x.v < y.v) <> (dv_cmp(x.v, y.v) < 0) OR (x.v <= y.v) <> (dv_cmp(x.v, y.v) <= 0)
        OR (x.v = y.v) <> (dv_cmp(x.v, y.v) = 0) OR (x.v <> y.v) <> (dv_cmp(x.v, y.v) <> 0)
        OR (x.v > y.v) <> (dv_cmp(x.v, y.v) > 0) OR (x.v >= y.v) <> (dv_cmp(x.v, y.v) >= 0)
        OR dv_cmp(x.v, y.v) <> -dv_cmp(y.v, x.v)) FROM %I AS x, %I AS y', x, y) INTO result;
    RETURN result;
END $$;
SELECT x, y, disagree(x, y) FROM (VALUES ('d', 't'), ('t', 'd'), ('d', 'z'), ('z', 'd'), ('d', 'd'), ('t', 't'), ('z', 'z')) AS _ (x, y);
SELECT count(*) FROM d, t WHERE d.v = t.v;

-- DATE and TIMESTAMP are of one family: merge joins, and indexes on either serve the other. Not so with zones.
SET enable_hashjoin = off; SET enable_nestloop = off; SET enable_seqscan = off; SET enable_bitmapscan = off;
EXPLAIN (COSTS OFF) SELECT count(*) FROM d JOIN t ON d.v = t.v;
SELECT count(*) FROM d JOIN t ON d.v = t.v;
CREATE INDEX ON t (v);
CREATE INDEX ON d (v);
EXPLAIN (COSTS OFF) SELECT * FROM t WHERE v >= dv_date '2024-02-29' AND v < dv_date '2024-03-01';
SELECT count(*) FROM t WHERE v >= dv_date '2024-02-29' AND v < dv_date '2024-03-01';
EXPLAIN (COSTS OFF) SELECT * FROM d WHERE v > dv_timestamp '2024-02-29 00:00:00.000000001';
SELECT min(v) FROM d WHERE v > dv_timestamp '2024-02-29 00:00:00.000000001';
EXPLAIN (COSTS OFF) SELECT * FROM d WHERE v > dv_timestamptz '2024-02-29 00:00:00 UTC';
RESET ALL;
SET datestyle = ISO;

-- An index serves integers; a literal with a point is written as a text.
CREATE TABLE amounts (amount number);
INSERT INTO amounts SELECT i / number '7' FROM generate_series(1, 20000) AS i;
CREATE INDEX ON amounts (amount);
CREATE INDEX ON amounts USING brin (amount);
ANALYZE amounts;
SET enable_bitmapscan = off;
EXPLAIN (COSTS OFF) SELECT * FROM amounts WHERE amount > 2850;
EXPLAIN (COSTS OFF) SELECT * FROM amounts WHERE amount IN (1, 2, 3);
EXPLAIN (COSTS OFF) SELECT * FROM amounts WHERE amount > '2850.5';
EXPLAIN (COSTS OFF) SELECT * FROM amounts WHERE amount > 2850.5;
CREATE INDEX ON amounts ((amount::numeric));
ANALYZE amounts;
EXPLAIN (COSTS OFF) SELECT * FROM amounts WHERE amount > 2850.5;
SELECT count(*) FILTER (WHERE amount > 2850.5), count(*) FILTER (WHERE amount > '2850.5') FROM amounts;
RESET ALL;

-- Estimates go by the histogram, within a hundredth of the rows.
CREATE FUNCTION estimate(condition text, OUT is_near boolean) LANGUAGE plpgsql AS $$
DECLARE plan json; actual bigint;
BEGIN
    EXECUTE 'EXPLAIN (FORMAT JSON) SELECT * FROM amounts WHERE ' || condition INTO plan;
    EXECUTE 'SELECT count(*) FROM amounts WHERE ' || condition INTO actual;
    is_near := abs((plan->0->'Plan'->>'Plan Rows')::numeric - actual) <= 200;
END $$;
SELECT c AS condition, e.* FROM unnest(ARRAY['amount > 2000', 'amount <= 100', 'amount < ''1428.5''', 'amount BETWEEN 500 AND 900',
    'amount = 7', 'amount >= 2850']) AS c, estimate(c) AS e;
