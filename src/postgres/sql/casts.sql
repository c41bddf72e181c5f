
-- casts of number

CREATE FUNCTION dv_number_from_int2(smallint) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_int2' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_int4(integer) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_int4' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_int8(bigint) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_int8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_numeric(numeric) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_numeric' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_float4(real) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_float4' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_float8(double precision) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_float8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_from_jsonb(jsonb) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_from_jsonb' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_int2(number) RETURNS smallint
    AS 'MODULE_PATHNAME', 'dvpg_number_to_int2' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_int4(number) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_number_to_int4' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_int8(number) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_number_to_int8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_numeric(number) RETURNS numeric
    AS 'MODULE_PATHNAME', 'dvpg_number_to_numeric' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_float4(number) RETURNS real
    AS 'MODULE_PATHNAME', 'dvpg_number_to_float4' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_to_float8(number) RETURNS double precision
    AS 'MODULE_PATHNAME', 'dvpg_number_to_float8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;

CREATE CAST (smallint AS number) WITH FUNCTION dv_number_from_int2(smallint) AS IMPLICIT;
CREATE CAST (integer AS number) WITH FUNCTION dv_number_from_int4(integer) AS IMPLICIT;
CREATE CAST (bigint AS number) WITH FUNCTION dv_number_from_int8(bigint) AS IMPLICIT;
CREATE CAST (numeric AS number) WITH FUNCTION dv_number_from_numeric(numeric) AS ASSIGNMENT;
CREATE CAST (real AS number) WITH FUNCTION dv_number_from_float4(real) AS ASSIGNMENT;
CREATE CAST (double precision AS number) WITH FUNCTION dv_number_from_float8(double precision) AS ASSIGNMENT;
CREATE CAST (jsonb AS number) WITH FUNCTION dv_number_from_jsonb(jsonb);
CREATE CAST (number AS smallint) WITH FUNCTION dv_number_to_int2(number) AS ASSIGNMENT;
CREATE CAST (number AS integer) WITH FUNCTION dv_number_to_int4(number) AS ASSIGNMENT;
CREATE CAST (number AS bigint) WITH FUNCTION dv_number_to_int8(number) AS ASSIGNMENT;
CREATE CAST (number AS numeric) WITH FUNCTION dv_number_to_numeric(number) AS IMPLICIT;
CREATE CAST (number AS real) WITH FUNCTION dv_number_to_float4(number) AS ASSIGNMENT;
CREATE CAST (number AS double precision) WITH FUNCTION dv_number_to_float8(number) AS ASSIGNMENT;

-- casts of dates, times, timestamps and intervals: what goes by the session's time zone is STABLE

CREATE FUNCTION dv_date_from_date(date) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_from_date' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_from_timestamp(timestamp) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_from_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_from_timestamptz(timestamptz) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_from_timestamptz' LANGUAGE C STABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_to_date(dv_date) RETURNS date
    AS 'MODULE_PATHNAME', 'dvpg_date_to_date' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_to_timestamp(dv_date) RETURNS timestamp
    AS 'MODULE_PATHNAME', 'dvpg_date_to_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_to_timestamptz(dv_date) RETURNS timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_date_to_timestamptz' LANGUAGE C STABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_from_time(time) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_from_time' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_to_time(dv_time) RETURNS time
    AS 'MODULE_PATHNAME', 'dvpg_time_to_time' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_from_timestamp(timestamp) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_from_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_from_date(date) RETURNS dv_timestamp
    IMMUTABLE STRICT PARALLEL SAFE RETURN dv_to_timestamp(dv_date_from_date($1));
CREATE FUNCTION dv_timestamp_from_timestamptz(timestamptz) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_from_timestamptz' LANGUAGE C STABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_to_timestamp(dv_timestamp) RETURNS timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_to_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_to_date(dv_timestamp) RETURNS date
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_to_date' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_to_timestamptz(dv_timestamp) RETURNS timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_to_timestamptz' LANGUAGE C STABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_from_timestamptz(timestamptz) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_from_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_to_timestamptz(dv_timestamptz) RETURNS timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_to_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_from_timestamptz(timestamptz) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_from_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_to_timestamptz(dv_timestampltz) RETURNS timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_to_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_from_dv_timestamptz(dv_timestamptz) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_from_dv_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_to_dv_timestamptz(dv_timestampltz) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_to_dv_timestamptz' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_from_interval(interval) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_from_interval' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_to_interval(dv_interval_ym) RETURNS interval
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_to_interval' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_from_interval(interval) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_from_interval' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_to_interval(dv_interval_ds) RETURNS interval
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_to_interval' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;

CREATE CAST (date AS dv_date) WITH FUNCTION dv_date_from_date(date) AS ASSIGNMENT;
CREATE CAST (timestamp AS dv_date) WITH FUNCTION dv_date_from_timestamp(timestamp) AS ASSIGNMENT;
CREATE CAST (timestamptz AS dv_date) WITH FUNCTION dv_date_from_timestamptz(timestamptz) AS ASSIGNMENT;
CREATE CAST (dv_date AS date) WITH FUNCTION dv_date_to_date(dv_date) AS ASSIGNMENT;
CREATE CAST (dv_date AS timestamp) WITH FUNCTION dv_date_to_timestamp(dv_date) AS ASSIGNMENT;
CREATE CAST (dv_date AS timestamptz) WITH FUNCTION dv_date_to_timestamptz(dv_date) AS ASSIGNMENT;
CREATE CAST (time AS dv_time) WITH FUNCTION dv_time_from_time(time) AS ASSIGNMENT;
CREATE CAST (dv_time AS time) WITH FUNCTION dv_time_to_time(dv_time) AS ASSIGNMENT;
CREATE CAST (timestamp AS dv_timestamp) WITH FUNCTION dv_timestamp_from_timestamp(timestamp) AS ASSIGNMENT;
CREATE CAST (date AS dv_timestamp) WITH FUNCTION dv_timestamp_from_date(date) AS ASSIGNMENT;
CREATE CAST (timestamptz AS dv_timestamp) WITH FUNCTION dv_timestamp_from_timestamptz(timestamptz)
    AS ASSIGNMENT;
CREATE CAST (dv_timestamp AS timestamp) WITH FUNCTION dv_timestamp_to_timestamp(dv_timestamp) AS ASSIGNMENT;
CREATE CAST (dv_timestamp AS date) WITH FUNCTION dv_timestamp_to_date(dv_timestamp) AS ASSIGNMENT;
CREATE CAST (dv_timestamp AS timestamptz) WITH FUNCTION dv_timestamp_to_timestamptz(dv_timestamp)
    AS ASSIGNMENT;
CREATE CAST (timestamptz AS dv_timestamptz) WITH FUNCTION dv_timestamptz_from_timestamptz(timestamptz)
    AS ASSIGNMENT;
CREATE CAST (dv_timestamptz AS timestamptz) WITH FUNCTION dv_timestamptz_to_timestamptz(dv_timestamptz)
    AS ASSIGNMENT;
CREATE CAST (timestamptz AS dv_timestampltz) WITH FUNCTION dv_timestampltz_from_timestamptz(timestamptz)
    AS ASSIGNMENT;
CREATE CAST (dv_timestampltz AS timestamptz) WITH FUNCTION dv_timestampltz_to_timestamptz(dv_timestampltz)
    AS ASSIGNMENT;
CREATE CAST (interval AS dv_interval_ym) WITH FUNCTION dv_interval_ym_from_interval(interval) AS ASSIGNMENT;
CREATE CAST (dv_interval_ym AS interval) WITH FUNCTION dv_interval_ym_to_interval(dv_interval_ym)
    AS ASSIGNMENT;
CREATE CAST (interval AS dv_interval_ds) WITH FUNCTION dv_interval_ds_from_interval(interval) AS ASSIGNMENT;
CREATE CAST (dv_interval_ds AS interval) WITH FUNCTION dv_interval_ds_to_interval(dv_interval_ds)
    AS ASSIGNMENT;

-- casts among the types: without a loss implicitly

CREATE CAST (dv_date AS dv_timestamp) WITH FUNCTION dv_to_timestamp(dv_date) AS IMPLICIT;
CREATE CAST (dv_timestamp AS dv_date) WITH FUNCTION to_date(dv_timestamp) AS ASSIGNMENT;
CREATE CAST (dv_timestamptz AS dv_date) WITH FUNCTION to_date(dv_timestamptz) AS ASSIGNMENT;
CREATE CAST (dv_timestamptz AS dv_timestamp) WITH FUNCTION dv_to_timestamp(dv_timestamptz) AS ASSIGNMENT;
CREATE CAST (dv_timestamptz AS dv_timestampltz) WITH FUNCTION dv_timestampltz_from_dv_timestamptz(dv_timestamptz)
    AS ASSIGNMENT;
CREATE CAST (dv_timestampltz AS dv_timestamptz) WITH FUNCTION dv_timestampltz_to_dv_timestamptz(dv_timestampltz)
    AS IMPLICIT;
