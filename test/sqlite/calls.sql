-- Calls beside those of the manual, with what they give; an error begins with "error: ".

-- What gives another text when operands are swapped, an argument is missed, or a function takes its neighbour's place;
-- one call whose model is compiled for one type after the other, and a text longer than predicted.
SELECT dv_text(dv_sub(dv_timestamp(2001, 3, 30, 1, 2, 3, 4), to_yminterval('0-2')));  -- 2001-01-30 01:02:03.000000004
SELECT dv_text(dv_sub(dv_date(2024, 3, 30), to_yminterval('0-2')));  -- 2024-01-30 00:00:00
SELECT dv_text(dv_add(to_dsinterval('1 0:0:0'), to_timestamp_tz('2024-02-29 13:05:00 +09:00')));  -- 2024-03-01 13:05:00.000000000 +09:00
SELECT dv_text(dv_add(to_yminterval('1-0'), to_timestamp_tz('2024-02-28 13:05:00 +09:00')));  -- 2025-02-28 13:05:00.000000000 +09:00
SELECT dv_text(dv_sub(to_timestamp_tz('2024-02-28 13:05:00 +09:00'), to_yminterval('1-1')));  -- 2023-01-28 13:05:00.000000000 +09:00
SELECT dv_text(dv_div(to_yminterval('-3-1'), 2.5));  -- -01-02
SELECT dv_text(dv_round(dv_date(2024, 2, 29, 12, 0, 0))) || dv_text(dv_round(dv_date(2024, 7, 1), 'YYYY'));  -- 2024-03-01 00:00:002025-01-01 00:00:00
SELECT dv_text(dv_extract('SECOND', to_timestamp_tz('2024-01-02 12:13:14.25 +01:00')));  -- 14.25
SELECT dv_extract('DAY', to_timestamp_tz('2024-01-02 22:13:14 -05:00'));  -- 2
SELECT dv_extract('TIMEZONE_HOUR', to_timestamp_tz('2024-01-02 22:13:14 -05:30'));  -- -5
SELECT dv_extract('MONTH', d) || dv_extract('HOUR', d) FROM (SELECT dv_timestamp(2024, 5, 6, 7, 8, 9) AS d);  -- 57
SELECT dv_extract('MINUTE', d) || dv_extract('SECOND', d) FROM (SELECT dv_date(2024, 5, 6, 7, 8, 9) AS d);  -- 89
SELECT group_concat(to_char(column1, 'HH24:MI:SS'), ' ') FROM (VALUES (dv_date(2024, 1, 2, 3, 4, 5)), (dv_time(6, 7, 8)), (dv_timestamp(2024, 1, 2, 9, 10, 11)), (to_timestamp_tz('2024-01-02 12:13:14 +01:00')), (dv_time(23, 59, 0)));  -- 03:04:05 06:07:08 09:10:11 12:13:14 23:59:00
SELECT to_char(dv_date(1777, 1, 1), replace(hex(zeroblob(20)), '00', 'YYYYSP;')) = replace(hex(zeroblob(20)), '00', 'ONE THOUSAND SEVEN HUNDRED SEVENTY-SEVEN;');  -- 1
SELECT group_concat(dv_typeof(column1)) FROM (VALUES (NULL), (1), (1.5), ('x'), (x'00'), (to_number(1)), (dv_date(1, 1, 1)), (dv_time(1, 1, 1)), (to_dsinterval('1 0:0:0')), (dv_rowid(1, 2, 3, 4)));  -- NULL,INTEGER,REAL,TEXT,BLOB,NUMBER,DATE,TIME,INTERVAL DAY TO SECOND,ROWID
SELECT code || enumerator || name || size || info || categories FROM dv_types WHERE code = 3;  -- 3DV_TYPE_VARCHARVARCHAR20386character varying limited
SELECT group_concat(code) FROM dv_types WHERE categories LIKE '%datetime%';  -- 5,6,7,21,22
SELECT count(DISTINCT rowid) || ' ' || count(*) FROM dv_zones;  -- 580 580
SELECT count(*) FROM dv_zone_transitions(NULL);  -- 0
SELECT count(*) FROM dv_zone_transitions('Asia/Seoul') WHERE dv_zone > 'Asia';  -- 0
SELECT dv_text(dv_trunc(to_number('123.456'), -9999999999));  -- 0
SELECT dv_text(dv_trunc(to_number('123.456'), 9999999999));  -- 123.456
SELECT group_concat(dv_text(dv_round(2.5, 0, column1)) || dv_text(dv_round(-2.5, 0, column1)) || dv_text(dv_round(3.5, 0, column1)) || dv_text(dv_round(2.6, 0, column1)), ' ') FROM (VALUES ('TRUNC'), ('UP'), ('HALF_DOWN'), ('HALF_UP'), ('HALF_EVEN'), ('CEIL'), ('FLOOR'));  -- 2-232 3-343 2-233 3-343 2-243 3-243 2-332
SELECT dv_text(dv_round(1250, -2, 'Half_Even')) || dv_round(1, 0, NULL);  -- NULL
SELECT dv_round(1, 0, '');  -- error: dv_round: argument 3, "", is not TRUNC, UP, HALF_DOWN, HALF_UP, HALF_EVEN, CEIL or FLOOR
SELECT dv_round(dv_date(2024, 1, 1), 0, 'UP');  -- error: dv_round: argument 1 is DATE where NUMBER is expected

-- What is expected where an argument is another.
SELECT dv_extract('HOUR', 'x');  -- error: dv_extract: argument 2 is TEXT "x" where DATE, TIME, TIMESTAMP, TIMESTAMP WITH TIME ZONE, INTERVAL YEAR TO MONTH or INTERVAL DAY TO SECOND is expected; to_date(), to_time(), to_timestamp(), to_timestamp_tz(), to_yminterval() or to_dsinterval() reads text
SELECT dv_add('1', 2);  -- error: dv_add: argument 1 is TEXT "1" where NUMBER is expected; to_number() reads text
SELECT to_time(1);  -- error: to_time: argument 1 is INTEGER where TEXT or TIME is expected
SELECT to_date('');  -- error: to_date: Invalid date: "". It has the form 2024-02-29 13:05:00, unless a model is given. (dv-5113)
SELECT to_time('25:00');  -- error: to_time: The value 25 of the field "hour" is out of range: 0 to 23 is accepted. The text is "25:00". (dv-5114)
SELECT dv_text('a');  -- error: dv_text: argument 1 is TEXT "a" where NUMBER, DATE, TIME, TIMESTAMP, TIMESTAMP WITH TIME ZONE, INTERVAL YEAR TO MONTH, INTERVAL DAY TO SECOND or ROWID is expected; to_number(), to_date(), to_time(), to_timestamp(), to_timestamp_tz(), to_yminterval(), to_dsinterval() or dv_rowid() reads text
SELECT dv_rowid_sgmt('a');  -- error: dv_rowid_sgmt: argument 1 is TEXT "a" where ROWID is expected; dv_rowid() reads text
SELECT dv_date('1',2,3);  -- error: dv_date: argument 1 is TEXT "1" where INTEGER is expected
SELECT add_months(dv_date(1,1,1), 9999999999);  -- error: add_months: argument 2 is out of range: 9999999999
SELECT dv_neg(1e999);  -- error: dv_neg: argument 1 is an infinite REAL where NUMBER is finite
SELECT dv_cast_number(1, 38, 128);  -- error: dv_cast_number: the scale 128 does not lie in -127..127
SELECT dv_cast_number(1, 38, -128);  -- error: dv_cast_number: the scale -128 does not lie in -127..127
SELECT dv_cast_number(1, 0);  -- error: dv_cast_number: the precision 0 does not lie in 1..38
SELECT from_tz(dv_date(1,1,1), 'UTC');  -- error: from_tz: argument 1 is DATE where TIMESTAMP is expected
SELECT to_yminterval(1);  -- error: to_yminterval: argument 1 is INTEGER where TEXT or INTERVAL YEAR TO MONTH is expected
SELECT to_date(1);  -- error: to_date: argument 1 is INTEGER where TIMESTAMP, TIMESTAMP WITH TIME ZONE, TEXT or DATE is expected
SELECT to_timestamp_tz(dv_date(1,1,1));  -- error: to_timestamp_tz: argument 1 is DATE where TEXT or TIMESTAMP WITH TIME ZONE is expected; from_tz() gives a TIMESTAMP its zone
SELECT next_day(1, 'MON');  -- error: next_day: argument 1 is INTEGER where DATE, TIMESTAMP or TIMESTAMP WITH TIME ZONE is expected
SELECT dv_timestamp(2024,1,1,0,0,0,-1);  -- error: dv_timestamp: The value -1 of the field "fractional second" is out of range: 0 to 999999999 is accepted. (dv-5114)
SELECT dv_rowid(-1,0,0,0);  -- error: dv_rowid: argument 1 is out of range: -1
SELECT dv_rowid(0,0,4294967296,0);  -- error: dv_rowid: argument 3 is out of range: 4294967296
SELECT dv_rowid(0,0,0,65536);  -- error: dv_rowid: argument 4 is out of range: 65536
SELECT dv_mul(to_yminterval('1-0'), to_yminterval('1-0'));  -- error: dv_mul: argument 2 is INTERVAL YEAR TO MONTH where NUMBER is expected
SELECT dv_sub(dv_date(1,1,1), dv_time(1,1,1));  -- error: dv_sub: argument 2 is TIME where INTERVAL YEAR TO MONTH, INTERVAL DAY TO SECOND, DATE, TIMESTAMP or TIMESTAMP WITH TIME ZONE is expected
SELECT dv_avg(dv_date(1,1,1));  -- error: dv_avg: argument 1 is DATE where NUMBER, INTERVAL YEAR TO MONTH or INTERVAL DAY TO SECOND is expected
SELECT add_months(dv_date(1,1,1), -9999999999);  -- error: add_months: argument 2 is out of range: -9999999999
SELECT dv_extract('TIMEZONE_HOUR', dv_timestamp(1,1,1,0,0,0));  -- error: dv_extract: The value's type does not have this field. The field is "TIMEZONE_HOUR". (dv-5006)
SELECT count(*) FROM dv_zone_transitions('');  -- error: dv_zone_transitions: there is no region ""
SELECT count(*) FROM dv_zone_transitions('Etc/UTC' || char(0));  -- error: dv_zone_transitions: argument 1 has a NUL inside its text

-- What an error shows: the texts given, cut behind a character; what was possible; the gap of a local time, however the
-- call came to it.
SELECT from_tz(dv_timestamp(2024, 1, 1, 0, 0, 0), 'Asia/Soul');  -- error: from_tz: Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected. The zone is "Asia/Soul". Near to it is Asia/Seoul. (dv-5104)
SELECT to_timestamp_tz('2024-02-29 13:05 Europe/Sydney');  -- error: to_timestamp_tz: Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected. The text is "2024-02-29 13:05 Europe/Sydney". Near to it is Australia/Sydney. (dv-5104)
SELECT to_timestamp_tz('29.02.2024 Kiew', 'DD.MM.YYYY TZR');  -- error: to_timestamp_tz: Invalid timezone region: "Kiew" (29.02.2024 Kiew). The model is "DD.MM.YYYY TZR". Near to it is Europe/Kiev. (dv-5113)
SELECT at_time_zone(to_timestamp_tz('2024-01-01'), '');  -- error: at_time_zone: Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected. The zone is empty. The table dv_zones has the regions. (dv-5104)
SELECT at_time_zone(to_timestamp_tz('2024-01-01'), '+25:00');  -- error: at_time_zone: The hours of a time zone offset must be from -12 to 14. The zone is "+25:00". (dv-5098)
SELECT tz_offset('Atlantis');  -- error: tz_offset: Invalid time zone: a region name of at most 64 characters or an offset such as +09:00 is expected. The zone is "Atlantis". Near to it is Canada/Atlantic. (dv-5104)
SELECT count(*) FROM dv_zone_transitions('asia/seul');  -- error: dv_zone_transitions: there is no region "asia/seul". Near to it is Asia/Seoul.
SELECT from_tz(dv_timestamp(2011, 12, 30, 12, 0, 0), 'Pacific/Apia');  -- error: from_tz: The local time does not exist in its time zone: the clocks are set forward over it. The zone is "Pacific/Apia". In Pacific/Apia clocks were set forward from 2011-12-30 00:00:00 to 2011-12-31 00:00:00. (dv-5110)
SELECT to_timestamp_tz('31.03.2024 02:30 europe/berlin', 'DD.MM.YYYY HH24:MI TZR');  -- error: to_timestamp_tz: The local time does not exist in its time zone: the clocks are set forward over it. The text is "31.03.2024 02:30 europe/berlin", the model is "DD.MM.YYYY HH24:MI TZR". In Europe/Berlin clocks were set forward from 2024-03-31 02:00:00 to 2024-03-31 03:00:00. (dv-5110)
SELECT next_day(to_timestamp_tz('2018-11-03 00:30 America/Sao_Paulo'), 'SUN');  -- error: next_day: The local time does not exist in its time zone: the clocks are set forward over it. The name is "SUN". In America/Sao_Paulo clocks were set forward from 2018-11-04 00:00:00 to 2018-11-04 01:00:00. (dv-5110)
SELECT to_char(dv_date(2024, 1, 1), 'YYYY-MM-DD HH24:MN:SS');  -- error: to_char: Unknown format element, or no unit of truncation and rounding. The model is "YYYY-MM-DD HH24:MN:SS", wrong at "MN:SS". Expected is SYYYY, YYYY, YYY, YY, Y, RRRR, RR, YEAR, SYEAR, IYYY, IYY, IY, I, CC, SCC, AD, BC, A.D., B.C., MM, MON, MONTH, RM, Q, WW, W, IW, DD, DDD, DAY, DY, D, J, HH24, HH, HH12, MI, SS, SSSSS, AM, PM, A.M., P.M., FF, X, TZH, TZM, TZR, TZD, FM or FX. Other text stands in double quotes. (dv-5014)
SELECT to_date('2024-01-01', 'JJJJ-MM-TT');  -- error: to_date: Unknown format element, or no unit of truncation and rounding. The text is "2024-01-01", the model is "JJJJ-MM-TT", wrong at "TT". Expected is SYYYY, YYYY, YYY, YY, Y, RRRR, RR, YEAR, SYEAR, IYYY, IYY, IY, I, CC, SCC, AD, BC, A.D., B.C., MM, MON, MONTH, RM, Q, WW, W, IW, DD, DDD, DAY, DY, D, J, HH24, HH, HH12, MI, SS, SSSSS, AM, PM, A.M., P.M., FF, X, TZH, TZM, TZR, TZD, FM or FX. Other text stands in double quotes. (dv-5014)
SELECT to_timestamp('2024', 'YYYY.FF0');  -- error: to_timestamp: Invalid precision of fractional seconds: FF1 to FF9 are accepted in a format model, 0 to 9 for a type. The text is "2024", the model is "YYYY.FF0", wrong at "0". (dv-5041)
SELECT dv_trunc(dv_date(2024, 1, 1), 'WEEK');  -- error: dv_trunc: Unknown format element, or no unit of truncation and rounding. The unit is "WEEK". Expected is CC, SCC, SYYYY, YYYY, YYY, YY, Y, YEAR, SYEAR, IYYY, IYY, IY, I, Q, MM, MON, MONTH, RM, WW, W, IW, DD, DDD, J, DAY, DY, D, HH24, HH, HH12 or MI. (dv-5014)
SELECT to_char(1.5, '9,99.9.9');  -- error: to_char: Invalid number format model. The model is "9,99.9.9", wrong at ".9". Expected is 9, 0, X, ., D, ,, G, $, C, L, U, S, MI, PR, EEEE, FM, alone TM, TM9, TME or RN. (dv-5075)
SELECT to_date('x', printf('%.300c', '-') || 'YYYY-MM-DD');  -- error: to_date: Invalid year: "x" (x). The model is "----------------------------------------------------------------".... (dv-5113)
SELECT to_date('x', printf('%.300c', '-') || 'YYYY-TT');  -- error: to_date: Unknown format element, or no unit of truncation and rounding. The text is "x", the model is "----------------------------------------------------------------".... Expected is SYYYY, YYYY, YYY, YY, Y, RRRR, RR, YEAR, SYEAR, IYYY, IYY, IY, I, CC, SCC, AD, BC, A.D., B.C., MM, MON, MONTH, RM, Q, WW, W, IW, DD, DDD, DAY, DY, D, J, HH24, HH, HH12, MI, SS, SSSSS, AM, PM, A.M., P.M., FF, X, TZH, TZM, TZR, TZD, FM or FX. Other text stands in double quotes. (dv-5014)
SELECT to_number('1.5', 'B99');  -- error: to_number: The number format model has the element B, or asks for roman numerals to be read. The text is "1.5", the model is "B99". (dv-3006)
SELECT to_char(dv_date(2024, 1, 1), 'DAY', 'Deutsch');  -- error: to_char: Invalid language setting: one assignment NAME=VALUE with a known name and value is expected. The model is "DAY", the language is "Deutsch". Expected is AMERICAN, KOREAN, JAPANESE, VIETNAMESE, BRAZILIAN PORTUGUESE, TRADITIONAL CHINESE or RUSSIAN. (dv-11035)
SELECT to_date('1 Januar 2024', 'DD MONTH YYYY', 'AMERICAN');  -- error: to_date: Invalid year: "uar 2024" (1 Januar 2024). The model is "DD MONTH YYYY", the language is "AMERICAN". Of the word "Januar" only "Jan" was read. (dv-5113)
SELECT to_dsinterval('1 25:00:00');  -- error: to_dsinterval: The hours of the interval must be from 0 to 23. The text is "1 25:00:00". It has the form days hours:minutes:seconds, such as 1 02:03:04.5. (dv-5061)
SELECT to_dsinterval('1 day');  -- error: to_dsinterval: Invalid interval: the text is empty, or lacks a digit or a separator. The text is "1 day". It has the form days hours:minutes:seconds, such as 1 02:03:04.5. (dv-5056)
SELECT to_dsinterval('');  -- error: to_dsinterval: Invalid interval: the text is empty, or lacks a digit or a separator. The text is empty. It has the form days hours:minutes:seconds, such as 1 02:03:04.5. (dv-5056)
SELECT to_yminterval(' ');  -- error: to_yminterval: Invalid interval: the text is empty, or lacks a digit or a separator. The text is " ". It has the form years-months, such as 1-06. (dv-5056)
SELECT to_number('');  -- error: to_number: Invalid number: the text does not have the form of a number. The text is empty. It has the form -1234.5 or 1.5E+30, unless a model is given. (dv-5074)
SELECT to_number('', '999');  -- error: to_number: Invalid number: the text does not have the form of a number. The text is empty, the model is "999". (dv-5074)
SELECT to_date('', 'YYYY-MM-DD');  -- error: to_date: The length of the text or of the output buffer must be at least 1. The text is empty, the model is "YYYY-MM-DD". (dv-5007)
SELECT to_timestamp_tz('');  -- error: to_timestamp_tz: Invalid date: "". It has the form 2024-02-29 13:05:00.5 +09:00, unless a model is given. (dv-5113)
SELECT to_number(printf('%063d', 0) || 'éé');  -- error: to_number: Invalid number: the text does not have the form of a number. The text is "000000000000000000000000000000000000000000000000000000000000000".... It has the form -1234.5 or 1.5E+30, unless a model is given. (dv-5074)
SELECT to_date(printf('%0100d', 0) || 'x');  -- error: to_date: The value 0 of the field "year" is out of range: -4713 to 9999 is accepted. The text is "0000000000000000000000000000000000000000000000000000000000000000".... (dv-5114)
SELECT dv_error_of('to_timestamp_tz', '2024-03-31 02:30 Europe/Paris');  -- The local time does not exist in its time zone: the clocks are set forward over it. The text is "2024-03-31 02:30 Europe/Paris". In Europe/Paris clocks were set forward from 2024-03-31 02:00:00 to 2024-03-31 03:00:00. (dv-5110 in find_local_tzinfo_)

SELECT to_timestamp_tz('2024-10-27 02:30 Europe/Berlin +05:00');  -- error: to_timestamp_tz: The UTC offset +05:00 is not in force in Europe/Berlin at that local time, but +01:00 or +02:00. The text is "2024-10-27 02:30 Europe/Berlin +05:00". (dv-5110)
SELECT to_timestamp_tz('2024-03-31 02:30 Europe/Berlin +01:00');  -- error: to_timestamp_tz: The local time does not exist in its time zone: the clocks are set forward over it. The text is "2024-03-31 02:30 Europe/Berlin +01:00". In Europe/Berlin clocks were set forward from 2024-03-31 02:00:00 to 2024-03-31 03:00:00. (dv-5110)
SELECT to_timestamp_tz('1700-01-01 Africa/Monrovia -01:00');  -- error: to_timestamp_tz: The UTC offset -01:00 is not in force in Africa/Monrovia at that local time, but -00:43. The text is "1700-01-01 Africa/Monrovia -01:00". (dv-5110)
SELECT to_timestamp_tz('2055-07-01 09:00 America/New_York -04:00');  -- error: to_timestamp_tz: The UTC offset -04:00 is not in force in America/New_York at that local time, but -05:00. The text is "2055-07-01 09:00 America/New_York -04:00". (dv-5110)
SELECT to_timestamp_tz('2024-01-01 Etc/UTC +01:00');  -- error: to_timestamp_tz: The UTC offset +01:00 is not in force in Etc/UTC at that local time, but +00:00. The text is "2024-01-01 Etc/UTC +01:00". (dv-5110)
SELECT to_time('1pm');  -- error: to_time: Invalid time of day: "1pm" (1pm). It has the form 13:05:00.5. (dv-5113)
SELECT to_timestamp('2024-2-29');  -- error: to_timestamp: Invalid date: "2-29" (2024-2-29). It has the form 2024-02-29 13:05:00.5, unless a model is given. (dv-5113)

-- The ends of seconds since 1970, after rounding.
SELECT dv_text(dv_from_epoch(-210866803200)) || ' ' || dv_text(dv_from_epoch(to_number('253402300799.9999999994')));  -- -4713-01-01 00:00:00.000000000 +00:00 9999-12-31 23:59:59.999999999 +00:00
SELECT dv_from_epoch(-210866803201);  -- error: dv_from_epoch: -210866803201 is out of range: seconds from -210866803200 to 253402300799 are accepted
SELECT dv_from_epoch(to_number('253402300799.9999999995'), 'Asia/Seoul');  -- error: dv_from_epoch: 253402300800 is out of range: seconds from -210866803200 to 253402300799 are accepted
SELECT dv_from_epoch(to_number('1E125'));  -- error: dv_from_epoch: 1E+125 is out of range: seconds from -210866803200 to 253402300799 are accepted

-- Punctuation: what is written is read, characters of several bytes and blanks at the ends included; "." and "," that it
-- does not have are refused, and so is what is no punctuation.
SELECT count(*) FROM dv_series(-5000000, 5000000, 77777.77), (SELECT column1 AS p FROM (VALUES (',.'), (', '), ('.’'), ('٫٬'), (',' || char(8239)))) WHERE to_number(to_char(value, '9G999G990D00', p), '9G999G990D00', p) = value;  -- 645
SELECT to_char(-1234567.5, 'FM9G999G990D00', ',’') || to_char(1234, '9G999MI', ', ') || to_char(12345, '9D9EEEE', ',.') || to_char(1234.5, 'TM9', ',.') || to_char(1234.5, 'L9,999.9', ',.');  -- -1’234’567,501 234  1,2E+041234,5 $1.234,5
SELECT dv_text(to_number(' -1 234,5 ', '9G999D9', ', ')) || ' ' || dv_text(to_number('1,5', 'TM9', ',.'));  -- -1234.5 1.5
SELECT count(*) FROM (VALUES ('1.5', ', '), ('1,5', '.’'), ('1.5', ',’'), ('1,234', ' .'), ('1,5,', ',.')) WHERE try_to_number(column1, '9999D99', column2) IS NULL;  -- 5
SELECT count(*) FROM (VALUES (''), (','), (',,'), (' ,'), (',.x'), ('a.'), (',5'), ('-.'), ('$.'), (char(10) || '.'), (',.' || char(127))) WHERE try_to_number('1', '9999D99', column1) IS NULL;  -- 11
SELECT to_number('1,5', '9D9', 'GERMAN');  -- error: to_number: argument 3, "GERMAN", is not a decimal point and a group separator, such as ",."
SELECT to_number(printf('%.1281c', '1'), 'TM9', ',.');  -- error: to_number: argument 1 is longer than 1280 bytes
SELECT dv_error_of('to_number', '1.5', '9D9', ',.');  -- Invalid number: the text does not have the form of a number. The text is "1.5", the model is "9D9", the punctuation is ",.". (dv-5074 in number_from_str_fmt)
SELECT dv_cast_leading(to_dsinterval('1 0:0:0'), 10);  -- error: dv_cast_leading: 10 digits do not lie in 0..9

-- A stored form, and why it holds no value.
SELECT dv_text(x'');  -- error: dv_text: argument 1 is a BLOB that holds no value: it is empty
SELECT dv_text(x'00');  -- error: dv_text: argument 1 is a BLOB that holds no value: its first byte is no type code
SELECT dv_text(x'02');  -- error: dv_text: argument 1 is a BLOB that holds no value: its first byte is no type code
SELECT dv_text(x'FF');  -- error: dv_text: argument 1 is a BLOB that holds no value: its first byte is no type code
SELECT dv_text(x'01');  -- error: dv_text: argument 1 is a BLOB that holds no value: a NUMBER needs its exponent
SELECT dv_text(x'01C2');  -- error: dv_text: argument 1 is a BLOB that holds no value: a NUMBER needs a digit
SELECT dv_text(x'01C280');  -- error: dv_text: argument 1 is a BLOB that holds no value: a NUMBER neither begins nor ends with a zero digit
SELECT dv_text(x'01C28180');  -- error: dv_text: argument 1 is a BLOB that holds no value: a NUMBER neither begins nor ends with a zero digit
SELECT dv_text(x'01C1E5');  -- error: dv_text: argument 1 is a BLOB that holds no value: a NUMBER digit is out of range
SELECT dv_text(x'013E4566E6');  -- error: dv_text: argument 1 is a BLOB that holds no value: a negative NUMBER needs its terminator
SELECT dv_text(x'0540');  -- error: dv_text: argument 1 is a BLOB that holds no value: it does not have the length of its type
SELECT dv_text(x'056464010100000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: it has no year of a DATE
SELECT dv_text(x'0578640D0100000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its month is out of range
SELECT dv_text(x'057864021E00000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its month does not have its day
SELECT dv_text(x'0573B60A0500000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its day was left out of October 1582
SELECT dv_text(x'057864021D18000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its time of day is out of range
SELECT dv_text(x'057864021D173C0000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its time of day is out of range
SELECT dv_text(x'057864021D17003C00');  -- error: dv_text: argument 1 is a BLOB that holds no value: its time of day is out of range
SELECT dv_text(x'057864021D17000001');  -- error: dv_text: argument 1 is a BLOB that holds no value: the last byte of a DATE is not 0
SELECT dv_text(x'06173B3B0100000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: the fourth byte of a TIME is not 0
SELECT dv_text(x'06183B3B0000000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its time of day is out of range
SELECT dv_text(x'06173B3B003B9ACA00');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fraction of a second is out of range
SELECT dv_text(x'077864021D173B3B0100000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: the eighth byte of a timestamp is not 0
SELECT dv_text(x'077864021D173B3B003B9ACA00');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fraction of a second is out of range
SELECT dv_text(x'157864021D173B3B00000000006D00000300');  -- error: dv_text: argument 1 is a BLOB that holds no value: it has no such time zone
SELECT dv_text(x'157864021D173B3B00000000006D00010245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range
SELECT dv_text(x'157864021D173B3B0000000000FF00000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range
SELECT dv_text(x'157864021D173B3B00000000007301000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range
SELECT dv_text(x'157864021D173B3B01000000006D00000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: the eighth byte of a timestamp is not 0
SELECT dv_text(x'157864021D173B3B003B9ACA006D00000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fraction of a second is out of range
SELECT dv_text(x'08C000000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: it has more than nine digits of years
SELECT dv_text(x'084000000017');  -- error: dv_text: argument 1 is a BLOB that holds no value: its months are out of range
SELECT dv_text(x'097B9ACA004000000040000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: it has more than nine digits of days
SELECT dv_text(x'09400000004001518040000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its seconds are out of range
SELECT dv_text(x'0940000000400000007B9ACA00');  -- error: dv_text: argument 1 is a BLOB that holds no value: its nanoseconds are out of range
SELECT dv_text(x'08400000010A');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fields differ in sign
SELECT dv_text(x'09400000013FFFFFFF40000000');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fields differ in sign
SELECT dv_text(x'0940000001400000003FFFFFFF');  -- error: dv_text: argument 1 is a BLOB that holds no value: its fields differ in sign
SELECT dv_text(x'0F02');  -- error: dv_text: argument 1 is a BLOB that holds no value: a ROWID has 12 bytes

SELECT dv_text(numtodsinterval(-90.5, 'MINUTE'));  -- -00 01:30:30.000000000
SELECT dv_text(numtodsinterval(25, 'hour'));  -- +01 01:00:00.000000000
SELECT dv_text(to_date('99-03-04', 'RRRR-MM-DD'));  -- 1999-03-04 00:00:00

-- The offsets farthest from UTC.
SELECT dv_text(to_timestamp_tz('2024-02-29 13:05 +14:00'));  -- 2024-02-29 13:05:00.000000000 +14:00
SELECT dv_text(to_timestamp_tz('2024-02-29 13:05 -12:59'));  -- 2024-02-29 13:05:00.000000000 -12:59
SELECT dv_text(x'157864021D17050000000000007201000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range

SELECT dv_text(x'15787C021D0D05070000000000730000012D');  -- 2024-03-01 04:05:07.000000000 Asia/Seoul +15:00
SELECT dv_text(x'15787C021D0D05070000000000550000012D');  -- 2024-02-28 22:05:07.000000000 Asia/Seoul -15:00
SELECT dv_text(x'15787C021D0D05070000000000740000012D');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range
SELECT dv_text(x'15787C021D0D05070000000000540000012D');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range

SELECT dv_text(x'15787C021D0D050700000000007300000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its UTC offset is out of range

SELECT count(*) FROM dv_zone_transitions(printf('%0300d', 0));  -- error: dv_zone_transitions: there is no region "0000000000000000000000000000000000000000000000000000000000000000"...

-- What cannot be.
SELECT from_tz(dv_timestamp(2024, 2, 29, 0, 0, 0), '+00:30');  -- error: from_tz: A time zone offset must have minutes from 0 to 59 and lie between -12:59:59 and +14:00:00. The zone is "+00:30". Minutes alone have a minus: -00:01 to -00:59. (dv-5099)
SELECT dv_text(from_tz(dv_timestamp(2024, 2, 29, 0, 0, 0), '-00:30'));  -- 2024-02-29 00:00:00.000000000 -00:30
SELECT dv_from_epoch(0, '00:30');  -- error: dv_from_epoch: A time zone offset must have minutes from 0 to 59 and lie between -12:59:59 and +14:00:00. The zone is "00:30". Minutes alone have a minus: -00:01 to -00:59. (dv-5099)
SELECT numtoyminterval(1e30, 'YEAR');  -- error: numtoyminterval: The leading field of the interval has more digits than its precision allows. The field is "YEAR". (dv-5064)
SELECT dv_add(dv_date(1, 1, 1), to_yminterval('357913942-0'));  -- error: dv_add: The value 178956971 of the field "year" is out of range: -4713 to 9999 is accepted. (dv-5114)
SELECT dv_sub(to_yminterval('-999999999-11'), to_yminterval('0-1'));  -- error: dv_sub: The leading field of the interval has more digits than its precision allows. (dv-5064)
SELECT dv_add(to_dsinterval('999999999 23:59:59'), to_dsinterval('0 0:0:1'));  -- error: dv_add: The leading field of the interval has more digits than its precision allows. (dv-5064)
SELECT dv_div(to_yminterval('1-0'), 0);  -- error: dv_div: An interval is divided by zero. (dv-5065)
SELECT dv_extract('YEAR' || char(0), dv_date(1, 1, 1));  -- error: dv_extract: argument 1 has a NUL inside its text
SELECT to_date('2024-02-29' || char(0));  -- error: to_date: argument 1 has a NUL inside its text
SELECT to_char(dv_date(2024, 1, 1), 'DD' || char(0));  -- error: to_char: argument 2 has a NUL inside its text
SELECT to_char(dv_date(2024, 1, 1), 'DD', printf('%-239s', 'KOREAN'));  -- error: to_char: argument 3 is longer than a setting, which has at most 256 bytes
SELECT next_day(dv_date(2024, 1, 1), 'MON', printf('NLS_DATE_LANGUAGE=%239s', 'KOREAN'));  -- error: next_day: argument 3 is longer than a setting, which has at most 256 bytes
SELECT to_char(dv_date(2024, 1, 1), 'MON', 'NLS_CALENDAR=GREGORIAN');  -- error: to_char: Invalid language setting: one assignment NAME=VALUE with a known name and value is expected. The model is "MON", the language is "NLS_CALENDAR=GREGORIAN". Expected is AMERICAN, KOREAN, JAPANESE, VIETNAMESE, BRAZILIAN PORTUGUESE, TRADITIONAL CHINESE or RUSSIAN. (dv-11035)
SELECT next_day(dv_date(2024, 1, 1), 'MON', 'NLS_SORT=GERMAN');  -- error: next_day: Invalid language setting: one assignment NAME=VALUE with a known name and value is expected. The name is "MON", the language is "NLS_SORT=GERMAN". Expected is AMERICAN, KOREAN, JAPANESE, VIETNAMESE, BRAZILIAN PORTUGUESE, TRADITIONAL CHINESE or RUSSIAN. (dv-11035)
SELECT dv_extract('YEARS', dv_date(1, 1, 1));  -- error: dv_extract: argument 1, "YEARS", is not YEAR, MONTH, DAY, HOUR, MINUTE, SECOND, QUARTER, WEEK, ISOYEAR, DOW, DOY, EPOCH, TIMEZONE_HOUR, TIMEZONE_MINUTE, TIMEZONE_REGION or TIMEZONE_ABBR
SELECT to_date('10:00', 'HH24:MI');  -- error: to_date: the model "HH24:MI" leaves the year and the month open; a DATE or TIMESTAMP as the last argument, such as sysdate(), gives what is missing
SELECT to_date('2024', 'YYYY');  -- error: to_date: the model "YYYY" leaves the month open; a DATE or TIMESTAMP as the last argument, such as sysdate(), gives what is missing
SELECT to_timestamp_tz('4-11', 'Y-MM');  -- error: to_timestamp_tz: the model "Y-MM" leaves the year open; a DATE or TIMESTAMP as the last argument, such as sysdate(), gives what is missing
SELECT to_date('2024-09', 'IYYY-IW');  -- error: to_date: The format model has an element that can be written but not read. The text is "2024-09", the model is "IYYY-IW". (dv-5013)
SELECT at_time_zone(from_tz(dv_timestamp(9999, 12, 31, 20, 0, 0), '+00:00'), '+09:00');  -- error: at_time_zone: The value 9999 of the field "year" is out of range: -4713 to 9999 is accepted. The zone is "+09:00". (dv-5114)
SELECT at_time_zone(from_tz(dv_timestamp(-1, 2, 28, 20, 0, 0), '+00:00'), '+09:00');  -- error: at_time_zone: The value 29 of the field "day" is out of range: 1 to 28 is accepted. The zone is "+09:00". (dv-5114)
SELECT dv_add(from_tz(dv_timestamp(9999, 12, 31, 20, 0, 0), '+03:00'), to_dsinterval('0 5:0:0'));  -- error: dv_add: The value 9999 of the field "year" is out of range: -4713 to 9999 is accepted. (dv-5114)
SELECT dv_sub(from_tz(dv_timestamp(1, 11, 30, 22, 0, 0), '-03:00'), to_yminterval('9999-11'));  -- error: dv_sub: The value -9998 of the field "year" is out of range: -4713 to 9999 is accepted. (dv-5114)
SELECT dv_text(x'15C7C70C1F173B3B00000000006D00000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its local time lies outside the calendar
SELECT dv_text(x'156463021C14000000000000006D00000245');  -- error: dv_text: argument 1 is a BLOB that holds no value: its local time lies outside the calendar
SELECT to_char(column1, 'TZR') FROM (VALUES (to_timestamp_tz('2024-02-29')), (dv_timestamp(2024, 2, 29, 0, 0, 0)));  -- error: to_char: The format model has an element that this type does not have: TIME takes no date or time zone, TIMESTAMP no time zone. The model is "TZR". (dv-5012)
SELECT next_day(dv_date(2024, 1, 1), '');  -- error: next_day: Invalid day_name: "" (Inconsistent with NLS_DATE_LANGUAGE). The name is empty. (dv-5113)
SELECT next_day(dv_date(2024, 1, 1), 'MON', 'AMERICAN' || char(0));  -- error: next_day: argument 3 has a NUL inside its text
