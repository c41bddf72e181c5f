-- Numbers sort by their first bytes; the statements of the type have what the server has for bytea, which gives the same order.
CREATE OR REPLACE FUNCTION dv_number_sortsupport(internal) RETURNS void
    AS 'MODULE_PATHNAME', 'dvpg_number_sortsupport' LANGUAGE C IMMUTABLE STRICT LEAKPROOF PARALLEL SAFE;
