-- Text views: statements in their order, with what they give; what stands for itself may not fail.

-- Types and precisions, defaults, a generated column, SQL NULL and empty texts.
CREATE TABLE sale(id INTEGER PRIMARY KEY, day DATE, price NUMBER(10,2) DEFAULT (to_number('9.99')), seen "timestamp (3)  with time zone", note TEXT DEFAULT 'none', year AS (dv_extract('YEAR', day)));
SELECT dv_create_text_view('sale', '{"DAY": "DD.MM.YYYY"}');  -- sale_text
INSERT INTO sale_text(day, price, seen) VALUES ('29.02.2024', '1234.567', '2024-02-29 13:05:00.12345 +09:00'), ('01.03.2024', 12, '');
INSERT INTO sale_text(day, price) VALUES ('', NULL);
SELECT group_concat(id || '|' || coalesce(day, '-') || '|' || price || '|' || coalesce(seen, '-') || '|' || note || '|' || coalesce(year, '-'), ' ') FROM sale_text;  -- 1|29.02.2024|1234.57|2024-02-29 13:05:00.123000000 +09:00|none|2024 2|01.03.2024|12|-|none|2024 3|-|9.99|-|none|-
SELECT group_concat(dv_typeof(price)) || group_concat(dv_typeof(day)) FROM sale;  -- NUMBER,NUMBER,NUMBERDATE,DATE,NULL
INSERT INTO sale_text(day) VALUES ('2024-01-01');  -- error: column "day": to_date: The value 24 of the field "month" is out of range: 1 to 12 is accepted. The text is "2024-01-01", the model is "DD.MM.YYYY". (dv-5114)
INSERT INTO sale_text(price) VALUES ('123456789');  -- error: column "price": dv_cast_number: The value 123456789 has more integer digits than NUMBER(10,2) holds. (dv-5111)
INSERT INTO sale_text(price) VALUES ('cheap');  -- error: column "price": to_number: Invalid number: the text does not have the form of a number. The text is "cheap". It has the form -1234.5 or 1.5E+30, unless a model is given. (dv-5074)
INSERT INTO sale_text(id) VALUES (1);  -- error: UNIQUE constraint failed: sale.id
INSERT OR REPLACE INTO sale_text(id, price) VALUES (1, 1);
SELECT price || count(*) FROM sale_text WHERE id = 1;  -- 11

-- What is not changed keeps what the model does not show.
INSERT INTO sale(id, day) VALUES (7, dv_date(2024, 5, 6, 7, 8, 9));
UPDATE sale_text SET note = 'seven' WHERE id = 7;
SELECT dv_text(day) || note FROM sale WHERE id = 7;  -- 2024-05-06 07:08:09seven
UPDATE sale_text SET id = 8, day = '07.05.2024', price = '' WHERE id = 7;
SELECT dv_text(day) || coalesce(price, 'null') FROM sale WHERE id = 8;  -- 2024-05-07 00:00:00null
DELETE FROM sale_text WHERE day = '07.05.2024';
SELECT count(*) FROM sale;  -- 3
UPDATE sale SET price = 'junk' WHERE id = 2;
SELECT price FROM sale_text WHERE id = 2;  -- junk

-- Intervals by the precision of both ends, after the fraction is rounded; what is no precision.
CREATE TABLE span(d "INTERVAL DAY(3) TO SECOND(2)", y "INTERVAL YEAR(2) TO MONTH", n "interval day (0) to second");
SELECT dv_create_text_view('span');  -- span_text
INSERT INTO span_text VALUES ('999 23:59:59.994', '99-11', '0 23:0:0'), ('-999 0:0:0', '-99-11', '-0 1:0:0');
SELECT group_concat(d || ' ' || y || ' ' || n, '; ') FROM span_text;  -- +999 23:59:59.990000000 +99-11 +00 23:00:00.000000000; -999 00:00:00.000000000 -99-11 -00 01:00:00.000000000
INSERT INTO span_text(d) VALUES ('999 23:59:59.995');  -- error: column "d": dv_cast_leading: The leading field of the interval has more digits than its precision allows. (dv-5064)
INSERT INTO span_text(d) VALUES ('-1000 0:0:0');  -- error: column "d": dv_cast_leading: The leading field of the interval has more digits than its precision allows. (dv-5064)
UPDATE span_text SET y = '100-0';  -- error: column "y": dv_cast_leading: The leading field of the interval has more digits than its precision allows. (dv-5064)
INSERT INTO span_text(n) VALUES ('1 0:0:0');  -- error: column "n": dv_cast_leading: The leading field of the interval has more digits than its precision allows. (dv-5064)
CREATE TABLE long_span(d "INTERVAL DAY(10) TO SECOND");
CREATE TABLE month_span(d "INTERVAL YEAR TO MONTH(3)");
CREATE TABLE middle_span(d "INTERVAL DAY TO(3) SECOND");
CREATE TABLE more_span(d "INTERVAL DAY(1) TO SECOND(2)(3)");
CREATE TABLE pair_span(d "INTERVAL DAY(1,2) TO SECOND");
SELECT dv_create_text_view('long_span');  -- error: dv_create_text_view: the column "d" is declared INTERVAL DAY(10) TO SECOND, which is no precision of INTERVAL DAY TO SECOND
SELECT dv_create_text_view('month_span');  -- error: dv_create_text_view: the column "d" is declared INTERVAL YEAR TO MONTH(3), which is no precision of INTERVAL YEAR TO MONTH
SELECT dv_create_text_view('middle_span');  -- error: dv_create_text_view: the column "d" is declared INTERVAL DAY TO(3) SECOND, which is no precision of INTERVAL DAY TO SECOND
SELECT dv_create_text_view('more_span');  -- error: dv_create_text_view: the column "d" is declared INTERVAL DAY(1) TO SECOND(2)(3), which is no precision of INTERVAL DAY TO SECOND
SELECT dv_create_text_view('pair_span');  -- error: dv_create_text_view: the column "d" is declared INTERVAL DAY(1,2) TO SECOND, which is no precision of INTERVAL DAY TO SECOND

-- Models with a language, with punctuation, with neither and with something else.
CREATE TABLE bill(id INTEGER PRIMARY KEY, day DATE, amount NUMBER(12,2), note TEXT);
SELECT dv_create_text_view('bill', '{"day": ["FMDD MONTH YYYY", "RUSSIAN"], "amount": ["FM999G999G990D00", ",."], "note": null}');  -- bill_text
INSERT INTO bill_text(day, amount) VALUES ('3 мар 2024', '1.234,567'), ('4 May 2024', '1');  -- error: column "amount": to_number: Invalid number: the text does not have the form of a number. The text is "1.234,567", the model is "FM999G999G990D00", the punctuation is ",.". (dv-5074)
INSERT INTO bill_text(day, amount) VALUES ('3 мар 2024', '1.234,56');
INSERT INTO bill_text(day) VALUES ('4 May 2024');  -- error: column "day": to_date: Invalid month: "May 2024" (4 May 2024). The model is "FMDD MONTH YYYY", the language is "RUSSIAN". (dv-5113)
UPDATE bill_text SET amount = '-0,5' WHERE day = '3 МАРТ 2024';
SELECT dv_text(day) || ' ' || dv_text(amount) FROM bill;  -- 2024-03-03 00:00:00 -.5
SELECT day || ' ' || amount FROM bill_text;  -- 3 МАРТ 2024 -0,50
SELECT dv_create_text_view('bill', '{"day": ["YYYY"]}');  -- error: dv_create_text_view: the model of the column "day" is neither a text nor a list of a model and a language, or punctuation
SELECT dv_create_text_view('bill', '{"day": ["YYYY", 1]}');  -- error: dv_create_text_view: the model of the column "day" is neither a text nor a list of a model and a language, or punctuation
SELECT dv_create_text_view('bill', '{"day": {"YYYY": "RUSSIAN"}}');  -- error: dv_create_text_view: the model of the column "day" is neither a text nor a list of a model and a language, or punctuation
SELECT dv_create_text_view('bill', '{"amount": ["999", "RUSSIAN"]}');  -- error: dv_create_text_view: the column "amount" cannot be shown and read under its model: to_char: argument 3, "RUSSIAN", is not a decimal point and a group separator, such as ",."

-- Anew, and away.
ALTER TABLE sale ADD COLUMN tax NUMBER(3);
SELECT dv_create_text_view('SALE');  -- sale_text
INSERT INTO sale_text(id, day, tax) VALUES (20, '2024-01-01', '18.5');
SELECT day || ' ' || tax FROM sale_text WHERE id = 20;  -- 2024-01-01 00:00:00 19
SELECT dv_drop_text_view('sale');  -- sale_text
SELECT dv_drop_text_view('sale');  -- error: dv_drop_text_view: there is no text view of "sale"
SELECT count(*) FROM sqlite_schema WHERE name LIKE 'sale\_text%' ESCAPE '\';  -- 0

-- A column that the table loses or names anew, and a table that has gone: no name becomes a text.
CREATE TABLE stock(item TEXT, amount NUMBER(5,2) DEFAULT 'none', note TEXT);
SELECT dv_create_text_view('stock', '{"amount": "FM990.00"}');  -- stock_text
ALTER TABLE stock DROP COLUMN note;  -- error: error in view stock_text after drop column: no such column: stock.note
ALTER TABLE stock RENAME COLUMN note TO remark;
INSERT INTO stock_text VALUES ('pen', '1.50', 'blue');
SELECT item || amount || note FROM stock_text;  -- pen1.50blue
DROP TABLE stock;
CREATE TABLE stock(item TEXT, amount NUMBER(5,2));
INSERT INTO stock VALUES ('ink', NULL);
SELECT note FROM stock_text;  -- error: no such column: stock.remark
UPDATE stock_text SET item = 'pen';  -- error: no such column: stock.remark
DROP TABLE stock;
SELECT dv_drop_text_view('main.stock');  -- stock_text
SELECT dv_drop_text_view('stock');  -- error: dv_drop_text_view: there is no table "stock"

-- What a write names, with quotes and of a long name its beginning.
CREATE TABLE named("a ""b" DATE, n NUMBER(3) DEFAULT ('x'), t "TIMESTAMP(3)", r ROWID, "spalte_mit_einem_sehr_langen_Namen_der_nicht_mehr_hineinpaßt_und_endet" TIME);
SELECT dv_create_text_view('named', '{"a \"b": ["DD MONTH YYYY", "KOREAN"]}');  -- named_text
INSERT INTO named_text("a ""b", n) VALUES ('1 MAY 2024', 1);  -- error: column "a ""b": to_date: Invalid month: "MAY 2024" (1 MAY 2024). The model is "DD MONTH YYYY", the language is "KOREAN". (dv-5113)
INSERT INTO named_text("a ""b", n) VALUES (1, 1);  -- error: column "a ""b": to_date: argument 1 is INTEGER where TIMESTAMP, TIMESTAMP WITH TIME ZONE, TEXT or DATE is expected
INSERT INTO named_text(n) VALUES (NULL);  -- error: column "n": to_number: Invalid number: the text does not have the form of a number. The text is "x". It has the form -1234.5 or 1.5E+30, unless a model is given. (dv-5074)
INSERT INTO named_text(n) VALUES (1000);  -- error: column "n": dv_cast_number: The value 1000 has more integer digits than NUMBER(3,0) holds. (dv-5111)
INSERT INTO named_text(n, t) VALUES (1, 'x');  -- error: column "t": to_timestamp: Invalid date: "x" (x). It has the form 2024-02-29 13:05:00.5, unless a model is given. (dv-5113)
INSERT INTO named_text(n, r) VALUES (1, 'x');  -- error: column "r": dv_rowid: "x" is no rowid, which has 18 characters
INSERT INTO named_text(n, "spalte_mit_einem_sehr_langen_Namen_der_nicht_mehr_hineinpaßt_und_endet") VALUES (1, 'x');  -- error: column "spalte_mit_einem_sehr_langen_Namen_der_nicht_mehr_hineinpaßt_und": to_time: Invalid time of day: "x" (x). It has the form 13:05:00.5. (dv-5113)

-- Without a rowid; a key of two columns; a key that may be SQL NULL; no key, where each change takes one of equal rows.
CREATE TABLE w(k "INTERVAL DAY TO SECOND(3)", v NUMBER, PRIMARY KEY(k)) WITHOUT ROWID;
SELECT dv_create_text_view('w', '{"v": "FM990.00"}');  -- w_text
INSERT INTO w_text VALUES ('1 2:3:4.56789', 1), ('0 0:0:1', 2);
UPDATE w_text SET v = v + 1;
UPDATE w_text SET k = '2 0:0:0' WHERE v = '2.00';
SELECT group_concat(k || '=' || v, ' ') FROM w_text;  -- +00 00:00:01.000000000=3.00 +02 00:00:00.000000000=2.00
DELETE FROM w_text WHERE k LIKE '+02%';
SELECT count(*) FROM w;  -- 1
CREATE TABLE pair(a NUMBER NOT NULL, b TEXT COLLATE NOCASE NOT NULL, c DATE, PRIMARY KEY(a, b));
SELECT dv_create_text_view('pair');  -- pair_text
INSERT INTO pair_text VALUES (1, 'x', '2024-01-01'), (1, 'Y', '2024-01-02'), (2, 'x', NULL);
UPDATE pair_text SET c = '2025-01-01' WHERE b = 'y';
SELECT group_concat(a || b || coalesce(substr(c, 1, 10), '')) FROM pair_text;  -- 1x2024-01-01,1Y2025-01-01,2x
INSERT INTO pair VALUES (5, 'n', NULL), ('junk', 'n', NULL), (to_number(5), 'm', NULL), (2024, 'y', NULL);
UPDATE pair_text SET c = '2026-01-01' WHERE b IN ('n', 'y');
SELECT group_concat(a || b) FROM pair_text WHERE c LIKE '2026%';  -- 1Y,5n,junkn,2024y
DELETE FROM pair_text WHERE a IN ('5', 'junk');
SELECT group_concat(a || b) FROM (SELECT * FROM pair_text ORDER BY a, b);  -- 1x,1Y,2x,2024y
CREATE TABLE loose(a NUMBER, b TEXT, PRIMARY KEY(a));
SELECT dv_create_text_view('loose');  -- loose_text
INSERT INTO loose_text VALUES (NULL, 'p'), (NULL, 'P'), (3, 'q');
DELETE FROM loose_text WHERE b = 'p';
SELECT group_concat(coalesce(a, '-') || b) FROM loose_text;  -- -P,3q

-- Names: hostile ones, of columns too; a rowid that columns hide; a table that looks like a schema's.
CREATE TABLE "x "" ; DROP TABLE sale; --"("a""b" DATE, "NEW" NUMBER, "rowid" TEXT, 'c''d' NUMBER DEFAULT (to_number(7) -- ) "
));
SELECT dv_create_text_view('x " ; DROP TABLE sale; --', '{"a\"b": "YYYY\"''\"MM"}');  -- x " ; DROP TABLE sale; --_text
INSERT INTO "x "" ; DROP TABLE sale; --_text"("a""b", "NEW", "rowid") VALUES ('2024''05', 3, 'r');
UPDATE "x "" ; DROP TABLE sale; --_text" SET "NEW" = "NEW" + 1;
SELECT "a""b" || "NEW" || "rowid" || "c'd" FROM "x "" ; DROP TABLE sale; --_text";  -- 2024'054r7
SELECT dv_drop_text_view('x " ; DROP TABLE sale; --');  -- x " ; DROP TABLE sale; --_text
CREATE TABLE hidden(rowid, oid, _rowid_, n NUMBER);
SELECT dv_create_text_view('hidden');  -- error: dv_create_text_view: columns of "hidden" have taken the names of the rowid
CREATE TABLE "main.w"(n NUMBER);
SELECT dv_create_text_view('main.w');  -- main.w_text
SELECT dv_create_text_view('MAIN.pair');  -- pair_text

-- Other schemas.
ATTACH ':memory:' AS "ot""her";
CREATE TABLE "ot""her".w(n NUMBER(3,1));
SELECT dv_create_text_view('ot"her.w');  -- w_text
INSERT INTO "ot""her".w_text VALUES ('1.25');
SELECT (SELECT group_concat(n) FROM "ot""her".w_text) || ' ' || (SELECT count(*) FROM main.w_text);  -- 1.3 1
CREATE TEMP TABLE w(n NUMBER(3));
SELECT dv_create_text_view('w');  -- w_text
INSERT INTO temp.w_text VALUES (2.5);
SELECT n || (SELECT count(*) FROM main.w) FROM w_text;  -- 31

-- What is refused, and changes nothing.
CREATE TABLE plain(a TEXT);
CREATE TABLE d(n NUMBER, t TIME, day DATE);
CREATE TABLE d_text(x);
CREATE TABLE wide(n NUMBER(39));
CREATE TABLE odd(n "NUMBER(1,2,3)");
CREATE TABLE part(n "INTERVAL DAY(3)(4) TO SECOND");
SELECT dv_create_text_view('nothing');  -- error: dv_create_text_view: there is no table "nothing"
SELECT dv_create_text_view('sqlite_schema');  -- error: dv_create_text_view: there is no table "sqlite_schema"
SELECT dv_create_text_view('loose_text');  -- error: dv_create_text_view: there is no table "loose_text"
SELECT dv_create_text_view('plain');  -- error: dv_create_text_view: no column of "plain" is declared with one of the types
SELECT dv_create_text_view('d');  -- error: dv_create_text_view: there is something else of the name "d_text"
SELECT dv_drop_text_view('d');  -- error: dv_drop_text_view: there is no text view of "d"
DROP TABLE d_text;
CREATE TRIGGER d_text_update AFTER INSERT ON d BEGIN SELECT 1; END;
SELECT dv_create_text_view('d');  -- error: dv_create_text_view: trigger "d_text_update" already exists
SELECT group_concat(name) FROM sqlite_schema WHERE name LIKE 'd\_text%' ESCAPE '\';  -- d_text_update
DROP TRIGGER d_text_update;
SELECT dv_create_text_view('wide');  -- error: dv_create_text_view: the column "n" is declared NUMBER(39), which is no precision of NUMBER
SELECT dv_create_text_view('odd');  -- error: dv_create_text_view: the column "n" is declared NUMBER(1,2,3), which is no precision of NUMBER
SELECT dv_create_text_view('part');  -- error: dv_create_text_view: the column "n" is declared INTERVAL DAY(3)(4) TO SECOND, which is no precision of INTERVAL DAY TO SECOND
SELECT dv_create_text_view('d', '{"t": "HH24"}');  -- error: dv_create_text_view: the column "t" takes no model
SELECT dv_create_text_view('d', '{"z": "HH24"}');  -- error: dv_create_text_view: there is no column "z"
SELECT dv_create_text_view('d', '{"day": "DAY"}');  -- error: dv_create_text_view: the column "day" cannot be shown and read under its model: to_date: The format model has an element that can be written but not read. The text is "SATURDAY ", the model is "DAY". (dv-5013)
SELECT dv_create_text_view('d', 'day');  -- error: dv_create_text_view: malformed JSON
SELECT dv_create_text_view('main.w', '{"n": "9"}');  -- main.w_text
CREATE TABLE keyed(k DATE PRIMARY KEY, v) WITHOUT ROWID;
SELECT dv_create_text_view('keyed', '{"k": "YYYY-MM"}');  -- error: dv_create_text_view: a column of the primary key of "keyed", which is WITHOUT ROWID, takes no model
SELECT dv_create_text_view(1);  -- error: dv_create_text_view: argument 1 is no text
SELECT dv_create_text_view('d' || char(0));  -- error: dv_create_text_view: argument 1 has a NUL inside its text
SELECT dv_create_text_view(NULL);  -- NULL

-- In a transaction; from a schema.
BEGIN;
SELECT dv_create_text_view('d', NULL);  -- d_text
ROLLBACK;
SELECT count(*) FROM sqlite_schema WHERE name LIKE 'd\_text%' ESCAPE '\';  -- 0
CREATE VIEW caller AS SELECT dv_create_text_view('d');
SELECT * FROM caller;  -- error: unsafe use of dv_create_text_view()
CREATE TABLE log AS SELECT dv_create_text_view('d');  -- error: dv_create_text_view: cannot open savepoint - SQL statements in progress
PRAGMA integrity_check;  -- ok
