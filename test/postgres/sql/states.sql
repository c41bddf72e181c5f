-- States of aggregates as values: kept, merged, read back, refused.
\pset format unaligned

CREATE TABLE given AS SELECT i, v::text::number AS x, (i || '-' || i % 12)::dv_interval_ym AS y, (i || ' 0:0:0.' || i)::dv_interval_ds AS d FROM (
    SELECT i, (i * 40503 % 19997 - 9999) / 100.0 * CASE i % 50 WHEN 7 THEN 1e40 WHEN 9 THEN 1e-40 ELSE 1 END AS v FROM generate_series(1, 1000) AS i) AS _;
CREATE TABLE state AS SELECT i % 40 AS part, dv_sum_state(x) AS s, dv_variance_state(x) AS v, dv_sum_state(y) AS y, dv_sum_state(d) AS d FROM given GROUP BY 1;

-- What parts merge to is what one aggregate has, through one level or two, and in any order.
SELECT dv_sum_merge(s) = sum(x) AS s, dv_avg_merge(s) = avg(x) AS a, dv_count_merge(s) = count(x) AS n, dv_state_merge(s)::text = min(all_s) AS state,
    dv_stddev_merge(v) = stddev(x) AS d, dv_var_pop_merge(v) = var_pop(x) AS vp, dv_count_merge(v) = count(x) AS vn, dv_state_merge(v)::text = min(all_v) AS states
FROM (SELECT 0 AS row, s, v, NULL::number AS x, NULL::text AS all_s, NULL::text AS all_v FROM state
    UNION ALL SELECT 1, NULL, NULL, x, NULL, NULL FROM given
    UNION ALL SELECT 2, NULL, NULL, NULL, dv_sum_state(x)::text, dv_variance_state(x)::text FROM given) AS _;
SELECT dv_sum_merge(s) = (SELECT sum(x) FROM given) AS two_levels, dv_sum_merge(y) = (SELECT sum(y) FROM given) AS y,
    dv_avg_merge(d) = (SELECT avg(d) FROM given) AS d, dv_count_merge(d) AS n
FROM (SELECT part % 6, dv_state_merge(s ORDER BY part DESC) AS s, dv_state_merge(y) AS y, dv_state_merge(d) AS d FROM state GROUP BY 1) AS _;

-- One state at a time; none is changed where it stands.
CREATE TABLE kept AS SELECT part, s::text AS s, v::text AS v, y::text AS y, d::text AS d FROM state;
SELECT count(*) AS parts, count(*) FILTER (WHERE dv_state_sub(dv_state_add(s, '1.5'), '1.5')::text = s::text) AS back,
    count(*) FILTER (WHERE dv_count_of(dv_state_merge(s, s)) = 50) AS doubled, count(dv_state_add(v, '-3e50')) AS v,
    count(dv_state_add(y, '1-1')) AS y, count(dv_state_sub(d, '0 0:0:1')) AS d FROM state;
SELECT count(*) AS changed FROM state AS a JOIN kept AS k USING (part) WHERE (a.s::text, a.v::text, a.y::text, a.d::text) <> (k.s, k.v, k.y, k.d);
SELECT dv_state_add(NULL::dv_number_state, number '5') AS s, dv_sum_of(dv_state_add(NULL::dv_number_state, number '5')) AS five,
    dv_count_of(NULL::dv_number_state) AS none, dv_count_of(NULL::dv_interval_ym_state) AS none_y, dv_sum_of(NULL::dv_number_state) AS no_sum,
    dv_state_add(NULL::dv_number_state, NULL::number) AS empty, dv_sum_of(dv_state_add(NULL::dv_number_state, NULL::number)) AS sum_of_empty;
SELECT dv_variance_of(dv_state_sub(NULL::dv_number_variance_state, number '5'));

-- An aggregate of one's own has states of the working form, which are the same values.
CREATE AGGREGATE working(number) (SFUNC = dv_state_add, STYPE = dv_number_state);
CREATE AGGREGATE working_variance(number) (SFUNC = dv_state_add, STYPE = dv_number_variance_state);
CREATE TABLE worked AS SELECT i % 40 AS part, working(x) AS s, working_variance(x) AS v FROM given GROUP BY 1;
SELECT count(*) AS parts, count(*) FILTER (WHERE w.s::text = s.s::text AND dv_number_state_send(w.s) = dv_number_state_send(s.s)) AS s,
    count(*) FILTER (WHERE w.v::text = s.v::text) AS v, count(*) FILTER (WHERE dv_sum_of(w.s) = dv_sum_of(s.s)) AS sums,
    dv_state_merge(w.s)::text = dv_state_merge(s.s)::text AS merged FROM worked AS w JOIN state AS s USING (part);

-- States are equal when they are the same sum of as many rows, in either form, and have one hash then.
SELECT count(*) FILTER (WHERE w.s = s.s AND w.v = s.v) AS equal, count(*) FILTER (WHERE w.s <> dv_state_add(s.s, '0')) AS of_more_rows,
    count(*) FILTER (WHERE dv_state_sub(dv_state_add(w.v, '1e-60'), '1e-60') = s.v) AS through_others,
    count(*) FILTER (WHERE s.y = dv_state_merge(s.y, dv_state_add(NULL::dv_interval_ym_state, NULL)) AND s.y <> dv_state_add(s.y, '0-0')) AS y,
    count(*) FILTER (WHERE s.d = dv_state_sub(dv_state_add(s.d, '1 0:0:0'), '1 0:0:0') AND s.d <> dv_state_add(s.d, '0 0:0:0')) AS d
FROM worked AS w JOIN state AS s USING (part);
SELECT count(*) AS otherwise FROM (SELECT part, s, v FROM worked EXCEPT SELECT part, s, v FROM state) AS _;
SELECT count(*) AS states FROM (SELECT s, NULL::dv_interval_ym_state AS y FROM worked UNION SELECT s, NULL FROM state UNION SELECT NULL, y FROM state) AS _;
SELECT count(*) AS otherwise FROM worked AS w JOIN state AS s USING (part)
    WHERE dv_number_state_hash_extended(w.s, 7) <> dv_number_state_hash_extended(s.s, 7) OR dv_number_variance_state_hash_extended(w.v, 7) <> dv_number_variance_state_hash_extended(s.v, 7);

-- About 20 bytes for money.
SELECT max(pg_column_size(s)) <= 20 AS small FROM (SELECT dv_sum_state((i / 100.0)::text::number) AS s FROM generate_series(1, 1000) AS i GROUP BY i % 7) AS _;

-- Text and bytes of states read back, or are refused with SQLSTATE 22P02, 22P03: never anything else, whatever they are.
CREATE FUNCTION by_copy(type text, bytes bytea) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    file bytea := '\x5047434f50590aff0d0a00'::bytea || '\x0000000000000000'::bytea || '\x0001'::bytea || int4send(length(bytes)) || bytes || '\xffff'::bytea;
    octal text := '';
    back text;
BEGIN
    FOR i IN 0 .. length(file) - 1 LOOP
        octal := octal || '\' || get_byte(file, i) / 64 || get_byte(file, i) / 8 % 8 || get_byte(file, i) % 8;
    END LOOP;
    EXECUTE format('CREATE TEMP TABLE received (v %s)', type);
    EXECUTE format('COPY received FROM PROGRAM %L (FORMAT binary)', 'printf ''' || octal || '''');
    EXECUTE 'SELECT v::text FROM received' INTO back;
    DROP TABLE received;
    RETURN CASE WHEN back = encode(bytes, 'hex') THEN 'reads back' ELSE 'reads as ' || back END;
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE;
END $$;
CREATE FUNCTION by_text(type text, given text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    back text;
BEGIN
    EXECUTE format('SELECT (%L::%s)::text', given, type) INTO back;
    RETURN CASE WHEN back = lower(given) THEN 'reads back' ELSE 'reads as ' || back END;
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE;
END $$;
-- What comes of a state that is one, by all that takes it: a value, or an error with a SQLSTATE.
CREATE FUNCTION used(type text, given text, what text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    result text;
BEGIN
    EXECUTE format('SELECT %s FROM (VALUES (%L::%s), (%L)) AS _ (s)', what, given, type, given) INTO result;
    RETURN 'a value';
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE;
END $$;

CREATE TABLE type AS SELECT * FROM (VALUES ('dv_number_state', 's'), ('dv_number_variance_state', 'v'), ('dv_interval_ym_state', 'y'), ('dv_interval_ds_state', 'd')) AS _ (type, field);
CREATE TABLE damaged AS
WITH good AS (SELECT type, decode(to_jsonb(k) ->> field, 'hex') AS bytes FROM type, kept AS k WHERE part IN (0, 1, 7)),
    places AS (SELECT DISTINCT type, bytes, i FROM good, generate_series(0, length(bytes) - 1) AS i)
SELECT DISTINCT type, how, bytes FROM (
    SELECT type, 'none' AS how, bytes FROM good
    UNION ALL SELECT type, 'byte', set_byte(bytes, i, get_byte(bytes, i) # mask) FROM places, unnest(ARRAY[1, 2, 16, 128, 255]) AS mask
    UNION ALL SELECT type, 'cut', substr(bytes, 1, i) FROM places
    UNION ALL SELECT type, 'longer', bytes || more FROM good, unnest(ARRAY['\x00', '\xff', '\x80', decode(repeat('7f', 256), 'hex'), decode(repeat('00', 2000), 'hex')]::bytea[]) AS more
    UNION ALL SELECT type, 'other type', bytes FROM type, (SELECT bytes FROM good) AS _
    UNION ALL SELECT type, 'zeros', decode(repeat('00', n), 'hex') FROM type, unnest(ARRAY[1, 3, 12, 26, 52, 56, 100, 104, 200, 312]) AS n) AS _;
SELECT type, how, by_text(type, encode(bytes, 'hex')) AS result, count(*) > 0 AS some FROM damaged GROUP BY 1, 2, 3 ORDER BY 1, 2, 3;
SELECT type, by_copy(type, bytes) AS result, count(*) > 0 AS some FROM damaged WHERE how <> 'byte' OR get_byte(bytes, length(bytes) - 1) % 8 = 1 GROUP BY 1, 2 ORDER BY 1, 2;

-- Those that are states of some rows, though of others, come to a value or an error by each function.
CREATE TABLE accepted AS SELECT type, encode(bytes, 'hex') AS given FROM damaged WHERE by_text(type, encode(bytes, 'hex')) = 'reads back';
SELECT type, what, used(type, given, what) AS result, count(*) > 0 AS some FROM accepted, unnest(CASE
    WHEN type = 'dv_number_variance_state' THEN ARRAY['dv_variance_merge(s)', 'min(dv_stddev_pop_of(s))', 'dv_state_merge(s)', 'dv_count_merge(s)', 'min(dv_state_add(s, ''7'')::text)', 'min(dv_state_sub(s, ''7'')::text)']
    WHEN type = 'dv_number_state' THEN ARRAY['dv_sum_merge(s)', 'min(dv_avg_of(s))', 'dv_state_merge(s)', 'dv_count_merge(s)', 'min(dv_state_add(s, ''7'')::text)', 'min(dv_state_sub(s, ''7e125'')::text)']
    ELSE ARRAY['dv_sum_merge(s)', 'min(dv_avg_of(s))', 'dv_state_merge(s)', 'dv_count_merge(s)', 'min(dv_state_merge(s, s)::text)'] END) AS what
GROUP BY 1, 2, 3 ORDER BY 1, 2, 3;

-- Other texts.
SELECT type, given, by_text(type, given) AS result FROM type, unnest(ARRAY['', '0', '0g', ' 00', 'x', '\x0100', repeat('01', 3000)]) AS given WHERE length(given) < 100 OR by_text(type, given) <> '22P02' ORDER BY 1, 2;
SELECT '010080000000000000000001'::dv_number_state;
SELECT upper(s::text)::dv_number_state::text = s::text AS upper_case FROM state WHERE part = 3;
