-- Casts between the types and the server's own: exact where they can be, and what they refuse.
\pset format unaligned
SET timezone = 'Asia/Seoul';
SET datestyle = ISO;
SET intervalstyle = postgres;

-- What an expression gives, or its error.
CREATE FUNCTION given(expression text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE result text;
BEGIN
    EXECUTE format('SELECT (%s)::text', expression) INTO result;
    RETURN result;
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE || ' ' || SQLERRM;
END $$;

-- Which there are, and where they apply without being written.
SELECT castsource::regtype, casttarget::regtype,
    CASE castcontext WHEN 'i' THEN 'implicit' WHEN 'a' THEN 'assignment' ELSE 'explicit' END AS context, provolatile
FROM pg_cast JOIN pg_proc ON pg_proc.oid = castfunc
WHERE castsource <> casttarget
    AND pg_cast.oid IN (SELECT objid FROM pg_depend WHERE refclassid = 'pg_extension'::regclass AND deptype = 'e')
ORDER BY castsource::regtype::text, casttarget::regtype::text;

-- Integers: exact; half away from zero; the ends of their ranges.
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    '32767::smallint::number', '(-2147483648)::number', '9223372036854775807::number', '(-9223372036854775808)::number',
    'number ''2.5''::int', 'number ''-2.5''::int', 'number ''2.4999999999999999''::int', 'number ''32767.4''::smallint',
    'number ''32767.5''::smallint', 'number ''-32768.5''::smallint', 'number ''2147483647.49''::int',
    'number ''2147483647.5''::int', 'number ''9223372036854775807.4''::bigint', 'number ''9223372036854775807.5''::bigint',
    'number ''-9223372036854775808.4''::bigint', 'number ''1e100''::bigint']) AS e;

-- numeric: exact in both directions, of more than 38 digits the first 38, as of a text.
SELECT count(*), count(*) FILTER (WHERE x::numeric::number <> x) AS differs,
    count(*) FILTER (WHERE x::numeric::text::numeric <> x::text::numeric) AS differs_from_text,
    count(*) FILTER (WHERE min_scale(x::numeric) <> scale(x::numeric)) AS has_zeros_behind
FROM (SELECT ((CASE i % 3 WHEN 0 THEN '-' ELSE '' END) || substr(md5(i::text), 1, 1 + i % 30)::text)
        AS seed, i FROM generate_series(1, 20000) AS i) AS _,
    LATERAL (SELECT (regexp_replace(seed, '[a-f]', (i % 7)::text, 'g') || 'e' || (i % 190 - 100))::number AS x) AS __;
SELECT count(*), count(*) FILTER (WHERE n::number::numeric <> n) AS differs,
    count(*) FILTER (WHERE n::number <> n::text::number) AS differs_from_text
FROM generate_series(-60, 60) AS scale, generate_series(1, 38) AS digits,
    LATERAL (SELECT (repeat('7', digits) || 'e' || scale)::numeric AS n) AS _;
SELECT count(*), count(*) FILTER (WHERE n::number <> n::text::number) AS differs_from_text
FROM generate_series(-60, 20) AS scale, generate_series(20, 50) AS digits,
    LATERAL (SELECT (repeat('-', digits & 1) || repeat('97', digits) || 'e' || scale)::numeric AS n) AS _;
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    '0::numeric::number', '0.000::numeric::number', 'number ''0''::numeric', '1200.00::numeric::number::numeric',
    '''1e125''::numeric::number', '''1e126''::numeric::number', '''9e-130''::numeric::number', '''1e-131''::numeric::number',
    'number ''-1e-130''::numeric', 'scale(number ''1e-130''::numeric)', 'number ''.05''::numeric(3,1)',
    '(repeat(''1234567890'', 4) || ''.5'')::numeric::number', '''NaN''::numeric::number', '''-Infinity''::numeric::number',
    '''Infinity''::numeric::number', '123.456::numeric::number(4,1)', '12345.6::numeric::number(4,1)']) AS e;

-- Floating point: the shortest decimal that reads back, and the nearest value.
SELECT setseed(0.5);
SELECT count(*), count(*) FILTER (WHERE f::number::float8 <> f) AS differs,
    count(*) FILTER (WHERE f::number::text::float8 <> f) AS text_differs,
    count(*) FILTER (WHERE f::number::float8::number <> f::number) AS number_differs
FROM (SELECT ((random() - 0.5) * 10 ^ (random() * 240 - 120))::float8 AS f FROM generate_series(1, 20000)) AS _;
SELECT count(*), count(*) FILTER (WHERE f::number::real <> f) AS differs
FROM (SELECT ((random() - 0.5) * 10 ^ (random() * 70 - 34))::real AS f FROM generate_series(1, 20000)) AS _;
SELECT count(*), count(*) FILTER (WHERE x::float8 <> x::text::float8) AS differs_from_text
FROM (SELECT (substr(regexp_replace(md5(i::text), '[a-f]', '', 'g'), 1, 20) || 'e' || (i % 60 - 40))::number AS x
    FROM generate_series(1, 20000) AS i) AS _;
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    '0.1::float8::number', '0.1::real::number', '(0.1::float8 + 0.2::float8)::number', '''-0''::float8::number',
    '1e22::float8::number', '5e-324::float8::number', '1.7e308::float8::number', '''NaN''::float8::number',
    '''Infinity''::real::number', 'number ''3.4e38''::real', 'number ''3.5e38''::real', 'number ''1e-50''::real',
    'number ''9e125''::float8']) AS e;

-- JSON: with all digits.
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    '''12345678901234567890.12345678901234567''::jsonb::number', '''"1"''::jsonb::number', '''null''::jsonb::number',
    '''[1]''::jsonb::number', '''{"a": -1e-100}''::jsonb->''a''', '(''{"a": -1e-100}''::jsonb->''a'')::number',
    'number ''-.5''::jsonb', 'number ''1e-130''::json', 'to_jsonb(number ''12.5'')', 'json_build_object(''d'', dv_date ''2024-01-02'')',
    'to_json(ARRAY[dv_timestamp ''2024-01-02 03:04:05.6''])', 'dv_time ''01:02:03.5''::jsonb',
    'dv_timestamptz ''2024-01-02 03:04:05 Asia/Seoul''::json', 'dv_timestampltz ''2024-01-02 03:04:05 Asia/Seoul''::json',
    'dv_interval_ym ''1-2''::jsonb', 'dv_interval_ds ''1 2:3:4''::jsonb', 'dv_rowid ''AAAAABAACAAAAADAAE''::json']) AS e;

-- Days: every one from 1582-10-15 to 9999-12-31 is the same text.
SELECT count(*), count(*) FILTER (WHERE d::dv_date::date <> d) AS differs,
    count(*) FILTER (WHERE d::dv_date::text <> d::text || ' 00:00:00') AS text_differs
FROM (SELECT date '1582-10-15' + i AS d FROM generate_series(0, date '9999-12-31' - date '1582-10-15', 13) AS i) AS _;
SELECT count(*), count(*) FILTER (WHERE t::dv_timestamp::timestamp <> t) AS differs,
    count(*) FILTER (WHERE t::dv_timestamp::text <> to_char(t, 'YYYY-MM-DD HH24:MI:SS.US') || '000') AS text_differs,
    count(*) FILTER (WHERE t::timestamptz::dv_timestamptz::timestamptz <> t::timestamptz) AS instant_differs,
    count(*) FILTER (WHERE t::timestamptz::dv_timestampltz::timestamptz <> t::timestamptz) AS local_differs
FROM (SELECT timestamp '1700-01-01' + random() * interval '1000 years' AS t FROM generate_series(1, 20000)) AS _;
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    'dv_date ''2024-02-29 13:05:00''::date', 'dv_date ''2024-02-29 13:05:00''::timestamp',
    'dv_date ''2024-02-29 13:05:00''::timestamptz', 'timestamptz ''2024-02-29 13:05:00 UTC''::dv_date',
    'timestamptz ''2024-02-29 13:05:00.5 UTC''::dv_timestamp', 'dv_timestamp ''2024-02-29 13:05:00.5''::timestamptz',
    'timestamp ''2024-02-29 13:05:59.999999''::dv_date', 'date ''2024-02-29''::dv_timestamp',
    'dv_timestamp ''2024-02-29 23:59:59.9''::date', 'dv_timestamp ''2024-12-31 23:59:59.9999995''::timestamp',
    'dv_timestamp ''2024-12-31 23:59:59.999999499''::timestamp', 'dv_timestamp ''9999-12-31 23:59:59.9999995''::timestamp',
    'dv_date ''1500-02-29''::date', 'dv_timestamp ''1500-02-29 01:00:00''::timestamp', 'date ''1582-10-10''::dv_date',
    'date ''1582-10-04''::dv_date', 'timestamp ''1582-10-14 01:00:00''::dv_timestamp', 'date ''0001-01-01 BC''::dv_date',
    'date ''0001-02-29 BC''::dv_date', 'dv_date ''-0001-01-01''::date', 'dv_date ''-4712-01-01''::date', 'dv_date ''-9999-01-01''::date',
    'dv_timestamp ''-9999-01-01 00:00:00''::timestamp', 'date ''10000-01-01''::dv_date', 'timestamp ''infinity''::dv_timestamp',
    'date ''-infinity''::dv_date', 'timestamptz ''infinity''::dv_date', 'timestamptz ''infinity''::dv_timestamptz']) AS e;

-- Instants, in UTC; the zone of a value is lost.
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    'timestamptz ''2024-07-01 13:05:00.25 America/New_York''::dv_timestamptz',
    'dv_timestamptz ''2024-07-01 13:05:00.25 America/New_York''::timestamptz',
    'dv_timestamptz ''2024-07-01 13:05:00.25 America/New_York''::dv_timestampltz',
    'dv_timestampltz ''2024-07-01 13:05:00.25 America/New_York''::dv_timestamptz',
    'dv_timestamptz ''2024-07-01 13:05:00.25 America/New_York''::dv_timestamp',
    'dv_timestamptz ''2024-07-01 13:05:00.25 America/New_York''::dv_date',
    'dv_timestampltz ''2024-07-01 13:05:00.25 America/New_York''::timestamptz',
    'timestamptz ''2024-07-01 13:05:00.25 America/New_York''::dv_timestampltz',
    'dv_timestampltz ''2024-07-01 00:00:00 UTC'' = dv_timestamptz ''2024-07-01 09:00:00 Asia/Seoul''',
    'dv_date ''2024-07-01 13:05:00''::dv_timestamp', 'dv_timestamp ''2024-07-01 13:05:00.9''::dv_date']) AS e;

-- Times of day and intervals.
SELECT e AS expression, given(e) FROM unnest(ARRAY[
    'time ''13:05:00.123456''::dv_time', 'dv_time ''13:05:00.1234565''::time', 'dv_time ''23:59:59.9999995''::time',
    'time ''24:00''::dv_time', 'interval ''1 year -2 months''::dv_interval_ym', 'interval ''1 month 1 day''::dv_interval_ym',
    'interval ''1 month 00:00:00.000001''::dv_interval_ym', 'dv_interval_ym ''-2-3''::interval',
    'dv_interval_ym ''178956970-7''::interval', 'dv_interval_ym ''178956970-8''::interval',
    'interval ''1 day 25:00:00.000001''::dv_interval_ds', 'interval ''1 day -00:00:00.000001''::dv_interval_ds',
    'interval ''-1 day 00:00:01''::dv_interval_ds', 'interval ''1 month''::dv_interval_ds',
    'interval ''1000000000 days''::dv_interval_ds', 'interval ''2147483647 days 2562047788:00:54.775807''::dv_interval_ds',
    'dv_interval_ds ''1 2:03:04.123456500''::interval', 'dv_interval_ds ''-1 2:03:04.123456500''::interval',
    'dv_interval_ds ''1 23:59:59.999999500''::interval', 'dv_interval_ds ''-999999999 23:59:59.999999999''::interval']) AS e;
SELECT count(*), count(*) FILTER (WHERE i::dv_interval_ds::interval <> i) AS differs
FROM (SELECT (random() - 0.5) * 1e6 * interval '1 day' AS i FROM generate_series(1, 20000)) AS _;

-- Columns take what may be assigned, and enforce what they are declared with.
CREATE TABLE assigned (n number(6,2), d dv_date, t dv_timestamp(3), z dv_timestamptz, i int, f float8, s text);
INSERT INTO assigned VALUES (1.005, date '2024-01-02', timestamp '2024-01-02 03:04:05.6785', timestamptz '2024-01-02 03:04:05Z',
    number '2.5', number '.1', dv_date '2024-01-02');
INSERT INTO assigned (n, i) VALUES (7, 7), (7::float8 / 3, 7);
INSERT INTO assigned (n) VALUES (10000);
SELECT * FROM assigned;
