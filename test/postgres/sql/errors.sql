-- Every SQLSTATE is caught as such, with message, detail and hint, and the next statement works.
\pset format unaligned

CREATE FUNCTION caught(query text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    message text; detail text; hint text; value text;
BEGIN
    EXECUTE 'SELECT (' || query || ')::text' INTO value;
    RETURN 'no error: ' || coalesce(value, 'NULL');
EXCEPTION
    WHEN division_by_zero OR numeric_value_out_of_range OR invalid_text_representation OR invalid_datetime_format
        OR datetime_field_overflow OR invalid_time_zone_displacement_value OR interval_field_overflow
        OR invalid_parameter_value OR invalid_argument_for_power_function OR program_limit_exceeded
        OR invalid_binary_representation OR data_exception THEN
        GET STACKED DIAGNOSTICS message = MESSAGE_TEXT, detail = PG_EXCEPTION_DETAIL, hint = PG_EXCEPTION_HINT;
        RETURN SQLSTATE || ' ' || message || E'\n      ' || detail || CASE WHEN hint <> '' THEN E'\n      ' || hint ELSE '' END;
END $$;
SELECT query, caught(query) FROM unnest(ARRAY[
    'number ''1'' / number ''0''',
    'dv_interval_ds ''1 00:00:00'' / number ''0''',
    'number ''9e125'' * number ''10''',
    'dv_cast_number(number ''1000'', 3, 0)',
    'number ''12x''',
    'dv_to_number(''12x'', ''999'')',
    'dv_sqrt(number ''-1'')',
    'dv_power(number ''-1'', number ''0.5'')',
    'dv_date ''31/12/2024''',
    'dv_date ''2024-02-30''',
    'dv_to_date(''x'', ''YYYY'')',
    'dv_to_date(''2024'', ''YYYY'')',
    'dv_to_date(''2024'', ''no model'')',
    'to_char(dv_date ''2024-01-01'', ''HH24:MN'')',
    'to_char(dv_date ''2024-01-01'', ''MON'', ''Klingon'')',
    'to_char(number ''1'', ''9.9.9'')',
    'dv_timestamptz ''2024-01-01 00:00 Asia/Soul''',
    'dv_timestamptz ''2024-03-31 02:30 Europe/Berlin''',
    'dv_timestamptz ''2024-01-01 00:00 +25:00''',
    'dv_interval_ym ''1-13''',
    'dv_interval_ym ''999999999-11'' + dv_interval_ym ''0-1''',
    'numtodsinterval(number ''1e30'', ''DAY'')',
    'numtodsinterval(number ''1'', ''fortnight'')',
    'add_months(dv_date ''9999-12-01'', 1)',
    'dv_trunc(dv_date ''2024-01-01'', ''WEEK'')',
    'next_day(dv_date ''2024-01-01'', ''someday'')',
    'dv_rowid(1, 65536, 3, 4)',
    'dv_rowid ''AAAAABAACAAAAADAA!''',
    'dv_rowid ''Q/////P//D/////P//''',
    'dv_extract(''CENTURY'', dv_date ''2024-01-01'')',
    'dv_extract(''TIMEZONE_REGION'', dv_timestamptz ''2024-01-01 00:00 Asia/Seoul'')',
    'dv_from_epoch(number ''1e125'')',
    'repeat(''x'', 1300)::number'
    ]) AS query;

-- Long and hostile texts in messages are cut, and stay texts of the server's encoding.
SELECT octet_length(caught(format('dv_to_date(%L, %L)', repeat('é', n), repeat('한', n)))) < 1000 AS short FROM generate_series(1, 500, 7) AS n GROUP BY 1;

-- Errors in the statement itself leave it alone; the transaction goes on behind a savepoint.
BEGIN;
SELECT number '1';
SAVEPOINT before;
SELECT number '1' / number '0';
SELECT number '2';
ROLLBACK TO before;
SELECT number '3' / number '4';
COMMIT;
SELECT dv_to_date('x', 'YYYY') FROM generate_series(1, 3);
SELECT dv_to_date('2024-02-29', 'YYYY-MM-DD');

-- An error of the server's own within a call of ours, and one of ours within a subtransaction that was the server's.
CREATE FUNCTION nested(depth int) RETURNS text LANGUAGE plpgsql AS $$
BEGIN
    IF depth = 0 THEN RETURN (number '1' / number '0')::text; END IF;
    BEGIN
        RETURN nested(depth - 1);
    EXCEPTION WHEN division_by_zero THEN
        RETURN try_to_number('x')::text || dv_to_date('x', 'YYYY')::text;
    END;
EXCEPTION WHEN invalid_datetime_format THEN
    RETURN depth || ' ' || SQLSTATE;
END $$;
SELECT nested(5);
SELECT to_char(dv_date '2024-01-01', repeat('DAY', 100000000));
SELECT length(to_char(dv_date '2024-01-01', repeat('DAY ', 10)));

-- try_ forms: NULL instead of every error of the text, in the same session and behind any of the errors above.
SELECT count(*) AS rows, count(v) AS read FROM (SELECT try_to_number(CASE WHEN i % 2 = 0 THEN i::text ELSE i || 'x' END) AS v FROM generate_series(1, 10000) AS i) AS _;
SELECT try_to_date('x') AS d, try_to_time('25:00') AS t, try_to_timestamp('x') AS ts, try_to_timestamp_tz('2024-03-31 02:30 Europe/Berlin') AS tz,
    try_to_yminterval('x') AS ym, try_to_dsinterval('x') AS ds, dv_error_of('to_date', '31.02.2024', 'DD.MM.YYYY') AS why;
