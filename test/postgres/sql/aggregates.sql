-- Sums, averages, variances and deviations, beside the server's own exact type.
\pset format unaligned

-- Money, values of very different size, and values that differ in their last digits alone.
CREATE TABLE given AS
SELECT i, kind, i % 13 AS part, v, v::text::number AS x FROM (
    SELECT i, 'money' AS kind, (i::bigint * 2654435761 % 2000003 - 1000000) / 100.0::numeric AS v FROM generate_series(1, 4000) AS i
    UNION ALL SELECT i, 'far', (i::bigint * 40503 % 19997 - 9999) * power(10::numeric, i % 37 - 18) FROM generate_series(1, 2000) AS i
    UNION ALL SELECT i, 'near', 9e20 + (i * 7919 % 997) * 1e-15 FROM generate_series(1, 2000) AS i) AS _;
INSERT INTO given SELECT i, 'money', i, NULL, NULL FROM generate_series(1, 5) AS i;

-- The server's, to many more digits than are compared.
CREATE VIEW peer AS
SELECT kind, part, n, s, s / n AS a, q / (n::numeric * n) AS vp, q / (n::numeric * (n - 1)) AS vs FROM (
    SELECT kind, part, count(v) AS n, sum(v) + 0e-200 AS s, count(v) * sum(v * v) - sum(v) * sum(v) + 0e-200 AS q
    FROM given GROUP BY kind, part) AS _;
CREATE VIEW ours AS
SELECT kind, part, count(x) AS n, sum(x) AS s, avg(x) AS a, var_pop(x) AS vp, var_samp(x) AS vs, variance(x) AS v,
    stddev_pop(x) AS dp, stddev_samp(x) AS ds, stddev(x) AS d
FROM given GROUP BY kind, part;

-- 38 digits of a numeric, half away from zero.
CREATE FUNCTION to_38(v numeric) RETURNS number LANGUAGE plpgsql IMMUTABLE AS $$
BEGIN
    RETURN CASE WHEN v = 0 THEN '0' ELSE round(v, 37 - floor(log(abs(v)))::integer)::text::number END;
END $$;
SELECT kind, count(*) AS groups, count(*) FILTER (WHERE o.n <> p.n) AS n, count(*) FILTER (WHERE o.s <> to_38(p.s)) AS s,
    count(*) FILTER (WHERE o.a <> to_38(p.a)) AS a, count(*) FILTER (WHERE o.vp <> to_38(p.vp)) AS vp,
    count(*) FILTER (WHERE o.vs <> to_38(p.vs) OR o.v <> o.vs) AS vs,
    count(*) FILTER (WHERE o.dp <> to_38(sqrt(p.vp))) AS dp,
    count(*) FILTER (WHERE o.ds <> to_38(sqrt(p.vs)) OR o.d <> o.ds) AS ds
FROM ours AS o JOIN peer AS p USING (kind, part) GROUP BY kind ORDER BY kind;

-- Floating point agrees as far as it goes.
SELECT abs(stddev(x)::text::double precision / stddev(v::double precision) - 1) < 1e-12 AS agrees FROM given WHERE kind = 'money';

-- The names of the catalogue; both forms of one state; with DISTINCT, ORDER BY, FILTER.
SELECT dv_sum(x) = sum(x) AND dv_avg(x) = avg(x) AS same, sum(x ORDER BY i DESC) = sum(x) AS in_any_order,
    sum(DISTINCT x) = (SELECT sum(x) FROM (SELECT DISTINCT x FROM given WHERE kind = 'money') AS _) AS distinct_ones,
    sum(x) FILTER (WHERE i % 2 = 0) + sum(x) FILTER (WHERE i % 2 = 1) = sum(x) AS halves FROM given WHERE kind = 'money';

-- No rows, rows of NULL, one row, equal rows.
SELECT sum(x), avg(x), stddev(x), var_pop(x), count(x) FROM given WHERE i < 0;
SELECT sum(x), avg(x), stddev(x), var_pop(x), count(x) FROM (VALUES (NULL::number), (NULL)) AS _ (x);
SELECT sum(x), avg(x), stddev(x), stddev_pop(x), var_samp(x), var_pop(x) FROM (VALUES (number '-7.5')) AS _ (x);
SELECT sum(x), avg(x), stddev(x), stddev_pop(x), var_samp(x), var_pop(x) FROM (VALUES (number '-7.5'), ('-7.5')) AS _ (x);

-- Nothing is lost on the way; what is beyond the range in the end is an error, and the session goes on.
SELECT sum(x), avg(x) FROM (VALUES (number '1e30'), ('0.01'), ('-1e30')) AS _ (x);
SELECT sum(x), avg(x) FROM (VALUES (number '9e125'), ('1e-129'), ('9e125'), ('-9e125')) AS _ (x);
SELECT sum(x) FROM (VALUES (number '9e125'), ('9e125')) AS _ (x);
SELECT variance(x) FROM (VALUES (number '9e125'), ('0')) AS _ (x);
SELECT stddev(x) FROM (VALUES (number '9e125'), ('0')) AS _ (x);
SELECT variance(x) FROM (VALUES (number '1e-129'), ('0')) AS _ (x);
SELECT stddev_pop(x) FROM (VALUES (number '4e-129'), ('0')) AS _ (x);
SELECT sum(x) FROM (VALUES (number '1'), ('2')) AS _ (x);

-- Intervals.
SELECT sum(y), avg(y), dv_sum(y) = sum(y) AS same, min(y), max(y) FROM (VALUES (dv_interval_ym '1-6'), ('-0-7'), (NULL), ('0-0')) AS _ (y);
SELECT sum(d), avg(d), dv_avg(d) = avg(d) AS same FROM (VALUES (dv_interval_ds '0 23:59:59.5'), (NULL), ('1 0:0:0')) AS _ (d);
SELECT sum(d), avg(d) FROM (VALUES (dv_interval_ds '-0 0:0:0.000000002'), ('-0 0:0:0.000000003')) AS _ (d);
SELECT sum(d), avg(y) FROM (SELECT NULL::dv_interval_ds AS d, NULL::dv_interval_ym AS y) AS _;
SELECT sum(d) FROM (VALUES (dv_interval_ds '999999999 0:0:0'), ('1 0:0:0')) AS _ (d);
SELECT avg(d) FROM (VALUES (dv_interval_ds '999999999 0:0:0'), ('1 0:0:0')) AS _ (d);
SELECT sum(y) FROM (VALUES (dv_interval_ym '999999999-11'), ('0-1')) AS _ (y);

-- The server's own aggregates are chosen as before.
SELECT pg_typeof(sum(1)), pg_typeof(sum(1::bigint)), pg_typeof(avg(1)), pg_typeof(sum(1.5)), pg_typeof(sum(1.5::real)),
    pg_typeof(sum(interval '1 day')), pg_typeof(stddev(1)), pg_typeof(variance(1.5::double precision)), pg_typeof(stddev(NULL));
