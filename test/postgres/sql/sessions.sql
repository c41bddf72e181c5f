-- What a session goes through: cancelled work, a million failures, parallel plans.

-- Long work is cancelled soon, and the session goes on as the same.
SELECT pg_backend_pid() AS pid \gset
SET statement_timeout = '150ms';
SELECT clock_timestamp() AS begun \gset
SELECT count(*) FROM dv_series(number '1', '1e15', '1');
SELECT count(*) FROM (SELECT dv_series(number '1', '1e15', '1') OFFSET 0) AS _;
SELECT max(v) FROM (SELECT (i * 7919 % 1000003)::text::number AS v FROM generate_series(1, 100000000) AS i ORDER BY 1 OFFSET 5) AS _;
SELECT count(*) FROM generate_series(1, 100000000) AS i WHERE try_to_date(i::text, 'YYYY-MM-DD') IS NOT NULL;
SELECT count(DISTINCT to_char(dv_date '2024-01-01', 'YYYY' || i)) FROM generate_series(1, 100000000) AS i;
RESET statement_timeout;
SELECT clock_timestamp() - :'begun' < '10 s' AS soon, pg_backend_pid() = :pid AS same, number '1' + number '2' AS works;

-- A million failing rows, caught and tried, leave the memory of the process as it was.
CREATE FUNCTION fails(rows int) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
    failures bigint := 0; v number; d dv_date;
BEGIN
    FOR i IN 1..rows LOOP
        BEGIN
            IF i % 2 = 0 THEN v := (i || 'x')::number; ELSE d := dv_to_date(i || '.13.2024', 'DD.MM.YYYY'); END IF;
        EXCEPTION WHEN data_exception THEN
            failures := failures + 1;
        END;
    END LOOP;
    RETURN failures;
END $$;
CREATE FUNCTION tries(rows int) RETURNS bigint LANGUAGE sql AS
    $$SELECT count(*) FROM generate_series(1, rows) AS i WHERE try_to_number(i || 'x') IS NULL
        AND try_to_timestamp(i || '.13.2024', CASE WHEN i % 2 = 0 THEN 'DD.MM.YYYY' ELSE 'no model' || i % 100 END) IS NULL$$;
CREATE FUNCTION resident() RETURNS bigint LANGUAGE sql AS
    $$SELECT split_part(pg_read_file('/proc/self/statm'), ' ', 2)::bigint * 4096$$;
CREATE FUNCTION contexts() RETURNS numeric LANGUAGE sql AS $$SELECT sum(total_bytes) FROM pg_backend_memory_contexts$$;
SELECT fails(20000), tries(20000);
SELECT resident() AS resident, contexts() AS contexts \gset
SELECT fails(300000), tries(700000);
SELECT resident() - :resident < 4000000 AS resident_as_before, contexts() - :contexts < 1000000 AS contexts_as_before;
SELECT count(*) AS models_left FROM pg_backend_memory_contexts WHERE name = 'dvtypes model';

-- Parallel workers give what one process gives, in every step that they may run.
CREATE TABLE facts AS SELECT (i % 100)::text::number AS k, (i / 7.0)::text::number AS v, dv_date(2024, 1 + i % 12, 1) AS d,
    to_char(i % 31 + 1, 'FM00') || '.01.2024' AS t FROM generate_series(1, 50000) AS i;
ANALYZE facts;
CREATE VIEW report AS SELECT k, count(*) AS n, min(v) AS least, max(v) AS most, max(to_char(d, 'MONTH', 'KOREAN')) AS month,
    max(dv_to_date(t, 'DD.MM.YYYY')) AS day, count(DISTINCT d) AS days, max(v * v + k) AS formula FROM facts
    WHERE try_to_date(t, 'DD.MM.YYYY') IS NOT NULL GROUP BY k;
SET max_parallel_workers_per_gather = 0;
CREATE TABLE serial AS SELECT * FROM report;
SET max_parallel_workers_per_gather = 4;
SET parallel_setup_cost = 0;
SET parallel_tuple_cost = 0;
SET min_parallel_table_scan_size = 0;
CREATE FUNCTION is_parallel(query text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE
    plan text;
BEGIN
    EXECUTE 'EXPLAIN (FORMAT json) ' || query INTO plan;
    RETURN plan LIKE '%Gather%';
END $$;
SELECT is_parallel('SELECT * FROM report'), is_parallel('SELECT k, max(v), min(d) FROM facts GROUP BY k'),
    is_parallel('SELECT v FROM facts ORDER BY v'), is_parallel('SELECT count(*) FROM facts AS x JOIN facts AS y USING (v)');
SELECT count(*) AS otherwise FROM (TABLE report EXCEPT TABLE serial) AS _;
SELECT count(*) FROM facts AS x JOIN facts AS y USING (v);
CREATE INDEX facts_v ON facts (v, d);  -- sorted by workers
SELECT count(*) AS wrong FROM (SELECT v, lag(v) OVER () AS before FROM (SELECT v FROM facts ORDER BY v) AS _) AS _ WHERE v < before;
SELECT to_char(dv_date '2024-01-01', model) FROM unnest(ARRAY['YYYY', 'MON']) AS model;
SELECT max(dv_sqrt(k - number '5')) FROM facts;  -- an error in a worker is that of the statement
