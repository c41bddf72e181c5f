-- Moving frames: rows that leave are taken out exactly. Each result is that of an aggregate over the frame alone.
\pset format unaligned

CREATE TABLE given AS SELECT i, i % 4 AS part, i / 3 AS peer, v, v::text::number AS x FROM (
    SELECT i, CASE i % 11 WHEN 0 THEN NULL WHEN 1 THEN 1e60 WHEN 2 THEN 1e-60 WHEN 3 THEN -1e60
        ELSE (i * 40503 % 19997 - 9999) / 100.0 END AS v FROM generate_series(1, 400) AS i) AS _;

-- Over a frame, beside the aggregate of its rows put together as an array.
CREATE FUNCTION frames(clause text, OUT rows bigint, OUT sums bigint, OUT averages bigint, OUT deviations bigint) LANGUAGE plpgsql AS $$
BEGIN
    EXECUTE format('WITH framed AS (SELECT sum(x) OVER w AS s, avg(x) OVER w AS a, stddev(x) OVER w AS d,
            array_agg(x) OVER w AS frame FROM given WINDOW w AS (%s)),
        alone AS (SELECT f.*, b.* FROM framed AS f, LATERAL (SELECT sum(y) AS s2, avg(y) AS a2, stddev(y) AS d2 FROM unnest(f.frame) AS y) AS b)
        SELECT count(*), count(*) FILTER (WHERE s IS DISTINCT FROM s2), count(*) FILTER (WHERE a IS DISTINCT FROM a2),
            count(*) FILTER (WHERE d IS DISTINCT FROM d2) FROM alone', clause) INTO rows, sums, averages, deviations;
END $$;
SELECT clause, f.* FROM unnest(ARRAY['ORDER BY i', 'PARTITION BY part ORDER BY i ROWS 3 PRECEDING',
    'ORDER BY i ROWS BETWEEN 5 PRECEDING AND 2 PRECEDING', 'ORDER BY i ROWS BETWEEN 2 FOLLOWING AND 9 FOLLOWING',
    'ORDER BY i ROWS BETWEEN 1 PRECEDING AND 1 FOLLOWING EXCLUDE CURRENT ROW', 'ORDER BY peer RANGE BETWEEN 2 PRECEDING AND CURRENT ROW',
    'ORDER BY peer GROUPS BETWEEN 1 PRECEDING AND 1 FOLLOWING', 'PARTITION BY i', 'ORDER BY i ROWS BETWEEN CURRENT ROW AND UNBOUNDED FOLLOWING',
    '']) AS clause, frames(clause) AS f;

-- Beside numeric, which has the same inverse.
SELECT count(*) AS otherwise FROM (SELECT sum(x) OVER w AS x, sum(v) OVER w AS v FROM given WHERE abs(v) < 1e50 AND abs(v) > 1e-50
    WINDOW w AS (PARTITION BY part ORDER BY i ROWS 6 PRECEDING)) AS _ WHERE x::text::numeric <> v;

-- States of frames are values of their own: later rows do not change them.
SELECT i, dv_sum_state(x) OVER w AS state, dv_sum_of(dv_sum_state(x) OVER w) AS sum, dv_count_of(dv_sum_state(x) OVER w) AS count
FROM given WHERE i BETWEEN 32 AND 36 WINDOW w AS (ORDER BY i ROWS 1 PRECEDING) ORDER BY i DESC;

-- Intervals.
SELECT i, sum(y) OVER w AS y, avg(y) OVER w AS a, sum(d) OVER w AS d FROM (VALUES (1, dv_interval_ym '1-0', dv_interval_ds '1 0:0:0'),
    (2, '-0-5', '0 0:0:0.1'), (3, NULL, NULL), (4, NULL, NULL), (5, '0-3', '-9 0:0:0')) AS _ (i, y, d) WINDOW w AS (ORDER BY i ROWS 1 PRECEDING);
