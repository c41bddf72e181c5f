-- Orders and indexes: those of the values, by the server's own types as a second opinion.
SET max_parallel_workers_per_gather = 0;
SELECT setseed(0.5);

-- Numbers of every length and sign, of which numeric has the same.
CREATE TABLE numbers AS
    SELECT i, (round((random() - 0.5)::numeric * (10::numeric ^ (i % 39)), i % 39 / 2 % 10))::text::number AS v
    FROM generate_series(1, 20000) AS i;
INSERT INTO numbers SELECT 20000 + i, v::number FROM unnest(
    '{0,1,-1,1e-130,-1e-130,99999999999999999999999999999999999999e88,-99999999999999999999999999999999999999e88,100,-100,99,-99,101,-101,0.01,-0.01,NULL}'::text[])
    WITH ORDINALITY AS given(v, i);
CREATE TABLE instants AS
    SELECT i, timestamp '2000-01-01' + (random() - 0.5) * interval '4000 years' AS peer FROM generate_series(1::bigint, 20000) AS i;
ALTER TABLE instants ADD d dv_date, ADD t dv_time, ADD ts dv_timestamp, ADD tz dv_timestamptz, ADD ltz dv_timestampltz,
    ADD ym dv_interval_ym, ADD ds dv_interval_ds, ADD r dv_rowid;
UPDATE instants SET peer = date_trunc('milliseconds', peer) + interval '1000 years' WHERE peer < '1583-01-01';
UPDATE instants SET
    d = to_char(peer, 'YYYY-MM-DD HH24:MI:SS')::dv_date,
    t = to_char(peer, 'HH24:MI:SS.US')::dv_time,
    ts = to_char(peer, 'YYYY-MM-DD HH24:MI:SS.US')::dv_timestamp,
    -- one instant under many offsets
    tz = (to_char(peer + make_interval(hours => (i % 25 - 12)::int), 'YYYY-MM-DD HH24:MI:SS.US ') ||
        to_char(i % 25 - 12, 'FMSG00') || ':00')::dv_timestamptz,
    ltz = (to_char(peer, 'YYYY-MM-DD HH24:MI:SS.US') || ' +00:00')::dv_timestampltz,
    ym = (CASE WHEN i % 2 = 0 THEN '-' ELSE '' END || i % 1000 || '-' || i % 12)::dv_interval_ym,
    ds = (CASE WHEN i % 2 = 0 THEN '-' ELSE '' END || i % 1000 || to_char(peer, ' HH24:MI:SS.US'))::dv_interval_ds,
    r = dv_rowid(i * 7919 % 100, i * 104729 % 100, i * 1299709 % 100, i);
CREATE FUNCTION peer(v dv_interval_ds) RETURNS interval LANGUAGE sql RETURN
    replace(replace(v::text, '+', ''), ' ', CASE WHEN v::text LIKE '-%' THEN ' -' ELSE ' ' END)::interval;

-- The sorted sequence of each type beside that of its peer: equal rank everywhere.
CREATE TABLE disorder (type text, rows bigint, wrong bigint);
INSERT INTO disorder SELECT 'number', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY v) AS a, dense_rank() OVER (ORDER BY v::text::numeric) AS b FROM numbers WHERE v IS NOT NULL) AS _;
INSERT INTO disorder SELECT 'dv_date', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY d) AS a, dense_rank() OVER (ORDER BY date_trunc('second', peer)) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_time', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY t) AS a, dense_rank() OVER (ORDER BY peer::time) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_timestamp', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY ts) AS a, dense_rank() OVER (ORDER BY peer) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_timestamptz', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY tz) AS a, dense_rank() OVER (ORDER BY peer) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_timestampltz', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY ltz) AS a, dense_rank() OVER (ORDER BY peer) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_interval_ym', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY ym) AS a,
        dense_rank() OVER (ORDER BY CASE WHEN i % 2 = 0 THEN -1 ELSE 1 END * (i % 1000 * 12 + i % 12)) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_interval_ds', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY ds) AS a, dense_rank() OVER (ORDER BY peer(ds)) AS b FROM instants) AS _;
INSERT INTO disorder SELECT 'dv_rowid', count(*), count(*) FILTER (WHERE a <> b) FROM
    (SELECT dense_rank() OVER (ORDER BY r) AS a,
        dense_rank() OVER (ORDER BY i * 7919 % 100, i * 104729 % 100, i * 1299709 % 100, i) AS b FROM instants) AS _;
SELECT * FROM disorder;

-- Every operator of pairs, beside the peer's.
SELECT count(*) AS pairs, count(*) FILTER (WHERE (x.v = y.v, x.v <> y.v, x.v < y.v, x.v <= y.v, x.v > y.v, x.v >= y.v) IS DISTINCT FROM
    (p.x = p.y, p.x <> p.y, p.x < p.y, p.x <= p.y, p.x > p.y, p.x >= p.y)) AS wrong
    FROM (SELECT v FROM numbers ORDER BY i DESC LIMIT 150) AS x, (SELECT v FROM numbers ORDER BY i DESC LIMIT 150) AS y,
        LATERAL (SELECT x.v::text::numeric AS x, y.v::text::numeric AS y) AS p;
SELECT count(*) AS pairs, count(*) FILTER (WHERE (x.tz = y.tz, x.tz < y.tz, x.tz >= y.tz, x.ts <> y.ts, x.ts <= y.ts, x.d > y.d)
    IS DISTINCT FROM (x.peer = y.peer, x.peer < y.peer, x.peer >= y.peer, x.peer <> y.peer, x.peer <= y.peer,
        date_trunc('second', x.peer) > date_trunc('second', y.peer))) AS wrong
    FROM (SELECT * FROM instants ORDER BY i LIMIT 150) AS x, (SELECT * FROM instants ORDER BY i LIMIT 150) AS y;

-- One instant is one value under any zone: it groups, joins, hashes and is unique as such.
CREATE TABLE zoned (v dv_timestamptz UNIQUE);
INSERT INTO zoned VALUES ('2024-02-29 13:05:00 Asia/Seoul');
INSERT INTO zoned VALUES ('2024-02-29 04:05:00 UTC');
SELECT count(DISTINCT v), count(*) FROM (VALUES (dv_timestamptz '2024-02-29 13:05:00 Asia/Seoul'), ('2024-02-29 13:05:00 +09:00'),
    ('2024-02-29 04:05:00 UTC'), ('2024-02-29 04:05:01 UTC')) AS _(v);
SET enable_hashagg = off;
SELECT count(*) FROM (SELECT v FROM (VALUES (dv_timestamptz '2024-02-29 13:05:00 Asia/Seoul'), ('2024-02-29 04:05:00 UTC')) AS _(v) GROUP BY v) AS _;
RESET enable_hashagg;

-- Indexes of every kind are used, and find what a scan of the table finds.
VACUUM ANALYZE numbers, instants;
CREATE FUNCTION plan(query text) RETURNS SETOF text LANGUAGE plpgsql AS $$
BEGIN
    RETURN QUERY EXECUTE 'EXPLAIN (COSTS OFF) ' || query;
END $$;
-- For a column: for how many of 60 ranges or values an index is used, and finds what a scan finds.
CREATE FUNCTION right_by_index(of regclass, col text, method text) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
    found bigint; expected bigint; right_ones bigint := 0; low text; high text; type text := format_type(atttypid, NULL)
        FROM pg_attribute WHERE attrelid = of AND attname = col;
    condition text; uses boolean;
BEGIN
    EXECUTE format('CREATE INDEX probe ON %s USING %s (%I)', of, method, col);
    FOR low, high IN EXECUTE format('SELECT least(a, b), greatest(a, b) FROM (SELECT %1$I AS a, lead(%1$I) OVER (ORDER BY i) AS b, i
            FROM %2$s WHERE %1$I IS NOT NULL) AS _ WHERE b IS NOT NULL ORDER BY i DESC LIMIT 60', col, of) LOOP
        condition := CASE method WHEN 'hash' THEN format('%I = %L::%s', col, low, type)
            ELSE format('%1$I >= %2$L::%4$s AND %1$I < %3$L::%4$s', col, low, high, type) END;
        SET LOCAL enable_seqscan = off; SET LOCAL enable_bitmapscan = on; SET LOCAL enable_indexscan = on;
        EXECUTE format('SELECT count(*) FROM %s WHERE %s', of, condition) INTO found;
        SELECT bool_or(line LIKE '%probe%') FROM plan(format('SELECT count(*) FROM %s WHERE %s', of, condition)) AS line INTO uses;
        SET LOCAL enable_seqscan = on; SET LOCAL enable_bitmapscan = off; SET LOCAL enable_indexscan = off;
        SET LOCAL enable_indexonlyscan = off;
        EXECUTE format('SELECT count(*) FROM %s WHERE %s', of, condition) INTO expected;
        SET LOCAL enable_indexonlyscan = on;
        IF found = expected AND uses AND found > 0 THEN right_ones := right_ones + 1; END IF;
    END LOOP;
    DROP INDEX probe;
    RETURN right_ones;
END $$;
SELECT of, col, method, right_by_index(of, col, method) AS right FROM (VALUES ('numbers'::regclass, 'v'), ('instants', 'd'), ('instants', 't'),
    ('instants', 'ts'), ('instants', 'tz'), ('instants', 'ltz'), ('instants', 'ym'), ('instants', 'ds'), ('instants', 'r')) AS columns(of, col),
    (VALUES ('btree'), ('hash'), ('brin')) AS methods(method);

-- An index alone answers, sorts, and gives the ends.
CREATE INDEX numbers_v ON numbers (v);
VACUUM numbers;
SELECT plan('SELECT v FROM numbers WHERE v > number ''5'' ORDER BY v LIMIT 3');
SELECT plan('SELECT max(v), min(v) FROM numbers');
SELECT max(v), min(v) FROM numbers;
SELECT v FROM numbers WHERE v >= '-1' ORDER BY v LIMIT 3;
SELECT count(v) AS rows, count(*) FILTER (WHERE v < before) AS wrong FROM (SELECT v, lag(v) OVER () AS before FROM (SELECT v FROM numbers ORDER BY v) AS _) AS _;

-- Uniqueness, keys and joins by hash and by merge.
CREATE TABLE keys (k number PRIMARY KEY, at dv_date UNIQUE);
INSERT INTO keys VALUES ('1', '2024-01-01'), ('2.50', '2024-01-02');
INSERT INTO keys VALUES ('1.0', '2024-01-03');
INSERT INTO keys VALUES ('3', '2024-01-02 00:00:00');
INSERT INTO keys VALUES ('2.5', '2024-01-04') ON CONFLICT (k) DO UPDATE SET at = EXCLUDED.at RETURNING *;
CREATE TABLE refers (k number REFERENCES keys);
INSERT INTO refers VALUES ('1.000');
INSERT INTO refers VALUES ('4');
SET enable_nestloop = off;
SET enable_mergejoin = off;
SELECT trim(line) FROM plan('SELECT count(*) FROM numbers AS x JOIN numbers AS y USING (v)') AS line WHERE line LIKE '%Join%';
SELECT count(*) FROM numbers AS x JOIN numbers AS y USING (v);
SET enable_hashjoin = off;
SET enable_mergejoin = on;
SELECT count(*) FROM numbers AS x JOIN numbers AS y USING (v);
SELECT count(*) FROM numbers AS x JOIN numbers AS y ON x.v::text::numeric = y.v::text::numeric;
RESET enable_nestloop;
RESET enable_hashjoin;
RESET enable_mergejoin;

-- Partitions by range, list and hash.
CREATE TABLE sales (id number, at dv_timestamp) PARTITION BY RANGE (at);
CREATE TABLE sales_2023 PARTITION OF sales FOR VALUES FROM ('2023-01-01') TO ('2024-01-01');
CREATE TABLE sales_2024 PARTITION OF sales FOR VALUES FROM ('2024-01-01') TO (MAXVALUE);
INSERT INTO sales VALUES ('1', '2023-12-31 23:59:59.999999999'), ('2', '2024-01-01');
INSERT INTO sales VALUES ('3', '2022-12-31');
SELECT tableoid::regclass, id FROM sales ORDER BY id;
SELECT plan('SELECT id FROM sales WHERE at >= dv_timestamp ''2024-02-01''');
CREATE TABLE listed (v number) PARTITION BY LIST (v);
CREATE TABLE listed_1 PARTITION OF listed FOR VALUES IN ('1', '1.5');
INSERT INTO listed VALUES ('1.50');
INSERT INTO listed VALUES ('2');
CREATE TABLE hashed (v dv_timestamptz) PARTITION BY HASH (v);
CREATE TABLE hashed_0 PARTITION OF hashed FOR VALUES WITH (MODULUS 2, REMAINDER 0);
CREATE TABLE hashed_1 PARTITION OF hashed FOR VALUES WITH (MODULUS 2, REMAINDER 1);
INSERT INTO hashed SELECT tz FROM instants;
SELECT count(DISTINCT tableoid) AS partitions, count(*) AS rows FROM hashed;
-- An instant is in one partition under any zone.
INSERT INTO hashed SELECT at_time_zone(v, 'Asia/Seoul') FROM hashed;
SELECT count(*) AS in_two FROM (SELECT FROM hashed GROUP BY v HAVING count(DISTINCT tableoid) > 1) AS _;

-- Numbers sort as the server's: those whose first bytes are the same, and whose exponents, signs and lengths differ.
CREATE TABLE sorted AS SELECT i, to_number(n::text) AS ours, n AS peer FROM (
    SELECT i, CASE i % 4 WHEN 0 THEN 1234567890123456::numeric + mod(i, 7) * power(10::numeric, -mod(i, 20)) WHEN 1 THEN mod(i * 7919, 1000) / 100.0
        WHEN 2 THEN mod(i, 3) * power(10::numeric, mod(i, 60) - 30) ELSE mod(i * 104729, 1000003) END * (1 - 2 * (i / 4 % 2)) AS n
    FROM generate_series(1, 20000) AS i) AS _;
SELECT count(DISTINCT ours) = count(DISTINCT peer) AS as_many, count(*) FILTER (WHERE up <> peer_up OR down <> peer_down) AS wrong FROM (
    SELECT ours, peer, row_number() OVER (ORDER BY ours, i) AS up, row_number() OVER (ORDER BY peer, i) AS peer_up,
        row_number() OVER (ORDER BY ours DESC, i) AS down, row_number() OVER (ORDER BY peer DESC, i) AS peer_down FROM sorted) AS _;
CREATE INDEX sorted_index ON sorted (ours);
SET enable_seqscan = off;
SELECT count(*) AS wrong FROM (SELECT ours, lag(peer) OVER () AS before, peer FROM (SELECT * FROM sorted ORDER BY ours) AS _) AS _ WHERE before > peer;
RESET enable_seqscan;
