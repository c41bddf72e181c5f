
-- window frames with RANGE

CREATE FUNCTION dv_number_in_range(number, number, number, boolean, boolean) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_number_in_range' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_in_range(dv_date, dv_date, number, boolean, boolean) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_in_range_days' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_in_range(dv_date, dv_date, dv_interval_ds, boolean, boolean) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_in_range_seconds' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_in_range(dv_date, dv_date, dv_interval_ym, boolean, boolean) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_in_range_months' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_in_range(dv_timestamp, dv_timestamp, dv_interval_ds, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_seconds' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_in_range(dv_timestamp, dv_timestamp, dv_interval_ym, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_months' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_in_range(dv_timestamptz, dv_timestamptz, dv_interval_ds, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_seconds' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_in_range(dv_timestamptz, dv_timestamptz, dv_interval_ym, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_months' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_in_range(dv_timestampltz, dv_timestampltz, dv_interval_ds, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_seconds' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_in_range(dv_timestampltz, dv_timestampltz, dv_interval_ym, boolean, boolean)
    RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in_range_months' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;

ALTER OPERATOR FAMILY dv_number_ops USING btree ADD
    FUNCTION 3 (number, number) dv_number_in_range(number, number, number, boolean, boolean);
ALTER OPERATOR FAMILY dv_datetime_ops USING btree ADD
    FUNCTION 3 (dv_date, number) dv_date_in_range(dv_date, dv_date, number, boolean, boolean),
    FUNCTION 3 (dv_date, dv_interval_ds) dv_date_in_range(dv_date, dv_date, dv_interval_ds, boolean, boolean),
    FUNCTION 3 (dv_date, dv_interval_ym) dv_date_in_range(dv_date, dv_date, dv_interval_ym, boolean, boolean),
    FUNCTION 3 (dv_timestamp, dv_interval_ds)
        dv_timestamp_in_range(dv_timestamp, dv_timestamp, dv_interval_ds, boolean, boolean),
    FUNCTION 3 (dv_timestamp, dv_interval_ym)
        dv_timestamp_in_range(dv_timestamp, dv_timestamp, dv_interval_ym, boolean, boolean);
ALTER OPERATOR FAMILY dv_timestamptz_ops USING btree ADD
    FUNCTION 3 (dv_timestamptz, dv_interval_ds)
        dv_timestamptz_in_range(dv_timestamptz, dv_timestamptz, dv_interval_ds, boolean, boolean),
    FUNCTION 3 (dv_timestamptz, dv_interval_ym)
        dv_timestamptz_in_range(dv_timestamptz, dv_timestamptz, dv_interval_ym, boolean, boolean);
ALTER OPERATOR FAMILY dv_timestampltz_ops USING btree ADD
    FUNCTION 3 (dv_timestampltz, dv_interval_ds)
        dv_timestampltz_in_range(dv_timestampltz, dv_timestampltz, dv_interval_ds, boolean, boolean),
    FUNCTION 3 (dv_timestampltz, dv_interval_ym)
        dv_timestampltz_in_range(dv_timestampltz, dv_timestampltz, dv_interval_ym, boolean, boolean);
