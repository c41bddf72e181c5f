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

-- Cancelled from another session in the middle: within a second the same backend goes on with its next statement. A machine
-- that is busy with other work gets three tries.
CREATE EXTENSION dblink;
SELECT dblink_connect('worker', format('host=%s user=postgres dbname=%s', current_setting('unix_socket_directories'), current_database()));
SELECT dblink_exec('worker', 'CREATE TABLE many AS SELECT (i::bigint * 7919 % 1000003)::text::number AS v FROM generate_series(1, 300000) AS i');
CREATE FUNCTION cancelled(long text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    backend int; next_backend int; begun timestamptz; took interval; message text; next text;
BEGIN
    SELECT pid INTO backend FROM dblink('worker', 'SELECT pg_backend_pid()') AS _ (pid int);
    FOR attempt IN 1..3 LOOP
        PERFORM dblink_send_query('worker', long);
        PERFORM pg_sleep(0.2);
        begun := clock_timestamp();
        PERFORM pg_cancel_backend(backend);
        PERFORM FROM dblink_get_result('worker', false) AS _ (v text);
        message := dblink_error_message('worker');
        PERFORM FROM dblink_get_result('worker', false) AS _ (v text);
        SELECT v, pid INTO next, next_backend
            FROM dblink('worker', 'SELECT number ''1'' + number ''2'', pg_backend_pid()') AS _ (v text, pid int);
        took := clock_timestamp() - begun;
        EXIT WHEN took < '1 s';
    END LOOP;
    RETURN concat_ws(', ', CASE WHEN took < '1 s' THEN 'soon' ELSE 'late: ' || long END, next,
        substring(message, 'canceling statement due to user request'), CASE WHEN backend = next_backend THEN 'same backend' END);
END $$;
SET client_min_messages = error;
SELECT cancelled(long), count(*) FROM unnest(ARRAY[
    'SELECT sum(v) FROM (SELECT dv_series(number ''1'', ''1e15'', ''1'') AS v OFFSET 0) AS _',
    'SELECT sum(i::number), variance(i::number) FROM generate_series(1, 1000000000) AS i',
    'SELECT dv_state_merge(s) FROM (SELECT dv_sum_state(i::number) AS s FROM generate_series(1, 1000000000) AS i GROUP BY i) AS _',
    'SELECT v FROM many AS x, generate_series(1, 100) ORDER BY v OFFSET 20000000',
    'CREATE INDEX ON many (dv_power(dv_power(v, ''1.37''), ''0.73''))',
    'SELECT count(to_char(i::number, ''FM999G999G990D00'')) FROM generate_series(1, 1000000000) AS i',
    'SELECT count(to_char(dv_date ''2024-02-29'' + i % 1000, ''DAY, DD MONTH YYYY'', ''KOREAN'')) FROM generate_series(1, 1000000000) AS i',
    'SELECT count(try_to_timestamp(i::text, ''YYYY-MM-DD'')) FROM generate_series(1, 1000000000) AS i',
    'SELECT count(*) FROM many AS x, many AS y WHERE x.v + y.v = number ''-1''',
    'SELECT sum(v) OVER (ORDER BY v RANGE BETWEEN 500000 PRECEDING AND CURRENT ROW EXCLUDE TIES) FROM many',
    'COPY (SELECT v, v * v FROM many AS x, generate_series(1, 1000)) TO PROGRAM ''cat >/dev/null'' (FORMAT binary)',
    'DO ''DECLARE v number; BEGIN LOOP BEGIN v := ''''x''''::number; EXCEPTION WHEN data_exception THEN v := 1; END; END LOOP; END''']) AS long GROUP BY 1;
RESET client_min_messages;
SELECT dblink_disconnect('worker');

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
