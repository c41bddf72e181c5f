-- Window frames with RANGE: against counting by conditions.
\pset format unaligned

CREATE TABLE given (id int, n number, d dv_date, t dv_timestamp, z dv_timestamptz, l dv_timestampltz);
INSERT INTO given SELECT i, (i * 37 % 101)::number / 4, dv_date '2024-01-25' + i * 29 % 97 / 2.0,
        dv_timestamp '2024-01-25 00:00:00' + dv_interval_ds '0 7:31:00.5' * (i * 29 % 97),
        from_tz(dv_timestamp '2024-01-25 00:00:00' + dv_interval_ds '0 7:31:00.5' * (i * 29 % 97),
            CASE i % 2 WHEN 0 THEN 'Asia/Seoul' ELSE '-08:00' END),
        from_tz(dv_timestamp '2024-01-25 00:00:00' + dv_interval_ds '0 7:31:00.5' * (i * 29 % 97), '+00:00')
    FROM generate_series(1, 300) AS i;
INSERT INTO given (id) VALUES (301);

-- Frames that differ from what a condition counts.
CREATE FUNCTION differs(col text, frame text, condition text) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE result bigint;
BEGIN
    EXECUTE format('SELECT count(*) FROM (SELECT id, %1$s, count(*) OVER (ORDER BY %1$s RANGE BETWEEN %2$s) AS framed FROM given) AS r
        WHERE %1$s IS NOT NULL AND framed <> (SELECT count(*) FROM given AS v WHERE %3$s)',
        col, frame, replace(condition, '@', col)) INTO result;
    RETURN result;
END $$;
SELECT f.*, differs(c, frame, condition) FROM (VALUES
    ('n', '3 PRECEDING AND 2 FOLLOWING', 'v.@ BETWEEN r.@ - 3 AND r.@ + 2'),
    ('n', '''0.25'' PRECEDING AND CURRENT ROW', 'v.@ BETWEEN r.@ - number ''0.25'' AND r.@'),
    ('n', '5 PRECEDING AND 2 PRECEDING', 'v.@ BETWEEN r.@ - 5 AND r.@ - 2'),
    ('n', 'number ''1.5'' FOLLOWING AND UNBOUNDED FOLLOWING', 'v.@ >= r.@ + number ''1.5'' OR v.@ IS NULL'),
    ('d', '7 PRECEDING AND number ''0.5'' FOLLOWING', 'v.@ BETWEEN r.@ - 7 AND r.@ + 0.5'),
    ('d', 'dv_interval_ds ''1 12:00:00'' PRECEDING AND CURRENT ROW', 'v.@ BETWEEN r.@ - dv_interval_ds ''1 12:00:00'' AND r.@'),
    ('d', 'dv_interval_ym ''0-1'' PRECEDING AND CURRENT ROW', 'v.@ BETWEEN add_months(r.@, -1) AND r.@'),
    ('t', 'dv_interval_ds ''1 0:0:0.000000001'' PRECEDING AND dv_interval_ds ''0 7:31:00.5'' FOLLOWING',
        'v.@ BETWEEN r.@ - dv_interval_ds ''1 0:0:0.000000001'' AND r.@ + dv_interval_ds ''0 7:31:00.5'''),
    ('t', 'dv_interval_ym ''0-1'' PRECEDING AND dv_interval_ym ''0-1'' FOLLOWING', 'v.@ BETWEEN add_months(r.@, -1) AND add_months(r.@, 1)'),
    ('z', 'dv_interval_ds ''2 0:0:0'' PRECEDING AND CURRENT ROW', 'v.@ BETWEEN r.@ - dv_interval_ds ''2 0:0:0'' AND r.@'),
    ('l', 'dv_interval_ds ''2 0:0:0'' PRECEDING AND CURRENT ROW', 'v.@ BETWEEN r.@::dv_timestamptz - dv_interval_ds ''2 0:0:0'' AND r.@')
    ) AS f (c, frame, condition);
SELECT id, d, count(*) OVER (ORDER BY d DESC RANGE BETWEEN 1 PRECEDING AND 1 FOLLOWING) FROM given WHERE id < 6 ORDER BY d, id;

-- Sums beyond the range are beyond every value; those beyond the calendar are errors; offsets go forward.
CREATE TABLE ends (n number);
INSERT INTO ends VALUES ('-9e125'), ('-1'), (0), (1), ('9e125'), ('9.9e125');
SELECT n, count(*) OVER (ORDER BY n RANGE BETWEEN number '9e125' PRECEDING AND number '9e125' FOLLOWING) AS both_ways,
    count(*) OVER (ORDER BY n RANGE BETWEEN number '9.9e125' FOLLOWING AND UNBOUNDED FOLLOWING) AS above,
    count(*) OVER (ORDER BY n RANGE BETWEEN UNBOUNDED PRECEDING AND number '9.9e125' PRECEDING) AS below FROM ends ORDER BY n;
SELECT count(*) OVER (ORDER BY n RANGE number '-1' PRECEDING) FROM given;
SELECT count(*) OVER (ORDER BY d RANGE number '-1' PRECEDING) FROM given;
SELECT count(*) OVER (ORDER BY t RANGE dv_interval_ds '-0 0:0:0.000000001' PRECEDING) FROM given;
SELECT count(*) OVER (ORDER BY t RANGE dv_interval_ym '-0-1' PRECEDING) FROM given;
SELECT count(*) OVER (ORDER BY t RANGE dv_interval_ym '999999999-0' PRECEDING) FROM given;
SELECT count(*) OVER (ORDER BY n RANGE BETWEEN 1.5 PRECEDING AND CURRENT ROW) FROM given;
