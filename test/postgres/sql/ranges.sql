-- Ranges and multiranges.
\pset format unaligned

SELECT rngtypid::regtype, rngmultitypid::regtype, rngsubtype::regtype, rngcanonical, rngsubdiff FROM pg_range
WHERE rngsubtype::regtype::text IN ('number', 'dv_date', 'dv_timestamp', 'dv_timestamptz') ORDER BY 1;

SELECT numberrange(1, 5) AS r, numberrange(1, 5) @> number '4.99' AS has, numberrange(1, 5) @> number '5' AS has_end,
    numberrange(1, 5) && numberrange('4.5', 7) AS overlaps, numberrange(1, 5) * numberrange('4.5', 7) AS both,
    numberrange('1.50', NULL, '(]') AS open, upper(numberrange(1, 5)) - lower(numberrange(1, 5)) AS width;
SELECT numberrange(5, 1);
SELECT '{[1,2), [2,3), [5,6]}'::numbermultirange AS merged, numberrange(1, 9) - numberrange(5, 9) AS cut,
    numbermultirange(numberrange(1, 9)) - numbermultirange(numberrange(3, 4)) AS holes, range_agg(r) AS aggregated
FROM (VALUES (numberrange(1, 2)), (numberrange(2, 3)), (numberrange(7, 8))) AS _ (r);

-- A DATE has a time of day: no canonical form, so that ends are told apart.
SELECT dv_daterange('2024-01-01', '2024-01-31', '[]') AS r, dv_daterange('2024-01-01', '2024-01-31', '[]') @> dv_date '2024-01-31 00:00:01' AS has,
    dv_daterange('2024-01-01', '2024-01-02') -|- dv_daterange('2024-01-02', '2024-01-03') AS adjacent;
SELECT dv_timestamprange('2024-01-01 00:00:00', '2024-01-01 00:00:00.000000001') @> dv_timestamp '2024-01-01 00:00:00' AS has,
    dv_timestamptzrange('2024-01-01 00:00:00 UTC', '2024-01-01 01:00:00 UTC') @> dv_timestamptz '2024-01-01 09:30:00 Asia/Seoul' AS has_instant;

-- Exclusion.
CREATE TABLE booked (room int4range, during dv_timestamptzrange, EXCLUDE USING gist (room WITH &&, during WITH &&));
INSERT INTO booked VALUES ('[1,2)', '["2024-01-01 09:00:00 Asia/Seoul","2024-01-01 10:00:00 Asia/Seoul")'),
    ('[1,2)', '["2024-01-01 01:00:00 UTC","2024-01-01 02:00:00 UTC")'), ('[2,3)', '["2024-01-01 00:00:00 UTC","2024-01-01 05:00:00 UTC")');
INSERT INTO booked VALUES ('[1,2)', '["2024-01-01 00:59:59.999999999 UTC","2024-01-01 01:00:00 UTC")');

-- An index finds what a scan finds.
CREATE TABLE spans (n numberrange, d dv_daterange, t dv_timestamprange);
INSERT INTO spans SELECT numberrange(i, i + number '2.5'), dv_daterange(dv_date '2000-01-01' + i, dv_date '2000-01-03' + i),
    dv_timestamprange(dv_date '2000-01-01' + i, dv_date '2000-01-03' + i) FROM generate_series(1, 5000) AS i;
CREATE INDEX ON spans USING gist (n);
CREATE INDEX ON spans USING gist (d);
CREATE INDEX ON spans USING gist (t);
ANALYZE spans;
SET enable_bitmapscan = off;
SET enable_seqscan = off;
EXPLAIN (COSTS OFF) SELECT count(*) FROM spans WHERE n @> number '77.7';
SELECT count(*) FROM spans WHERE n @> number '77.7';
SELECT count(*) FROM spans WHERE d && dv_daterange('2005-01-01', '2005-02-01');
SELECT count(*) FROM spans WHERE t @> dv_timestamp '2005-01-01 12:00:00';
SET enable_indexscan = off; SET enable_indexonlyscan = off; RESET enable_seqscan;
SELECT count(*) FROM spans WHERE n @> number '77.7';
SELECT count(*) FROM spans WHERE d && dv_daterange('2005-01-01', '2005-02-01');
SELECT count(*) FROM spans WHERE t @> dv_timestamp '2005-01-01 12:00:00';
SELECT dv_number_distance(5, '2.5'), dv_date_diff(dv_date '2024-03-01', dv_date '2024-02-28'),
    dv_timestamp_distance('2024-01-01 00:00:01.5', '2024-01-01 00:00:00'), dv_timestamp_distance('2024-01-01 00:00:00', '2024-01-02 00:00:00.25');
