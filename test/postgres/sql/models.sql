-- Format models: compiled once a call site while they stay the same, and right when they do not.
\pset format unaligned

CREATE TABLE days AS SELECT i, add_months(dv_date(2024, 1, 31), i) AS d, dv_timestamp(2024, 1 + i % 12, 1 + i % 28, i % 24, i % 60, 7, i * 1000003) AS ts
    FROM generate_series(0, 999) AS i;
CREATE TABLE models (model text, language text);
INSERT INTO models VALUES ('YYYY-MM-DD', 'AMERICAN'), ('DD MONTH YYYY', 'RUSSIAN'), ('FMDAY, DD MON YY', 'BRAZILIAN PORTUGUESE'), ('DAY MON', 'KOREAN'),
    ('YYYY"年"MM"月"DD"日"', 'JAPANESE'), ('Q WW IW DDD', 'AMERICAN'), ('DDSPTH', 'AMERICAN');

-- A constant model is that of each row, whatever other sites have.
SELECT count(*) AS rows, count(*) FILTER (WHERE to_char(d, 'YYYY-MM-DD') <> substr(d::text, 1, 10)) AS wrong,
    count(*) FILTER (WHERE dv_to_date(to_char(d, 'DD.MM.YYYY'), 'DD.MM.YYYY') <> d) AS unread,
    count(*) FILTER (WHERE dv_to_timestamp(to_char(ts, 'YYYYMMDDHH24MISSFF9'), 'YYYYMMDDHH24MISSFF9') <> ts) AS unread_ts FROM days;
SELECT to_char(d, 'MON', 'AMERICAN') AS a, to_char(d, 'MON', 'KOREAN') AS k, to_char(d, 'MON', 'BRAZILIAN PORTUGUESE') AS f, to_char(ts, 'FF3') AS ff,
    dv_to_number(to_char(number '1234.5', '9G999D99'), '9,999.99') AS n FROM days WHERE i < 3;

-- Models and languages that change from row to row give what each gives alone.
CREATE FUNCTION alone(d dv_date, model text, language text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    result text;
BEGIN
    EXECUTE format('SELECT to_char($1, %L, %L)', model, language) INTO result USING d;
    RETURN result;
END $$;
SELECT model, language, min(to_char(d, model, language)) FROM days, models WHERE i = 29 GROUP BY 1, 2 ORDER BY 1, 2;
SELECT count(*) AS rows, count(*) FILTER (WHERE to_char(d, model, language) IS DISTINCT FROM alone(d, model, language)) AS wrong
    FROM (SELECT * FROM days, models WHERE i < 300 ORDER BY md5(i || model)) AS _;

-- Under models that are none among others, those that are one go on.
SELECT model, try_to_date('29.02.2024', model) AS date, try_to_number('1.5', model) AS number FROM
    unnest(ARRAY['DD.MM.YYYY', 'DD.MM', 'no model', 'DD.MM.YYYY', '9.9', '', NULL, 'DD.MM.YYYY', repeat('"x"', 400) || 'DD.MM.YYYY']) AS model;
SELECT count(*), count(v) FROM (SELECT try_to_date('29.02.2024', CASE i % 3 WHEN 0 THEN 'DD.MM.YYYY' WHEN 1 THEN 'XX' || i ELSE 'DD.MM.YYY' END) AS v
    FROM generate_series(1, 3000) AS i) AS _;

-- In loops of PL/pgSQL, where a call site lives as long as the session.
DO $$
DECLARE
    wrong int := 0; language text; d dv_date;
BEGIN
    FOR i IN 1..2000 LOOP
        d := dv_date(2024, 1 + i % 12, 1);
        language := (ARRAY['RUSSIAN', 'ENGLISH', 'KOREAN'])[1 + i % 3];
        BEGIN
            IF dv_to_date(to_char(d, 'DD MONTH YYYY', language), 'DD MONTH YYYY', language) <> d THEN wrong := wrong + 1; END IF;
        EXCEPTION WHEN invalid_parameter_value THEN
            IF language <> 'ENGLISH' THEN RAISE; END IF;  -- which is no name of a language
        END;
    END LOOP;
    RAISE NOTICE '% wrong', wrong;
END $$;

-- Prepared statements: a model that is a parameter, under generic and custom plans alike.
PREPARE shown(text) AS SELECT to_char(dv_date(2024, 2, 29), $1) AS custom_or_generic;
SET plan_cache_mode = force_generic_plan;
EXECUTE shown('YYYY');
EXECUTE shown('DDD');
EXECUTE shown('DDDD no');
EXECUTE shown('DAY');
SET plan_cache_mode = force_custom_plan;
EXECUTE shown('YYYY');
EXECUTE shown('MON');
RESET plan_cache_mode;
EXPLAIN (VERBOSE, COSTS OFF) SELECT to_char(dv_date(2024, 2, 29), 'FMMonth') AS folded;

-- In an index over an expression, which asks for IMMUTABLE, and in a generated column, a check and a view.
CREATE INDEX days_by_month ON days (to_char(d, 'MM'));
SELECT count(*) FROM days WHERE to_char(d, 'MM') = '02';
CREATE TABLE texts (given text, model text DEFAULT 'DD.MM.YYYY', d dv_date GENERATED ALWAYS AS (dv_to_date(given, model)) STORED,
    CHECK (to_char(d, 'DAY') NOT LIKE 'SUN%'));
INSERT INTO texts VALUES ('29.02.2024', DEFAULT), ('2024/03/01', 'YYYY/MM/DD');
INSERT INTO texts VALUES ('03.03.2024');
INSERT INTO texts VALUES ('30.02.2024');
SELECT * FROM texts;

-- Set-returning and lateral calls, each with a site of its own.
SELECT x.model, t FROM models AS x, LATERAL (SELECT to_char(d, x.model, x.language) AS t FROM days WHERE i IN (0, 5) ORDER BY i) AS y
    WHERE x.language IN ('RUSSIAN', 'BRAZILIAN PORTUGUESE');

-- Models of numbers and zones the same: sites with their own beside each other, one that changes from row to row, SQL NULL between. The
-- server's own numbers and instants tell what is right.
CREATE TABLE amounts AS SELECT i, (i - 1500) * (i % 7) * 0.37 AS peer,
        (ARRAY['FM999,990.00', 'FM000000.9', 'S999990.000', 'FM9990PR', NULL])[1 + i * i % 5] AS model,
        timestamptz '2024-01-01 00:00+00' + i * interval '5 hours' AS peer_at,
        (ARRAY['America/New_York', 'Asia/Kolkata', 'Europe/Lisbon', NULL])[1 + (i + i / 5) % 4] AS zone
    FROM generate_series(1, 3000) AS i;
ALTER TABLE amounts ADD n number, ADD at dv_timestamptz;
UPDATE amounts SET n = to_number(peer::text), at = peer_at::dv_timestamptz;
SELECT count(*) AS rows, count(to_char(n, model)) AS texts,
    count(*) FILTER (WHERE to_char(n, 'FM999,990.00') <> to_char(peer, 'FM999,990.00') OR to_char(n, 'S000000.0') <> to_char(peer, 'S000000.0')) AS wrong,
    count(*) FILTER (WHERE to_char(n, model) IS DISTINCT FROM to_char(peer, model)) AS wrong_changing,
    count(*) FILTER (WHERE dv_to_number(to_char(n, 'FM999,990.00'), 'FM999,990.00') <> n OR dv_to_number(to_char(n, '999990.00'), '999990.00') <> n) AS unread
    FROM amounts;
SELECT count(at_time_zone(at, zone)) AS times,
    count(*) FILTER (WHERE dv_to_timestamp(at_time_zone(at, 'America/New_York'))::timestamp <> peer_at AT TIME ZONE 'America/New_York'
        OR dv_to_timestamp(at_time_zone(at, 'Asia/Kolkata'))::timestamp <> peer_at AT TIME ZONE 'Asia/Kolkata') AS wrong,
    count(*) FILTER (WHERE dv_to_timestamp(at_time_zone(at, zone))::timestamp IS DISTINCT FROM peer_at AT TIME ZONE zone) AS wrong_changing,
    count(*) FILTER (WHERE from_tz((peer_at AT TIME ZONE zone)::dv_timestamp, zone) <> at AND peer_at < '2024-03-01') AS wrong_from FROM amounts;

-- An error has the text of its call, the constant one too, and what is kept goes on behind it. A million models take no memory.
DO $$
DECLARE
    shown text; wrong int := 0; told text; v text;
BEGIN
    FOREACH v IN ARRAY ARRAY['1.50', 'x', '2.25', 'y', '99999.00', '3.75'] LOOP
        BEGIN
            RAISE NOTICE '%', dv_to_number(v, '999.99') + dv_to_number('1,0', '9,9');
        EXCEPTION WHEN invalid_text_representation THEN
            RAISE NOTICE '%', SQLERRM;
        END;
        BEGIN
            RAISE NOTICE '%', at_time_zone(dv_timestamptz '2024-07-01 12:00 UTC', CASE v WHEN 'x' THEN 'Asia/Soul' WHEN 'y' THEN NULL ELSE 'Asia/Seoul' END);
        EXCEPTION WHEN invalid_time_zone_displacement_value THEN
            RAISE NOTICE '%', SQLERRM;
        END;
    END LOOP;
    FOR i IN 1..1000000 LOOP
        shown := to_char(number '12.5', CASE i % 3 WHEN 0 THEN 'FM99' WHEN 1 THEN 'FM099.0' ELSE 'FM9,9.00' END);
        IF shown <> (ARRAY['13', '012.5', '1,2.50'])[1 + i % 3] THEN wrong := wrong + 1; END IF;
    END LOOP;
    SELECT format('%s wrong, contexts: %s', wrong, sum(total_bytes) < 100000) INTO told FROM pg_backend_memory_contexts WHERE name = 'dvtypes model';
    RAISE NOTICE '%', told;
END $$;
SELECT model, try_to_number(i || '.5', model) AS number FROM unnest(ARRAY['9.9', 'no model', '9.9', NULL, '9.9', '9Z', '0.0', '9Z', '0.0'])
    WITH ORDINALITY AS _(model, i);
PREPARE written(text, text) AS SELECT to_char(number '12.5', $1) AS n, at_time_zone(dv_timestamptz '2024-07-01 12:00 UTC', $2) AS at;
SET plan_cache_mode = force_generic_plan;
EXECUTE written('FM99.00', 'Asia/Seoul');
EXECUTE written('9Z', 'Asia/Seoul');
EXECUTE written('S99', 'Asia/Soul');
EXECUTE written('S99', 'Europe/Lisbon');
RESET plan_cache_mode;
