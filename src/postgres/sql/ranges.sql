
-- ranges

CREATE FUNCTION dv_number_distance(number, number) RETURNS double precision
    AS 'MODULE_PATHNAME', 'dvpg_number_distance' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_distance(dv_timestamp, dv_timestamp) RETURNS double precision
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_distance' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_distance(dv_timestamptz, dv_timestamptz) RETURNS double precision
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_distance' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;

CREATE TYPE numberrange AS RANGE (SUBTYPE = number, SUBTYPE_DIFF = dv_number_distance,
    MULTIRANGE_TYPE_NAME = numbermultirange);
CREATE TYPE dv_daterange AS RANGE (SUBTYPE = dv_date, SUBTYPE_DIFF = dv_date_diff,
    MULTIRANGE_TYPE_NAME = dv_datemultirange);
CREATE TYPE dv_timestamprange AS RANGE (SUBTYPE = dv_timestamp, SUBTYPE_DIFF = dv_timestamp_distance,
    MULTIRANGE_TYPE_NAME = dv_timestampmultirange);
CREATE TYPE dv_timestamptzrange AS RANGE (SUBTYPE = dv_timestamptz, SUBTYPE_DIFF = dv_timestamptz_distance,
    MULTIRANGE_TYPE_NAME = dv_timestamptzmultirange);
