-- The server's own decimals as a second opinion: arithmetic, sums and models.

CREATE TABLE operands AS
SELECT i, x, y, x::number AS a, y::number AS b
FROM (SELECT i, (hashint4(i)::numeric * hashint4(i + 7000) / power(10::numeric, i % 13))::numeric(36, 12) AS x,
             (hashint4(i + 100000)::numeric / power(10::numeric, i % 7))::numeric(24, 6) AS y
      FROM generate_series(1, 5000) AS i) AS made;

-- Exact where the result has at most 38 digits.
SELECT count(*) FILTER (WHERE length(translate((x + y)::text, '-.', '')) <= 38) > 4900 AS many,
       count(*) FILTER (WHERE length(translate((x + y)::text, '-.', '')) <= 38 AND (a + b)::numeric <> x + y) AS sums,
       count(*) FILTER (WHERE length(translate((x - y)::text, '-.', '')) <= 38 AND (a - b)::numeric <> x - y) AS differences,
       count(*) FILTER (WHERE abs(x * y) < 1e25 AND (a * b)::numeric(38, 12) <> (x * y)::numeric(38, 12)) AS products
FROM operands;

-- Rounded otherwise, to 38 digits, or 39 or 40 where they begin a pair: as a quotient of 50 digits behind the point is.
SELECT count(*) AS quotients, max(abs((a / b)::numeric - x::numeric(90, 60) / y) / abs(x / y)) < 1e-37 AS agree
FROM operands WHERE y <> 0 AND x <> 0;
SELECT count(*) AS remainders, count(*) FILTER (WHERE (a % b)::numeric <> x % y) AS differ FROM operands WHERE y <> 0;
SELECT count(*) FILTER (WHERE (a < b) <> (x < y) OR (a = b) <> (x = y) OR dv_cmp(a, b) <> sign(x - y)) AS orders FROM operands;
SELECT count(*) FILTER (WHERE dv_round(a, p)::numeric <> round(x, p)) AS rounded,
       count(*) FILTER (WHERE dv_trunc(a, p)::numeric <> trunc(x, p)) AS cut,
       count(*) FILTER (WHERE dv_floor(a)::numeric <> floor(x) OR dv_ceil(a)::numeric <> ceil(x)) AS whole
FROM operands, generate_series(-3, 6) AS p;
SELECT count(*) AS roots, max(abs(dv_sqrt(dv_abs(a))::numeric - sqrt(abs(x)::numeric(60, 40))) / sqrt(abs(x))) < 1e-36 AS agree
FROM operands WHERE x <> 0;

-- Sums and averages of all and of groups, whatever the order.
SELECT sum(a)::numeric = sum(x) AS sum, abs(avg(a)::numeric - avg(x::numeric(60, 30))) < 1e-18 AS avg, min(a)::numeric = min(x) AS min,
       max(a)::numeric = max(x) AS max
FROM operands;
SELECT count(*) FILTER (WHERE s::numeric <> t) AS groups
FROM (SELECT sum(a) AS s, sum(x) AS t FROM operands GROUP BY i % 97) AS g;
SELECT count(*) FILTER (WHERE s::numeric <> t) AS running
FROM (SELECT sum(a) OVER w AS s, sum(x) OVER w AS t FROM operands
      WINDOW w AS (ORDER BY i ROWS BETWEEN 20 PRECEDING AND 3 FOLLOWING)) AS r;

-- Models of both, over values of all lengths. What differs is meant: what has no room is a run of # as long as the model, and
-- PR under FM is as if it were not there.
CREATE TABLE models (model text);
INSERT INTO models VALUES ('9999999999'), ('0000000000'), ('FM9999999990.00'), ('FM9999999990.99'), ('9,999,999,999.99'),
    ('FM9,999,999,990.0'), ('S9999999999.9'), ('9999999999MI'), ('FM9999999999S'), ('FM9999999999PR'), ('0,000,000.000'), ('FM0.0000');
SELECT model, count(*) AS values, count(*) FILTER (WHERE to_char(v, model) <> to_char(v::number, model)) AS differ,
       min(v::text || ': server ' || to_char(v, model) || ', ours ' || to_char(v::number, model))
           FILTER (WHERE to_char(v, model) <> to_char(v::number, model)) AS such_as
FROM models, (SELECT ((i * 7919) % 20000019 - 9999999)::numeric / power(10::numeric, i % 8)::numeric(20, 0) AS v
              FROM generate_series(1, 400) AS i UNION ALL SELECT 0 UNION ALL SELECT 0.5) AS given
GROUP BY model ORDER BY model;
