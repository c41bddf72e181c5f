-- The first version: the types, their comparison and indexes. It stays as it was: databases have it.
\echo Use "CREATE EXTENSION dvtypes" to load this file. \quit

-- number

CREATE TYPE number;
CREATE FUNCTION dv_number_in(cstring, oid, integer) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_out(number) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_number_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_recv(internal, oid, integer) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_send(number) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_number_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_number_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_number_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_number_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE number (INPUT = dv_number_in, OUTPUT = dv_number_out, RECEIVE = dv_number_recv, SEND = dv_number_send,
    TYPMOD_IN = dv_number_typmod_in, TYPMOD_OUT = dv_number_typmod_out, CATEGORY = 'N', INTERNALLENGTH = VARIABLE, STORAGE = main);
CREATE FUNCTION dv_number_apply_typmod(number, integer, boolean) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (number AS number) WITH FUNCTION dv_number_apply_typmod(number, integer, boolean) AS IMPLICIT;

-- dv_date

CREATE TYPE dv_date;
CREATE FUNCTION dv_date_in(cstring, oid, integer) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_out(dv_date) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_date_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_recv(internal, oid, integer) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_date_send(dv_date) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_date_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_date (INPUT = dv_date_in, OUTPUT = dv_date_out, RECEIVE = dv_date_recv, SEND = dv_date_send,
    CATEGORY = 'D', INTERNALLENGTH = 8, PASSEDBYVALUE, ALIGNMENT = double);

-- dv_time

CREATE TYPE dv_time;
CREATE FUNCTION dv_time_in(cstring, oid, integer) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_out(dv_time) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_time_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_recv(internal, oid, integer) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_send(dv_time) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_time_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_time_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_time_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_time_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_time (INPUT = dv_time_in, OUTPUT = dv_time_out, RECEIVE = dv_time_recv, SEND = dv_time_send,
    TYPMOD_IN = dv_time_typmod_in, TYPMOD_OUT = dv_time_typmod_out, CATEGORY = 'D', INTERNALLENGTH = 8, PASSEDBYVALUE, ALIGNMENT = double);
CREATE FUNCTION dv_time_apply_typmod(dv_time, integer, boolean) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_time AS dv_time) WITH FUNCTION dv_time_apply_typmod(dv_time, integer, boolean) AS IMPLICIT;

-- dv_timestamp

CREATE TYPE dv_timestamp;
CREATE FUNCTION dv_timestamp_in(cstring, oid, integer) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_out(dv_timestamp) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_recv(internal, oid, integer) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_send(dv_timestamp) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_timestamp (INPUT = dv_timestamp_in, OUTPUT = dv_timestamp_out, RECEIVE = dv_timestamp_recv, SEND = dv_timestamp_send,
    TYPMOD_IN = dv_timestamp_typmod_in, TYPMOD_OUT = dv_timestamp_typmod_out, CATEGORY = 'D', INTERNALLENGTH = 12, ALIGNMENT = char);
CREATE FUNCTION dv_timestamp_apply_typmod(dv_timestamp, integer, boolean) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_timestamp AS dv_timestamp) WITH FUNCTION dv_timestamp_apply_typmod(dv_timestamp, integer, boolean) AS IMPLICIT;

-- dv_timestamptz

CREATE TYPE dv_timestamptz;
CREATE FUNCTION dv_timestamptz_in(cstring, oid, integer) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_out(dv_timestamptz) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_recv(internal, oid, integer) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_send(dv_timestamptz) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_timestamptz (INPUT = dv_timestamptz_in, OUTPUT = dv_timestamptz_out, RECEIVE = dv_timestamptz_recv, SEND = dv_timestamptz_send,
    TYPMOD_IN = dv_timestamptz_typmod_in, TYPMOD_OUT = dv_timestamptz_typmod_out, CATEGORY = 'D', INTERNALLENGTH = 17, ALIGNMENT = char);
CREATE FUNCTION dv_timestamptz_apply_typmod(dv_timestamptz, integer, boolean) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_timestamptz AS dv_timestamptz) WITH FUNCTION dv_timestamptz_apply_typmod(dv_timestamptz, integer, boolean) AS IMPLICIT;

-- dv_timestampltz

CREATE TYPE dv_timestampltz;
CREATE FUNCTION dv_timestampltz_in(cstring, oid, integer) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_out(dv_timestampltz) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_recv(internal, oid, integer) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_send(dv_timestampltz) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_timestampltz (INPUT = dv_timestampltz_in, OUTPUT = dv_timestampltz_out, RECEIVE = dv_timestampltz_recv, SEND = dv_timestampltz_send,
    TYPMOD_IN = dv_timestampltz_typmod_in, TYPMOD_OUT = dv_timestampltz_typmod_out, CATEGORY = 'D', INTERNALLENGTH = 12, ALIGNMENT = char);
CREATE FUNCTION dv_timestampltz_apply_typmod(dv_timestampltz, integer, boolean) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_timestampltz AS dv_timestampltz) WITH FUNCTION dv_timestampltz_apply_typmod(dv_timestampltz, integer, boolean) AS IMPLICIT;

-- dv_interval_ym

CREATE TYPE dv_interval_ym;
CREATE FUNCTION dv_interval_ym_in(cstring, oid, integer) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_out(dv_interval_ym) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_recv(internal, oid, integer) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_send(dv_interval_ym) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_interval_ym (INPUT = dv_interval_ym_in, OUTPUT = dv_interval_ym_out, RECEIVE = dv_interval_ym_recv, SEND = dv_interval_ym_send,
    TYPMOD_IN = dv_interval_ym_typmod_in, TYPMOD_OUT = dv_interval_ym_typmod_out, CATEGORY = 'T', INTERNALLENGTH = 5, ALIGNMENT = char);
CREATE FUNCTION dv_interval_ym_apply_typmod(dv_interval_ym, integer, boolean) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_interval_ym AS dv_interval_ym) WITH FUNCTION dv_interval_ym_apply_typmod(dv_interval_ym, integer, boolean) AS IMPLICIT;

-- dv_interval_ds

CREATE TYPE dv_interval_ds;
CREATE FUNCTION dv_interval_ds_in(cstring, oid, integer) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_out(dv_interval_ds) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_recv(internal, oid, integer) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_send(dv_interval_ds) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_typmod_in(cstring[]) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_typmod_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_typmod_out(integer) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_typmod_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_interval_ds (INPUT = dv_interval_ds_in, OUTPUT = dv_interval_ds_out, RECEIVE = dv_interval_ds_recv, SEND = dv_interval_ds_send,
    TYPMOD_IN = dv_interval_ds_typmod_in, TYPMOD_OUT = dv_interval_ds_typmod_out, CATEGORY = 'T', INTERNALLENGTH = 12, ALIGNMENT = char);
CREATE FUNCTION dv_interval_ds_apply_typmod(dv_interval_ds, integer, boolean) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_apply_typmod' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE CAST (dv_interval_ds AS dv_interval_ds) WITH FUNCTION dv_interval_ds_apply_typmod(dv_interval_ds, integer, boolean) AS IMPLICIT;

-- dv_rowid

CREATE TYPE dv_rowid;
CREATE FUNCTION dv_rowid_in(cstring, oid, integer) RETURNS dv_rowid
    AS 'MODULE_PATHNAME', 'dvpg_rowid_in' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_rowid_out(dv_rowid) RETURNS cstring
    AS 'MODULE_PATHNAME', 'dvpg_rowid_out' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_rowid_recv(internal, oid, integer) RETURNS dv_rowid
    AS 'MODULE_PATHNAME', 'dvpg_rowid_recv' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION dv_rowid_send(dv_rowid) RETURNS bytea
    AS 'MODULE_PATHNAME', 'dvpg_rowid_send' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE TYPE dv_rowid (INPUT = dv_rowid_in, OUTPUT = dv_rowid_out, RECEIVE = dv_rowid_recv, SEND = dv_rowid_send,
    CATEGORY = 'U', INTERNALLENGTH = 12, ALIGNMENT = char);
CREATE OPERATOR FAMILY dv_datetime_ops USING btree;

-- comparison of number

CREATE FUNCTION dv_number_eq(number, number) RETURNS boolean
    AS 'byteaeq' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_number_ne(number, number) RETURNS boolean
    AS 'byteane' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_number_lt(number, number) RETURNS boolean
    AS 'bytealt' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_number_le(number, number) RETURNS boolean
    AS 'byteale' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_number_gt(number, number) RETURNS boolean
    AS 'byteagt' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_number_ge(number, number) RETURNS boolean
    AS 'byteage' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = number, RIGHTARG = number, FUNCTION = dv_number_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_number_cmp(number, number) RETURNS integer
    AS 'byteacmp' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_number_hash(number) RETURNS integer
    AS 'hashvarlena' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_number_hash_extended(number, bigint) RETURNS bigint
    AS 'hashvarlenaextended' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_number_sortsupport(internal) RETURNS void
    AS 'bytea_sortsupport' LANGUAGE internal IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_number_ops DEFAULT FOR TYPE number USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_number_cmp(number, number), FUNCTION 2 dv_number_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_number_hash_ops DEFAULT FOR TYPE number USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_number_hash(number), FUNCTION 2 dv_number_hash_extended(number, bigint);
CREATE OPERATOR CLASS dv_number_minmax_ops DEFAULT FOR TYPE number USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_number_larger(number, number) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(number) (SFUNC = dv_number_larger, STYPE = number,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_number_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_number_smaller(number, number) RETURNS number
    AS 'MODULE_PATHNAME', 'dvpg_number_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(number) (SFUNC = dv_number_smaller, STYPE = number,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_number_smaller, PARALLEL = SAFE);

-- comparison of dv_date

CREATE FUNCTION dv_date_eq(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_date_ne(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_date_lt(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_date_le(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_date_gt(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_date_ge(dv_date, dv_date) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_date_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_date, RIGHTARG = dv_date, FUNCTION = dv_date_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_date_cmp(dv_date, dv_date) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_date_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_date_hash(dv_date) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_date_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_date_hash_extended(dv_date, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_date_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_date_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_date_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_date_ops DEFAULT FOR TYPE dv_date USING btree FAMILY dv_datetime_ops AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_date_cmp(dv_date, dv_date), FUNCTION 2 dv_date_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_date_hash_ops DEFAULT FOR TYPE dv_date USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_date_hash(dv_date), FUNCTION 2 dv_date_hash_extended(dv_date, bigint);
CREATE OPERATOR CLASS dv_date_minmax_ops DEFAULT FOR TYPE dv_date USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_date_larger(dv_date, dv_date) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_date) (SFUNC = dv_date_larger, STYPE = dv_date,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_date_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_date_smaller(dv_date, dv_date) RETURNS dv_date
    AS 'MODULE_PATHNAME', 'dvpg_date_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_date) (SFUNC = dv_date_smaller, STYPE = dv_date,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_date_smaller, PARALLEL = SAFE);

-- comparison of dv_time

CREATE FUNCTION dv_time_eq(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_time_ne(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_time_lt(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_time_le(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_time_gt(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_time_ge(dv_time, dv_time) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_time_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_time, RIGHTARG = dv_time, FUNCTION = dv_time_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_time_cmp(dv_time, dv_time) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_time_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_time_hash(dv_time) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_time_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_time_hash_extended(dv_time, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_time_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_time_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_time_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_time_ops DEFAULT FOR TYPE dv_time USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_time_cmp(dv_time, dv_time), FUNCTION 2 dv_time_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_time_hash_ops DEFAULT FOR TYPE dv_time USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_time_hash(dv_time), FUNCTION 2 dv_time_hash_extended(dv_time, bigint);
CREATE OPERATOR CLASS dv_time_minmax_ops DEFAULT FOR TYPE dv_time USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_time_larger(dv_time, dv_time) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_time) (SFUNC = dv_time_larger, STYPE = dv_time,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_time_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_time_smaller(dv_time, dv_time) RETURNS dv_time
    AS 'MODULE_PATHNAME', 'dvpg_time_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_time) (SFUNC = dv_time_smaller, STYPE = dv_time,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_time_smaller, PARALLEL = SAFE);

-- comparison of dv_timestamp

CREATE FUNCTION dv_timestamp_eq(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_timestamp_ne(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_timestamp_lt(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_timestamp_le(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_timestamp_gt(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_timestamp_ge(dv_timestamp, dv_timestamp) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_timestamp, RIGHTARG = dv_timestamp, FUNCTION = dv_timestamp_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_timestamp_cmp(dv_timestamp, dv_timestamp) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_hash(dv_timestamp) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_hash_extended(dv_timestamp, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamp_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_timestamp_ops DEFAULT FOR TYPE dv_timestamp USING btree FAMILY dv_datetime_ops AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_timestamp_cmp(dv_timestamp, dv_timestamp), FUNCTION 2 dv_timestamp_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_timestamp_hash_ops DEFAULT FOR TYPE dv_timestamp USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_timestamp_hash(dv_timestamp), FUNCTION 2 dv_timestamp_hash_extended(dv_timestamp, bigint);
CREATE OPERATOR CLASS dv_timestamp_minmax_ops DEFAULT FOR TYPE dv_timestamp USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_timestamp_larger(dv_timestamp, dv_timestamp) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_timestamp) (SFUNC = dv_timestamp_larger, STYPE = dv_timestamp,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_timestamp_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_timestamp_smaller(dv_timestamp, dv_timestamp) RETURNS dv_timestamp
    AS 'MODULE_PATHNAME', 'dvpg_timestamp_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_timestamp) (SFUNC = dv_timestamp_smaller, STYPE = dv_timestamp,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_timestamp_smaller, PARALLEL = SAFE);

-- comparison of dv_timestamptz

CREATE FUNCTION dv_timestamptz_eq(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_timestamptz_ne(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_timestamptz_lt(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_timestamptz_le(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_timestamptz_gt(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_timestamptz_ge(dv_timestamptz, dv_timestamptz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_timestamptz, RIGHTARG = dv_timestamptz, FUNCTION = dv_timestamptz_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_timestamptz_cmp(dv_timestamptz, dv_timestamptz) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_hash(dv_timestamptz) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_hash_extended(dv_timestamptz, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestamptz_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_timestamptz_ops DEFAULT FOR TYPE dv_timestamptz USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_timestamptz_cmp(dv_timestamptz, dv_timestamptz), FUNCTION 2 dv_timestamptz_sortsupport(internal);
CREATE OPERATOR CLASS dv_timestamptz_hash_ops DEFAULT FOR TYPE dv_timestamptz USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_timestamptz_hash(dv_timestamptz), FUNCTION 2 dv_timestamptz_hash_extended(dv_timestamptz, bigint);
CREATE OPERATOR CLASS dv_timestamptz_minmax_ops DEFAULT FOR TYPE dv_timestamptz USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_timestamptz_larger(dv_timestamptz, dv_timestamptz) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_timestamptz) (SFUNC = dv_timestamptz_larger, STYPE = dv_timestamptz,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_timestamptz_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_timestamptz_smaller(dv_timestamptz, dv_timestamptz) RETURNS dv_timestamptz
    AS 'MODULE_PATHNAME', 'dvpg_timestamptz_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_timestamptz) (SFUNC = dv_timestamptz_smaller, STYPE = dv_timestamptz,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_timestamptz_smaller, PARALLEL = SAFE);

-- comparison of dv_timestampltz

CREATE FUNCTION dv_timestampltz_eq(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_timestampltz_ne(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_timestampltz_lt(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_timestampltz_le(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_timestampltz_gt(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_timestampltz_ge(dv_timestampltz, dv_timestampltz) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_timestampltz, RIGHTARG = dv_timestampltz, FUNCTION = dv_timestampltz_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_timestampltz_cmp(dv_timestampltz, dv_timestampltz) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_hash(dv_timestampltz) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_hash_extended(dv_timestampltz, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_timestampltz_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_timestampltz_ops DEFAULT FOR TYPE dv_timestampltz USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_timestampltz_cmp(dv_timestampltz, dv_timestampltz), FUNCTION 2 dv_timestampltz_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_timestampltz_hash_ops DEFAULT FOR TYPE dv_timestampltz USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_timestampltz_hash(dv_timestampltz), FUNCTION 2 dv_timestampltz_hash_extended(dv_timestampltz, bigint);
CREATE OPERATOR CLASS dv_timestampltz_minmax_ops DEFAULT FOR TYPE dv_timestampltz USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_timestampltz_larger(dv_timestampltz, dv_timestampltz) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_timestampltz) (SFUNC = dv_timestampltz_larger, STYPE = dv_timestampltz,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_timestampltz_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_timestampltz_smaller(dv_timestampltz, dv_timestampltz) RETURNS dv_timestampltz
    AS 'MODULE_PATHNAME', 'dvpg_timestampltz_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_timestampltz) (SFUNC = dv_timestampltz_smaller, STYPE = dv_timestampltz,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_timestampltz_smaller, PARALLEL = SAFE);

-- comparison of dv_interval_ym

CREATE FUNCTION dv_interval_ym_eq(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_interval_ym_ne(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_interval_ym_lt(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_interval_ym_le(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_interval_ym_gt(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_interval_ym_ge(dv_interval_ym, dv_interval_ym) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_interval_ym, RIGHTARG = dv_interval_ym, FUNCTION = dv_interval_ym_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_interval_ym_cmp(dv_interval_ym, dv_interval_ym) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_hash(dv_interval_ym) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_hash_extended(dv_interval_ym, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ym_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_interval_ym_ops DEFAULT FOR TYPE dv_interval_ym USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_interval_ym_cmp(dv_interval_ym, dv_interval_ym), FUNCTION 2 dv_interval_ym_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_interval_ym_hash_ops DEFAULT FOR TYPE dv_interval_ym USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_interval_ym_hash(dv_interval_ym), FUNCTION 2 dv_interval_ym_hash_extended(dv_interval_ym, bigint);
CREATE OPERATOR CLASS dv_interval_ym_minmax_ops DEFAULT FOR TYPE dv_interval_ym USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_interval_ym_larger(dv_interval_ym, dv_interval_ym) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_interval_ym) (SFUNC = dv_interval_ym_larger, STYPE = dv_interval_ym,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_interval_ym_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_interval_ym_smaller(dv_interval_ym, dv_interval_ym) RETURNS dv_interval_ym
    AS 'MODULE_PATHNAME', 'dvpg_interval_ym_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_interval_ym) (SFUNC = dv_interval_ym_smaller, STYPE = dv_interval_ym,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_interval_ym_smaller, PARALLEL = SAFE);

-- comparison of dv_interval_ds

CREATE FUNCTION dv_interval_ds_eq(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_interval_ds_ne(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_interval_ds_lt(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_interval_ds_le(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_interval_ds_gt(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_interval_ds_ge(dv_interval_ds, dv_interval_ds) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_interval_ds, RIGHTARG = dv_interval_ds, FUNCTION = dv_interval_ds_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_interval_ds_cmp(dv_interval_ds, dv_interval_ds) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_hash(dv_interval_ds) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_hash_extended(dv_interval_ds, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_interval_ds_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_interval_ds_ops DEFAULT FOR TYPE dv_interval_ds USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_interval_ds_cmp(dv_interval_ds, dv_interval_ds), FUNCTION 2 dv_interval_ds_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_interval_ds_hash_ops DEFAULT FOR TYPE dv_interval_ds USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_interval_ds_hash(dv_interval_ds), FUNCTION 2 dv_interval_ds_hash_extended(dv_interval_ds, bigint);
CREATE OPERATOR CLASS dv_interval_ds_minmax_ops DEFAULT FOR TYPE dv_interval_ds USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_interval_ds_larger(dv_interval_ds, dv_interval_ds) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_interval_ds) (SFUNC = dv_interval_ds_larger, STYPE = dv_interval_ds,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_interval_ds_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_interval_ds_smaller(dv_interval_ds, dv_interval_ds) RETURNS dv_interval_ds
    AS 'MODULE_PATHNAME', 'dvpg_interval_ds_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_interval_ds) (SFUNC = dv_interval_ds_smaller, STYPE = dv_interval_ds,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_interval_ds_smaller, PARALLEL = SAFE);

-- comparison of dv_rowid

CREATE FUNCTION dv_rowid_eq(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_eq' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR = (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_eq,
    COMMUTATOR = =, NEGATOR = <>, RESTRICT = eqsel, JOIN = eqjoinsel, HASHES, MERGES);
CREATE FUNCTION dv_rowid_ne(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_ne' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <> (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_ne,
    COMMUTATOR = <>, NEGATOR = =, RESTRICT = neqsel, JOIN = neqjoinsel);
CREATE FUNCTION dv_rowid_lt(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_lt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR < (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_lt,
    COMMUTATOR = >, NEGATOR = >=, RESTRICT = scalarltsel, JOIN = scalarltjoinsel);
CREATE FUNCTION dv_rowid_le(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_le' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR <= (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_le,
    COMMUTATOR = >=, NEGATOR = >, RESTRICT = scalarlesel, JOIN = scalarlejoinsel);
CREATE FUNCTION dv_rowid_gt(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_gt' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR > (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_gt,
    COMMUTATOR = <, NEGATOR = <=, RESTRICT = scalargtsel, JOIN = scalargtjoinsel);
CREATE FUNCTION dv_rowid_ge(dv_rowid, dv_rowid) RETURNS boolean
    AS 'MODULE_PATHNAME', 'dvpg_rowid_ge' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR >= (LEFTARG = dv_rowid, RIGHTARG = dv_rowid, FUNCTION = dv_rowid_ge,
    COMMUTATOR = <=, NEGATOR = <, RESTRICT = scalargesel, JOIN = scalargejoinsel);
CREATE FUNCTION dv_rowid_cmp(dv_rowid, dv_rowid) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_rowid_cmp' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_rowid_hash(dv_rowid) RETURNS integer
    AS 'MODULE_PATHNAME', 'dvpg_rowid_hash' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_rowid_hash_extended(dv_rowid, bigint) RETURNS bigint
    AS 'MODULE_PATHNAME', 'dvpg_rowid_hash_extended' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE FUNCTION dv_rowid_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_rowid_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
CREATE OPERATOR CLASS dv_rowid_ops DEFAULT FOR TYPE dv_rowid USING btree AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 dv_rowid_cmp(dv_rowid, dv_rowid), FUNCTION 2 dv_rowid_sortsupport(internal), FUNCTION 4 btequalimage(oid);
CREATE OPERATOR CLASS dv_rowid_hash_ops DEFAULT FOR TYPE dv_rowid USING hash AS OPERATOR 1 =,
    FUNCTION 1 dv_rowid_hash(dv_rowid), FUNCTION 2 dv_rowid_hash_extended(dv_rowid, bigint);
CREATE OPERATOR CLASS dv_rowid_minmax_ops DEFAULT FOR TYPE dv_rowid USING brin AS OPERATOR 1 <, OPERATOR 2 <=, OPERATOR 3 =, OPERATOR 4 >=, OPERATOR 5 >,
    FUNCTION 1 brin_minmax_opcinfo(internal), FUNCTION 2 brin_minmax_add_value(internal, internal, internal, internal),
    FUNCTION 3 brin_minmax_consistent(internal, internal, internal), FUNCTION 4 brin_minmax_union(internal, internal, internal);
CREATE FUNCTION dv_rowid_larger(dv_rowid, dv_rowid) RETURNS dv_rowid
    AS 'MODULE_PATHNAME', 'dvpg_rowid_larger' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE max(dv_rowid) (SFUNC = dv_rowid_larger, STYPE = dv_rowid,
    SORTOP = OPERATOR(>), COMBINEFUNC = dv_rowid_larger, PARALLEL = SAFE);
CREATE FUNCTION dv_rowid_smaller(dv_rowid, dv_rowid) RETURNS dv_rowid
    AS 'MODULE_PATHNAME', 'dvpg_rowid_smaller' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE AGGREGATE min(dv_rowid) (SFUNC = dv_rowid_smaller, STYPE = dv_rowid,
    SORTOP = OPERATOR(<), COMBINEFUNC = dv_rowid_smaller, PARALLEL = SAFE);
