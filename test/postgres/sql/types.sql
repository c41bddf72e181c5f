-- Text and bytes of every type: they read back, and say what is wrong with what they do not take.
\pset format unaligned

CREATE TABLE given (type text, value text);
INSERT INTO given VALUES
    ('number', '0'), ('number', '-0'), ('number', '1'), ('number', '-1'), ('number', ' 12.50 '), ('number', '.5'),
    ('number', '5.'), ('number', '+7'), ('number', '1e3'), ('number', '-123.456e-7'),
    ('number', '99999999999999999999999999999999999999e88'), ('number', '-99999999999999999999999999999999999999e88'),
    ('number', '1e-130'), ('number', '-1e-130'), ('number', '0.1234567890123456789012345678901234567890'),
    ('dv_date', '2024-02-29 13:05:00'), ('dv_date', '-4712-01-01 00:00:00'), ('dv_date', '9999-12-31 23:59:59'),
    ('dv_date', '2024-02-29'), ('dv_date', '1582-10-04 12:00:00'), ('dv_date', '1582-10-15 12:00:00'),
    ('dv_time', '13:05:00.5'), ('dv_time', '00:00:00'), ('dv_time', '23:59:59.999999999'),
    ('dv_timestamp', '2024-02-29 13:05:00.123456789'), ('dv_timestamp', '-4712-01-01 00:00:00'),
    ('dv_timestamp', '9999-12-31 23:59:59.999999999'),
    ('dv_timestamptz', '2024-02-29 13:05:00.5 Asia/Seoul'), ('dv_timestamptz', '2024-02-29 13:05:00 -05:30'),
    ('dv_timestamptz', '2024-07-01 13:05:00 America/New_York'), ('dv_timestamptz', '9999-12-31 23:59:59.999999999 UTC'),
    ('dv_timestampltz', '2024-02-29 13:05:00.5 Asia/Seoul'), ('dv_timestampltz', '2024-02-29 13:05:00 -05:30'),
    ('dv_interval_ym', '1-6'), ('dv_interval_ym', '-0-1'), ('dv_interval_ym', '999999999-11'), ('dv_interval_ym', '-999999999-11'),
    ('dv_interval_ds', '1 2:03:04.5'), ('dv_interval_ds', '-0 0:0:0.000000001'),
    ('dv_interval_ds', '999999999 23:59:59.999999999'), ('dv_interval_ds', '-999999999 23:59:59.999999999'),
    ('dv_rowid', 'AAAAABAACAAAAADAAE'), ('dv_rowid', 'D/////P//D/////P//'), ('dv_rowid', 'AAAAAAAAAAAAAAAAAA');

-- The text of a text read, its bytes, and what reading the text again gives.
CREATE FUNCTION shown(type text, value text, OUT text text, OUT sent bytea, OUT reads_back boolean) LANGUAGE plpgsql AS $$
BEGIN
    EXECUTE format('SELECT v::text, dv_%1$s_send(v), v::text::%2$s = v AND dv_%1$s_send(v::text::%2$s) = dv_%1$s_send(v)
        FROM (SELECT %3$L::%2$s AS v) AS _', replace(type, 'dv_', ''), type, value) INTO text, sent, reads_back;
EXCEPTION WHEN OTHERS THEN
    text := SQLSTATE || ' ' || SQLERRM;
END $$;
SELECT type, value, s.* FROM given, shown(type, value) AS s;

-- Settings change neither way.
SET datestyle = 'SQL, DMY';
SET intervalstyle = 'iso_8601';
SET timezone = 'Asia/Seoul';
SET extra_float_digits = -15;
SELECT count(*) AS otherwise FROM given, shown(type, value) AS s WHERE NOT s.reads_back;
SELECT dv_timestamptz '2024-02-29 13:05:00 +09:00', dv_timestampltz '2024-02-29 13:05:00 +09:00', dv_date '2024-02-03',
    dv_interval_ds '1 2:3:4';
RESET ALL;

-- What is refused.
SELECT type, value, s.text FROM (VALUES
    ('number', ''), ('number', ' '), ('number', 'x'), ('number', '1x'), ('number', '1e126e'), ('number', '1e126'),
    ('number', 'NaN'), ('number', 'Infinity'), ('number', '--1'), ('number', repeat('9', 200)),
    ('dv_date', ''), ('dv_date', '2023-02-29'), ('dv_date', '0000-01-01'), ('dv_date', '10000-01-01'), ('dv_date', '-4713-01-01'),
    ('dv_date', '2024-02-29 24:00:00'), ('dv_date', 'infinity'), ('dv_date', 'now'), ('dv_date', '1582-10-10'),
    ('dv_time', '24:00:00'), ('dv_time', '1'), ('dv_time', '13:05:00.1234567890'),
    ('dv_timestamp', '2024-02-29 13:05:60'), ('dv_timestamp', '2024-13-01'), ('dv_timestamp', 'x'),
    ('dv_timestamptz', '2024-02-29 13:05:00 Mars'), ('dv_timestamptz', '2024-03-31 02:30:00 Europe/Berlin'),
    ('dv_timestamptz', '2024-02-29 13:05:00 +16:00'), ('dv_timestampltz', '2024-02-29 13:05:00 Mars'),
    ('dv_interval_ym', '1-12'), ('dv_interval_ym', '1000000000-0'), ('dv_interval_ym', ''), ('dv_interval_ym', '1 year'),
    ('dv_interval_ds', '1 24:00:00'), ('dv_interval_ds', '1000000000 0:0:0'), ('dv_interval_ds', '1 day'),
    ('dv_rowid', ''), ('dv_rowid', 'AAAAABAACAAAAADAA'), ('dv_rowid', 'AAAAABAACAAAAADAA!'), ('dv_rowid', 'AAAAABAACAAAAADAAEA'))
    AS refused(type, value), shown(type, value) AS s;

-- NULL is the server's.
SELECT NULL::number IS NULL AS n, NULL::dv_date IS NULL AS d, NULL::number + number '1' AS sum, to_char(NULL::dv_date) AS text,
    coalesce(NULL::dv_time, dv_time '01:02:03') AS time;

-- Stored sizes: a header of one byte and the digits.
SELECT value, pg_column_size(v) AS size FROM (SELECT value, value::number AS v FROM given WHERE type = 'number') AS _;
SELECT typname, typlen, typbyval, typalign, typstorage, typcategory, typispreferred FROM pg_type
    WHERE typname IN (SELECT type FROM given) AND typname <> 'numeric' ORDER BY typname;

-- Arrays, composites and domains of the types.
SELECT ARRAY[number '1', '2.5'] AS a, '{2024-02-29 13:05:00,NULL}'::dv_date[] AS d,
    ROW(number '1.5', dv_time '01:02:03', dv_interval_ym '1-2') AS r;
CREATE TYPE price AS (amount number(10, 2), at dv_timestamptz(0));
SELECT ROW('1.005', '2024-02-29 13:05:00.6 Asia/Seoul')::price;
CREATE DOMAIN positive AS number(5) CHECK (VALUE > number '0');
SELECT '12.7'::positive;
SELECT '-1'::positive;
