-- Two million rows, the same values in the extension's types and in the server's own: amounts of money, and timestamps of
-- four years with their texts.

CREATE TABLE peer AS
SELECT (mod(g::bigint * 2654435761, 100000000000) / 100 + mod(g, 100) * 0.01)::numeric(14,2) AS a,
       (mod(g::bigint * 40503, 9973) / 100.0)::numeric(14,2) AS b,
       (mod(g::bigint * 9176, 100003) / 10.0)::numeric(14,2) AS c,
       timestamptz '2020-01-01 00:00:00+00' + mod(g::bigint * 2654435761, 126230400) * interval '1 second' AS at,
       timestamp '2020-01-01 00:00:00' + mod(g::bigint * 40503, 126230400) * interval '1 second' AS local
FROM generate_series(1, :rows) g;

CREATE TABLE ours AS
SELECT to_number(a::text) AS a, to_number(b::text) AS b, to_number(c::text) AS c,
       to_timestamp_tz(to_char(at AT TIME ZONE 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS"Z"')) AS at,
       dv_to_timestamp(to_char(local, 'YYYY-MM-DD HH24:MI:SS')) AS local
FROM peer;

CREATE TABLE texts AS SELECT to_char(local, 'DD.MM.YYYY HH24:MI:SS') AS t FROM peer;

CREATE TABLE ours_a (a number);
CREATE TABLE peer_a (a numeric);
CREATE TABLE ours_numbers AS SELECT a FROM ours;
CREATE TABLE peer_numbers AS SELECT a FROM peer;
CREATE TABLE integers AS SELECT (a * 100)::bigint AS i FROM peer;
CREATE TABLE texts_a AS SELECT a::text AS t FROM ours;
CREATE TABLE texts_b (t text);
CREATE INDEX ours_index ON ours_numbers (a);
CREATE INDEX peer_index ON peer_numbers (a);
VACUUM ANALYZE;
