
-- shards: tables that are spread over foreign servers
--
-- The queries are in two levels: each shard sums its own rows to states, which are merged here. Names of functions of the
-- extension are written with its schema, so that no search_path changes what is meant.

-- The handler of a foreign data wrapper that does what postgres_fdw does, and whose errors name the server.
CREATE FUNCTION dv_shard_handler() RETURNS fdw_handler
    AS 'MODULE_PATHNAME', 'dvpg_shard_handler' LANGUAGE C STRICT;

-- The foreign servers that the extension's functions are shipped to, with the version of the extension there, or why there
-- is none. Needs the extension dblink.
CREATE FUNCTION dv_shards() RETURNS TABLE (shard name, version text, problem text)
    LANGUAGE plpgsql STABLE AS $$
DECLARE
    remote CONSTANT text := 'SELECT extversion FROM pg_catalog.pg_extension WHERE extname = ''dvtypes''';
    link name;
BEGIN
    SELECT n.nspname INTO link FROM pg_catalog.pg_extension e JOIN pg_catalog.pg_namespace n ON n.oid = e.extnamespace
        WHERE e.extname = 'dblink';
    IF link IS NULL THEN
        RAISE EXCEPTION 'the extension dblink is missing' USING ERRCODE = 'undefined_object',
            HINT = 'CREATE EXTENSION dblink';
    END IF;
    FOR shard IN
        SELECT s.srvname FROM pg_catalog.pg_foreign_server s, pg_catalog.unnest(s.srvoptions) AS option
        WHERE option LIKE 'extensions=%' AND 'dvtypes' = ANY (pg_catalog.regexp_split_to_array(substr(option, 12), ' *, *'))
        ORDER BY 1
    LOOP
        version := NULL;
        problem := NULL;
        BEGIN
            EXECUTE format('SELECT v FROM %I.dblink(%L, %L) AS t(v text)', link, shard, remote) INTO version;
            IF version IS NULL THEN
                problem := 'the extension dvtypes is missing';
            END IF;
        EXCEPTION WHEN OTHERS THEN
            problem := SQLERRM;
        END;
        RETURN NEXT;
    END LOOP;
END $$;

-- Fails when a shard does not answer or has another version of the extension than this server, and names it.
CREATE FUNCTION dv_check_shards() RETURNS void LANGUAGE plpgsql STABLE AS $$
DECLARE
    ours text;
    home name;
    bad record;
BEGIN
    SELECT e.extversion, n.nspname INTO ours, home
        FROM pg_catalog.pg_extension e JOIN pg_catalog.pg_namespace n ON n.oid = e.extnamespace
        WHERE e.extname = 'dvtypes';
    FOR bad IN EXECUTE format('SELECT * FROM %I.dv_shards() WHERE problem IS NOT NULL OR version <> %L', home, ours) LOOP
        IF bad.problem IS NOT NULL THEN
            RAISE EXCEPTION 'shard %: %', bad.shard, bad.problem USING ERRCODE = 'connection_failure';
        END IF;
        RAISE EXCEPTION 'shard % has version % of dvtypes, this server has %', bad.shard, bad.version, ours
            USING ERRCODE = 'object_not_in_prerequisite_state',
                HINT = 'ALTER EXTENSION dvtypes UPDATE on the one that is older.';
    END LOOP;
END $$;

-- The statement that sums a column of a partitioned table by another one, in two levels: key, count, sum, avg.
CREATE FUNCTION dv_sharded_sql("table" regclass, value name, key name DEFAULT NULL) RETURNS text
    LANGUAGE plpgsql STABLE AS $$
DECLARE
    home name;
    shards text;
BEGIN
    SELECT n.nspname INTO home FROM pg_catalog.pg_extension e
        JOIN pg_catalog.pg_namespace n ON n.oid = e.extnamespace WHERE e.extname = 'dvtypes';
    SELECT string_agg(format(E'    SELECT %scount(%I) AS count, %I.dv_sum_state(%I) AS state FROM %s%s',
                             quote_ident(key) || ' AS key, ', value, home, value, relid,
                             ' GROUP BY ' || quote_ident(key)), E'\n    UNION ALL\n' ORDER BY relid)
        INTO shards FROM pg_catalog.pg_partition_tree("table") WHERE isleaf;
    RETURN format(E'SELECT %s AS key, sum(count)::bigint AS count, %I.dv_sum_merge(state) AS sum, '
                  '%I.dv_avg_merge(state) AS avg\nFROM (\n%s\n) AS shards%s',
                  CASE WHEN key IS NULL THEN 'NULL::text' ELSE 'key::text' END, home, home, shards,
                  CASE WHEN key IS NULL THEN '' ELSE E'\nGROUP BY key\nORDER BY key' END);
END $$;

-- Runs it. A shard that fails is named: by the context of the error, or by asking all of them.
CREATE FUNCTION dv_sharded_sum("table" regclass, value name, by name DEFAULT NULL)
    RETURNS TABLE (key text, count bigint, sum number, avg number) LANGUAGE plpgsql STABLE AS $$
DECLARE
    home name;
    statement text;
    reason text;
    state text;
    context text;
    shard text;
BEGIN
    SELECT n.nspname INTO home FROM pg_catalog.pg_extension e
        JOIN pg_catalog.pg_namespace n ON n.oid = e.extnamespace WHERE e.extname = 'dvtypes';
    EXECUTE format('SELECT %I.dv_check_shards()', home);
    EXECUTE format('SELECT %I.dv_sharded_sql($1, $2, $3)', home) INTO statement USING "table", value, by;
    BEGIN
        RETURN QUERY EXECUTE statement;
    EXCEPTION WHEN connection_exception OR connection_failure OR connection_does_not_exist
            OR sqlclient_unable_to_establish_sqlconnection OR admin_shutdown OR crash_shutdown OR fdw_error THEN
        GET STACKED DIAGNOSTICS reason = MESSAGE_TEXT, state = RETURNED_SQLSTATE, context = PG_EXCEPTION_CONTEXT;
        shard := pg_catalog.substring(context, '(?n)^on shard "(.*)"$');
        IF shard IS NOT NULL THEN
            RAISE EXCEPTION 'shard %: %', shard, reason USING ERRCODE = state;
        END IF;
        EXECUTE format('SELECT %I.dv_check_shards()', home);  -- names it, if it is still away
        RAISE EXCEPTION 'a shard failed: %', reason USING ERRCODE = state;
    END;
END $$;
