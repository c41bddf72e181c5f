-- Partitions, keys and constraints.
\pset format unaligned

CREATE TABLE sales (id number PRIMARY KEY, sold dv_date, amount number(10,2)) PARTITION BY RANGE (id);
CREATE TABLE sales_low PARTITION OF sales FOR VALUES FROM (MINVALUE) TO (1000);
CREATE TABLE sales_high PARTITION OF sales FOR VALUES FROM (1000) TO ('1e10');
INSERT INTO sales SELECT i, dv_date '2024-01-01' + i % 366, i / number '3' FROM generate_series(1, 1999) AS i;
SELECT tableoid::regclass, count(*), min(id), max(id) FROM sales GROUP BY 1 ORDER BY 1;
EXPLAIN (COSTS OFF) SELECT * FROM sales WHERE id < 10;
EXPLAIN (COSTS OFF) SELECT * FROM sales WHERE id = 1000;
INSERT INTO sales VALUES (5, NULL, 1);
INSERT INTO sales VALUES ('1e10', NULL, 1);

CREATE TABLE days (d dv_date, n int) PARTITION BY RANGE (d);
CREATE TABLE days_2023 PARTITION OF days FOR VALUES FROM ('2023-01-01') TO ('2024-01-01');
CREATE TABLE days_2024 PARTITION OF days FOR VALUES FROM ('2024-01-01') TO ('2025-01-01');
INSERT INTO days SELECT dv_date '2023-07-01' + i, i FROM generate_series(0, 365) AS i;
SELECT tableoid::regclass, count(*), min(d), max(d) FROM days GROUP BY 1 ORDER BY 1;
EXPLAIN (COSTS OFF) SELECT * FROM days WHERE d >= '2024-03-01' AND d < '2024-04-01';
EXPLAIN (COSTS OFF) SELECT * FROM days WHERE d >= dv_timestamp '2024-03-01 00:00:00';

CREATE TABLE instants (z dv_timestamptz) PARTITION BY RANGE (z);
CREATE TABLE instants_2024 PARTITION OF instants FOR VALUES FROM ('2024-01-01 00:00:00 UTC') TO ('2025-01-01 00:00:00 UTC');
INSERT INTO instants VALUES ('2024-01-01 09:00:00 Asia/Seoul'), ('2024-12-31 15:59:59 -08:00');
INSERT INTO instants VALUES ('2024-01-01 08:59:59 Asia/Seoul');

CREATE TABLE kinds (k number, s text) PARTITION BY LIST (k);
CREATE TABLE kinds_few PARTITION OF kinds FOR VALUES IN (1, 2, '2.5');
CREATE TABLE kinds_none PARTITION OF kinds FOR VALUES IN (NULL);
CREATE TABLE kinds_other PARTITION OF kinds DEFAULT;
INSERT INTO kinds VALUES (1), ('2.50'), (NULL), (3), ('1.0');
SELECT tableoid::regclass, k FROM kinds ORDER BY 1, 2;
EXPLAIN (COSTS OFF) SELECT * FROM kinds WHERE k IN (1, '2.5');

-- By hash, every type; equal values in one partition, whatever they were written as.
DO $$
DECLARE type text;
BEGIN
    FOREACH type IN ARRAY ARRAY['number', 'dv_date', 'dv_time', 'dv_timestamp', 'dv_timestamptz', 'dv_timestampltz',
        'dv_interval_ym', 'dv_interval_ds', 'dv_rowid'] LOOP
        EXECUTE format('CREATE TABLE hashed_%1$s (v %1$s) PARTITION BY HASH (v)', type);
        FOR i IN 0..3 LOOP
            EXECUTE format('CREATE TABLE hashed_%1$s_%2$s PARTITION OF hashed_%1$s FOR VALUES WITH (MODULUS 4, REMAINDER %2$s)', type, i);
        END LOOP;
    END LOOP;
END $$;
INSERT INTO hashed_number SELECT i / number '7' FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_date SELECT dv_date '2024-01-01' + i FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_time SELECT dv_time(i % 24, i % 60, i * 7 % 60) FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_timestamp SELECT dv_timestamp '2024-01-01 00:00:00' + dv_interval_ds '0 0:0:0.7' * i FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_timestamptz SELECT from_tz(v, '+09:00') FROM hashed_dv_timestamp;
INSERT INTO hashed_dv_timestamptz SELECT at_time_zone(v, 'America/New_York') FROM hashed_dv_timestamptz;
INSERT INTO hashed_dv_timestampltz SELECT from_tz(v, '+09:00') FROM hashed_dv_timestamp;
INSERT INTO hashed_dv_interval_ym SELECT dv_interval_ym '0-1' * i FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_interval_ds SELECT dv_interval_ds '0 0:0:0.7' * i FROM generate_series(1, 1000) AS i;
INSERT INTO hashed_dv_rowid VALUES ('AAAAABAACAAAAADAAE'), ('D/////P//D/////P//');
SELECT relname AS parent,
    (xpath('/row/c/text()', query_to_xml(format('SELECT count(*) AS c FROM %I', relname), false, true, '')))[1] AS rows,
    (xpath('/row/c/text()', query_to_xml(format('SELECT count(DISTINCT tableoid) AS c FROM %I', relname), false, true, '')))[1] AS filled
FROM pg_class WHERE relname LIKE 'hashed%' AND relkind = 'p' ORDER BY 1;
SELECT count(*) AS instants_in_two_partitions FROM (SELECT v FROM hashed_dv_timestamptz GROUP BY v HAVING count(DISTINCT tableoid) > 1) AS _;
EXPLAIN (COSTS OFF) SELECT * FROM hashed_number WHERE v = 3;
SET enable_partitionwise_join = on;
SELECT count(*) FROM hashed_number AS x JOIN hashed_number AS y USING (v);

-- Unique and foreign keys: by value. Zones do not tell instants apart.
CREATE TABLE parents (n number UNIQUE, d dv_date UNIQUE, z dv_timestamptz UNIQUE);
INSERT INTO parents VALUES ('1.50', '2024-01-01', '2024-01-01 00:00:00 UTC');
INSERT INTO parents VALUES ('1.5');
INSERT INTO parents (z) VALUES ('2024-01-01 09:00:00 Asia/Seoul');
CREATE TABLE children (n number REFERENCES parents (n) ON UPDATE CASCADE, d dv_date REFERENCES parents (d), z dv_timestamptz REFERENCES parents (z));
INSERT INTO children VALUES ('1.5', '2024-01-01', '2024-01-01 09:00:00 Asia/Seoul');
INSERT INTO children (n) VALUES ('1.51');
UPDATE parents SET n = 2;
SELECT * FROM children;
DELETE FROM parents;
CREATE TABLE of_int (i int PRIMARY KEY);
INSERT INTO of_int VALUES (5);
CREATE TABLE of_number (n number REFERENCES of_int (i));

-- Generated columns, checks, defaults, ON CONFLICT, GROUP BY, DISTINCT, UNION.
CREATE TABLE derived (price number(10,2) DEFAULT 0 CHECK (price >= 0), vat number GENERATED ALWAYS AS (dv_round(price * '0.19', 2)) STORED,
    due dv_date DEFAULT dv_date '2024-01-31', UNIQUE (price));
INSERT INTO derived (price) VALUES ('9.99'), (10), ('10.00') ON CONFLICT (price) DO NOTHING;
INSERT INTO derived VALUES (DEFAULT);
INSERT INTO derived VALUES (-1);
SELECT * FROM derived ORDER BY price DESC;
SELECT number '1.0' UNION SELECT number '1' UNION SELECT 1 UNION SELECT 2 ORDER BY 1;
SELECT count(DISTINCT v), count(*) FROM hashed_dv_timestamptz;
