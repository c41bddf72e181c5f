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
