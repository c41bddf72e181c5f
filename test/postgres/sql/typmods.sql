-- Modifiers: shown, enforced wherever a value enters, and checked themselves.

CREATE TABLE modified (
    n number, n5 number(5), n52 number(5, 2), low number(3, -2), small number(2, 4), most number(38, 127), least number(1, -127),
    t dv_time(0), ts dv_timestamp(3), tz dv_timestamptz(6), ltz dv_timestampltz(9), ym dv_interval_ym(4),
    ds dv_interval_ds(3), dsf dv_interval_ds(2, 1));
\d modified
SELECT format_type(atttypid, atttypmod) AS type, atttypmod FROM pg_attribute
    WHERE attrelid = 'modified'::regclass AND attnum > 0 ORDER BY attnum;

-- By INSERT, UPDATE, COPY and casts alike: rounded where digits are too many behind the point, refused in front of it.
INSERT INTO modified (n, n5, n52, low, small, t, ts, tz, ltz, ym, ds, dsf) VALUES
    ('1.005', '12345.5', '-1.005', '12345', '0.00555', '13:05:00.5', '2024-02-29 13:05:00.1235',
     '2024-02-29 13:05:00.1234565 Asia/Seoul', '2024-02-29 13:05:00.123456789 +00:00', '1234-5', '123 1:2:3.5', '12 1:2:3.55');
COPY modified (n5, n52, t, ts, dsf) FROM STDIN;
99999.4	999.994	23:59:59.4	2024-12-31 23:59:59.9995	-12 1:2:3.55
\.
UPDATE modified SET n = '2', n52 = '3.14159', ts = '2024-01-01 00:00:00.0005' WHERE low IS NOT NULL;
\x on
SELECT * FROM modified;
\x off
SELECT number '123.456'::number(5, 1) AS cast, number '99.44'::number(3, 1)::number(2) AS twice,
    dv_interval_ds '-1 2:3:4.55'::dv_interval_ds(2, 1) AS ds, dv_timestamp '9999-12-31 23:59:59.4'::dv_timestamp(0) AS last;
SELECT ARRAY['1.005', '2.5']::number(5, 2)[] AS elements;
CREATE FUNCTION keeps(v number(3, 1)) RETURNS number LANGUAGE sql RETURN v;  -- functions do not enforce, as everywhere
SELECT keeps(number '1.005');

-- What does not fit.
INSERT INTO modified (n5) VALUES ('99999.5');
INSERT INTO modified (n52) VALUES ('1000');
INSERT INTO modified (ym) VALUES ('12345-0');
INSERT INTO modified (ds) VALUES ('1234 0:0:0');
UPDATE modified SET low = '99951' WHERE low IS NOT NULL;
SELECT dv_timestamp '9999-12-31 23:59:59.5'::dv_timestamp(0);
COPY modified (n5) FROM STDIN;
1
123456
\.
SELECT count(*) FROM modified;

-- Modifiers that are none.
CREATE TABLE refused (v number(0));
CREATE TABLE refused (v number(39));
CREATE TABLE refused (v number(5, 128));
CREATE TABLE refused (v number(5, -128));
CREATE TABLE refused (v number(5, 2, 1));
CREATE TABLE refused (v number('x'));
CREATE TABLE refused (v number(99999999999));
CREATE TABLE refused (v dv_time(10));
CREATE TABLE refused (v dv_timestamp(-1));
CREATE TABLE refused (v dv_timestamptz(1, 2));
CREATE TABLE refused (v dv_interval_ds(10));
CREATE TABLE refused (v dv_interval_ds(2, 10));
CREATE TABLE refused (v dv_date(1));
CREATE TABLE refused (v dv_rowid(1));
SELECT number '1'::number(NULL);

-- A column that changes its modifier: applied to what is there.
CREATE TABLE altered (v number);
INSERT INTO altered VALUES ('1.25'), ('12.345');
ALTER TABLE altered ALTER v TYPE number(4, 1);
SELECT v FROM altered;
ALTER TABLE altered ALTER v TYPE number(2, 1);
CREATE TABLE alike AS SELECT v, v + number '0.05' AS sum FROM altered;
\d alike

-- A column whose modifier gets wider keeps its table; one whose values may change or not fit gets a new one.
CREATE TABLE wider (v number);
CREATE FUNCTION new_table(before text, after text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE
    file oid;
BEGIN
    EXECUTE 'DROP TABLE wider; CREATE TABLE wider (v ' || before || ')';
    file := pg_relation_filenode('wider');
    EXECUTE 'ALTER TABLE wider ALTER v TYPE ' || after;
    RETURN file <> pg_relation_filenode('wider');
END $$;
SELECT before, after, new_table(before, after) AS wider, new_table(after, before) AS back FROM (VALUES
    ('number(12, 2)', 'number(14, 2)'), ('number(12, 2)', 'number(14, 4)'), ('number(12, 2)', 'number(14, 5)'), ('number(12, 2)', 'number(12, 3)'),
    ('number(5)', 'number(5, 0)'), ('number(3, -2)', 'number(5, 0)'), ('number(3, -2)', 'number(4, 0)'), ('number(2, 4)', 'number(4, 4)'), ('number(2, 4)', 'number'),
    ('dv_time(0)', 'dv_time(3)'), ('dv_timestamp(3)', 'dv_timestamp'), ('dv_timestamp(9)', 'dv_timestamp'), ('dv_timestamptz(3)', 'dv_timestamptz(4)'), ('dv_timestampltz(3)', 'dv_timestampltz(4)'),
    ('dv_interval_ym(2)', 'dv_interval_ym(4)'), ('dv_interval_ds(2, 3)', 'dv_interval_ds(3, 3)'), ('dv_interval_ds(2, 3)', 'dv_interval_ds(2)'),
    ('dv_interval_ds(2, 3)', 'dv_interval_ds(1, 6)'), ('dv_interval_ds(4)', 'dv_interval_ds(4, 9)')) AS _ (before, after);

-- What is cast is the same with and without the planner's help.
SELECT count(*) AS pairs, count(*) FILTER (WHERE narrow::text <> wide::text) AS otherwise FROM (
    SELECT v::number(6, 2) AS narrow, v::number(6, 2)::number(8, 3) AS wide FROM (SELECT (i * 7919 % 1000003 / 1000.0)::number AS v FROM generate_series(1, 1000) AS i OFFSET 0) AS _) AS _;
SELECT v::number(6, 2)::number(6, 1) AS narrower, v::number(3)::number(4, 2) AS other FROM (SELECT number '12.345' AS v OFFSET 0) AS _;
