-- Parallel plans: the parts' states travel between processes, and the result is that of one.
\pset format unaligned

CREATE TABLE given AS SELECT i, i % 500 AS part, v::text::number AS x, ('0 0:0:' || i % 60 || '.' || i)::dv_interval_ds AS d, v FROM (
    SELECT i, CASE i % 997 WHEN 0 THEN NULL WHEN 1 THEN 1e60 WHEN 2 THEN 1e-60 ELSE (i::bigint * 40503 % 19997 - 9999) / 100.0 END AS v
    FROM generate_series(1, 60000) AS i) AS _;
ANALYZE given;
SET max_parallel_workers_per_gather = 0;
CREATE TABLE one_total AS SELECT sum(x) AS s, avg(x) AS a, stddev(x) AS d, dv_sum_state(x) AS state, dv_variance_state(x) AS variance_state,
    sum(d) AS ds, dv_sum_state(d) AS ds_state, min(x) AS least, max(x) AS most FROM given;
CREATE TABLE one_group AS SELECT part, sum(x) AS s, avg(x) AS a, stddev(x) AS d, dv_sum_state(x) AS state, sum(d) AS ds FROM given GROUP BY part;

SET max_parallel_workers_per_gather = 2;
SET parallel_setup_cost = 0;
SET parallel_tuple_cost = 0;
SET min_parallel_table_scan_size = 0;
SET parallel_leader_participation = off;
CREATE VIEW totals AS SELECT sum(x) AS s, avg(x) AS a, stddev(x) AS d, dv_sum_state(x) AS state, dv_variance_state(x) AS variance_state,
    sum(d) AS ds, dv_sum_state(d) AS ds_state, min(x) AS least, max(x) AS most FROM given;
CREATE VIEW groups AS SELECT part, sum(x) AS s, avg(x) AS a, stddev(x) AS d, dv_sum_state(x) AS state, sum(d) AS ds FROM given GROUP BY part;
CREATE FUNCTION plan_has(query text, what text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE
    line text;
    found boolean := false;
BEGIN
    FOR line IN EXECUTE 'EXPLAIN (COSTS OFF) ' || query LOOP found := found OR line LIKE '%' || what || '%'; END LOOP;
    RETURN found;
END $$;

SELECT plan_has('SELECT * FROM totals', 'Partial Aggregate') AS partial;
SELECT count(*) AS otherwise FROM totals AS t, one_total AS o WHERE t::text <> o::text;

-- By hash in the workers, and by sorted groups.
SELECT plan_has('SELECT * FROM groups', 'Partial HashAggregate') AS partial;
SELECT count(*) AS groups, count(*) FILTER (WHERE g::text <> o::text) AS otherwise FROM groups AS g JOIN one_group AS o USING (part);
SET enable_hashagg = off;
SELECT plan_has('SELECT * FROM groups', 'Partial GroupAggregate') AS partial;
SELECT count(*) AS groups, count(*) FILTER (WHERE g::text <> o::text) AS otherwise FROM groups AS g JOIN one_group AS o USING (part);
RESET enable_hashagg;

-- States merge in parallel plans, too.
CREATE TABLE state AS SELECT i % 20000 AS part, dv_sum_state(x) AS s, dv_variance_state(x) AS v, dv_sum_state(d) AS d FROM given GROUP BY 1;
ANALYZE state;
SELECT plan_has('SELECT dv_sum_merge(s) FROM state', 'Partial Aggregate') AS partial;
SELECT dv_sum_merge(t.s) = min(o.s) AS s, dv_avg_merge(t.s) = min(o.a) AS a, dv_stddev_merge(t.v) = min(o.d) AS d,
    dv_sum_merge(t.d) = min(o.ds) AS ds, dv_count_merge(t.s) = (SELECT count(x) FROM given) AS n,
    dv_state_merge(t.s)::text = min(o.state::text) AS state, dv_state_merge(t.v)::text = min(o.variance_state::text) AS variance_state
FROM state AS t, one_total AS o;

-- Groups that do not fit the memory are written to disk and read again.
SET work_mem = '64kB';
SET max_parallel_workers_per_gather = 0;
SELECT count(*) AS groups, sum(s) = (SELECT s FROM one_total) AS same FROM (SELECT i % 30000, sum(x) AS s FROM given GROUP BY 1) AS _;
