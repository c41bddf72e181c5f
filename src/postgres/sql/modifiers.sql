-- modifiers that let through what another one has let through: no cast, and no new table for a wider column

CREATE FUNCTION dv_number_modifier_support(internal) RETURNS internal
    AS 'MODULE_PATHNAME', 'dvpg_number_modifier_support' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_digits_modifier_support(internal) RETURNS internal
    AS 'MODULE_PATHNAME', 'dvpg_digits_modifier_support' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
ALTER FUNCTION dv_number_apply_typmod(number, integer, boolean) SUPPORT dv_number_modifier_support;
ALTER FUNCTION dv_time_apply_typmod(dv_time, integer, boolean) SUPPORT dv_digits_modifier_support;
ALTER FUNCTION dv_timestamp_apply_typmod(dv_timestamp, integer, boolean) SUPPORT dv_digits_modifier_support;
ALTER FUNCTION dv_timestamptz_apply_typmod(dv_timestamptz, integer, boolean) SUPPORT dv_digits_modifier_support;
ALTER FUNCTION dv_timestampltz_apply_typmod(dv_timestampltz, integer, boolean) SUPPORT dv_digits_modifier_support;
ALTER FUNCTION dv_interval_ym_apply_typmod(dv_interval_ym, integer, boolean) SUPPORT dv_digits_modifier_support;
ALTER FUNCTION dv_interval_ds_apply_typmod(dv_interval_ds, integer, boolean) SUPPORT dv_digits_modifier_support;
