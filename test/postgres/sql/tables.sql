-- The tables of the catalogue as functions that return sets.

SELECT count(*) AS rows, count(DISTINCT name) AS names, count(DISTINCT number) AS numbers, bool_and(name <> '') AS named FROM dv_zones();
SELECT name, number FROM dv_zones() WHERE name IN ('Asia/Seoul', 'Etc/UTC') ORDER BY name;
SELECT code, enumerator, name, size FROM dv_types() WHERE code IN (1, 5, 21) ORDER BY code;
SELECT count(*) > 100 AS many, count(*) FILTER (WHERE manual IS NULL OR manual = '') AS without_manual FROM dv_functions();
SELECT utc, offset_before, offset_after FROM dv_zone_transitions('America/New_York') WHERE utc >= '2024-01-01' AND utc < '2025-01-01';
SELECT count(*) FROM dv_zone_transitions('Mars/Base');
SELECT count(*) FROM dv_zone_transitions(NULL);

-- Every region of the table is one that a timestamp takes.
SELECT count(*) AS regions, count(*) FILTER (WHERE dv_extract_text('TIMEZONE_REGION', at_time_zone('2024-07-01 00:00 +00:00', name)) <> name) AS wrong
    FROM dv_zones();

-- Series, in the list of values and in FROM, with LIMIT and abandoned.
SELECT value FROM dv_series(number '1', '2', '0.25');
SELECT dv_series(number '1', '3', '1') AS in_list;
SELECT value FROM dv_series(number '1', '100000', '1') LIMIT 3;
SELECT dv_series(number '1', '1e15', '1') LIMIT 2;
SELECT to_char(value, 'YYYY-MM-DD') FROM dv_series(dv_date '2024-01-31', '2024-04-30', dv_interval_ym '0-1');
SELECT value FROM dv_series(dv_timestamptz '2024-03-10 01:00 America/New_York', '2024-03-10 04:00 America/New_York', dv_interval_ds '0 1:00:00');
SELECT count(*) FROM dv_series(dv_date '2024-01-01', '2024-12-31', number '7');
SELECT count(*) FROM dv_series(number '1', '10', '0');
SELECT count(*) FROM dv_series(number '1', '-10', '1');
SELECT count(*) FROM dv_series(number '1', NULL, '1');

-- Joined sideways, a walk for each row, and two walks at once.
SELECT n, string_agg(value::text, ',') FROM (VALUES (1), (3), (0)) AS given(n), LATERAL dv_series(number '1', n::text::number, '1') GROUP BY n ORDER BY n;
SELECT count(*), count(DISTINCT (a.value, b.value)) FROM dv_series(number '1', '30', '1') AS a, dv_series(number '1', '30', '1') AS b;
SELECT count(*) FROM dv_series(number '1', '100000', '1') AS a JOIN dv_series(number '50001', '150000', '1') AS b USING (value);
SELECT a.value, b.value FROM ROWS FROM (dv_series(number '1', '2', '1'), dv_zone_transitions('Asia/Seoul')) WITH ORDINALITY AS a(value, utc, ob, ab, oa, aa, n),
    LATERAL dv_series(number '1', a.value, '1') AS b WHERE n < 3;

-- In a cursor of PL/pgSQL that is left in the middle.
DO $$
DECLARE
    found number; sum number := '0';
BEGIN
    FOR found IN SELECT value FROM dv_series(number '1', '1000', '1') LOOP
        EXIT WHEN found > number '3';
        sum := sum + found;
    END LOOP;
    RAISE NOTICE '%', sum;
END $$;

-- The planner knows how many rows a call with constants has; what it cannot know or must not complain of stays a guess.
EXPLAIN SELECT * FROM dv_series(number '1', '10000', '0.5');
EXPLAIN SELECT * FROM dv_series(dv_date '2024-01-01', '2024-12-31', dv_interval_ym '0-1');
EXPLAIN SELECT * FROM dv_zone_transitions('Asia/Seoul');
EXPLAIN SELECT * FROM dv_series(number '1', '10', '0');
EXPLAIN SELECT s.* FROM (VALUES (number '7')) AS v(n), LATERAL dv_series(number '1', n + random()::text::number, '1') AS s;
