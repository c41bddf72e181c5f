# The PostgreSQL server's headers (Debian: postgresql-server-dev-15): PostgresServer_FOUND, and what pg_config says:
# PostgresServer_INCLUDE_DIR, _PKGLIBDIR, _SHAREDIR, _BINDIR, _VERSION.

find_program(PostgresServer_CONFIG pg_config HINTS /usr/lib/postgresql/15/bin)
mark_as_advanced(PostgresServer_CONFIG)

function(dv_ask_pg_config variable option)
    if(PostgresServer_CONFIG)
        execute_process(COMMAND ${PostgresServer_CONFIG} ${option} OUTPUT_VARIABLE answer
            OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
        set(PostgresServer_${variable} "${answer}" PARENT_SCOPE)
    endif()
endfunction()

dv_ask_pg_config(SERVER_DIR --includedir-server)
dv_ask_pg_config(PKGLIBDIR --pkglibdir)
dv_ask_pg_config(SHAREDIR --sharedir)
dv_ask_pg_config(BINDIR --bindir)
dv_ask_pg_config(VERSION --version)
string(REGEX MATCH "[0-9]+" PostgresServer_VERSION "${PostgresServer_VERSION}")
set(PostgresServer_INCLUDE_DIR PostgresServer_INCLUDE_DIR-NOTFOUND)
if(EXISTS "${PostgresServer_SERVER_DIR}/postgres.h")
    set(PostgresServer_INCLUDE_DIR "${PostgresServer_SERVER_DIR}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PostgresServer
    REQUIRED_VARS PostgresServer_INCLUDE_DIR PostgresServer_PKGLIBDIR PostgresServer_SHAREDIR
    VERSION_VAR PostgresServer_VERSION)
