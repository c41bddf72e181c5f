#!/usr/bin/env bash
# A database with the first version, and data of it, is updated: it has then what a new one has, object by object.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/cluster.sh"

sql() { cluster_psql check -q -At -v ON_ERROR_STOP=1 -d "$1" "${@:2}"; }
cluster_psql check -q -c 'DROP DATABASE IF EXISTS updated' 2>/dev/null
sql postgres -c 'CREATE DATABASE updated TEMPLATE template0'
sql updated -c "CREATE EXTENSION dvtypes VERSION '0.9'" -c 'CREATE TABLE kept (v number(5, 2) PRIMARY KEY, d dv_date)' \
    -c "INSERT INTO kept VALUES ('1.005', '2024-02-29'), ('-3', NULL)" -c 'ALTER EXTENSION dvtypes UPDATE'

# Each object of the extension, and of functions and operators what they are declared with.
objects="SELECT concat_ws(' ', pg_describe_object(m.classid, m.objid, 0), p.prosrc, p.provolatile, p.proparallel, p.proisstrict,
        p.proleakproof, p.procost, p.prorows, p.prosupport, o.oprcode, o.oprcom::regoperator, o.oprnegate::regoperator, o.oprrest, o.oprjoin, o.oprcanhash,
        c.castcontext, t.typlen, t.typstorage, t.typcategory, a.aggtransfn, a.aggcombinefn, a.aggmtransfn)
    FROM pg_depend AS m LEFT JOIN pg_proc AS p ON m.classid = 'pg_proc'::regclass AND p.oid = m.objid
        LEFT JOIN pg_operator AS o ON m.classid = 'pg_operator'::regclass AND o.oid = m.objid
        LEFT JOIN pg_cast AS c ON m.classid = 'pg_cast'::regclass AND c.oid = m.objid
        LEFT JOIN pg_type AS t ON m.classid = 'pg_type'::regclass AND t.oid = m.objid
        LEFT JOIN pg_aggregate AS a ON m.classid = 'pg_proc'::regclass AND a.aggfnoid = m.objid
    WHERE m.deptype = 'e' AND m.refclassid = 'pg_extension'::regclass ORDER BY 1"
# Members of families and classes that come behind them depend on these.
members="SELECT amopstrategy, amoplefttype::regtype, amoprighttype::regtype, amopopr::regoperator FROM pg_amop
    WHERE amopopr::regoperator::text ~ '(number|dv_)' ORDER BY amopstrategy,
        amoplefttype::regtype::text, amoprighttype::regtype::text, amopopr::regoperator::text"
sql "$1" -c "$objects" -c "$members" >"$DV_RESULTS/new"
sql updated -c "$objects" -c "$members" >"$DV_RESULTS/updated"
[ "$(wc -l <"$DV_RESULTS/new")" -gt 1000 ]
diff "$DV_RESULTS/new" "$DV_RESULTS/updated"
[ "$(sql updated -c "SELECT string_agg(v + number '1' || to_char(d, 'YYYY'), ' ') FROM kept WHERE v > '0'")" = '2.012024' ]
[ "$(sql updated -c 'SELECT extversion FROM pg_extension' | tail -1)" = 1.0 ]
