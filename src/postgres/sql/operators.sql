
-- days as users write them: with a fraction, and in front of the date

CREATE FUNCTION dv_add_days(n number, d dv_date) RETURNS dv_date
    IMMUTABLE STRICT PARALLEL SAFE RETURN dv_add_days(d, n);
CREATE OPERATOR + (LEFTARG = number, RIGHTARG = dv_date, FUNCTION = dv_add_days, COMMUTATOR = +);

CREATE FUNCTION dv_add_days(d dv_date, n double precision) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_add_real_days' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_add_days(n double precision, d dv_date) RETURNS dv_date
    IMMUTABLE STRICT PARALLEL SAFE RETURN dv_add_days(d, n);
CREATE FUNCTION dv_sub_days(d dv_date, n double precision) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_sub_real_days' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE OPERATOR + (LEFTARG = dv_date, RIGHTARG = double precision, FUNCTION = dv_add_days, COMMUTATOR = +);
CREATE OPERATOR + (LEFTARG = double precision, RIGHTARG = dv_date, FUNCTION = dv_add_days, COMMUTATOR = +);
CREATE OPERATOR - (LEFTARG = dv_date, RIGHTARG = double precision, FUNCTION = dv_sub_days);
