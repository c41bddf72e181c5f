# dv_optional(OPTION PART PACKAGE DEBIAN...): a part that is built where all of its packages are found.
#
# The packages are given as find_package knows them, each with the Debian package that brings it.
# Where one is missing the option is off, whatever it was set to, and a line says which; it is on again, or as it
# was set, once they are there.

include(CMakeDependentOption)

find_package(GTest QUIET)
find_package(Boost 1.74 QUIET)
find_package(benchmark QUIET)
find_package(SQLite3 3.40 QUIET)
find_package(CSV QUIET)
find_package(LMDB QUIET)
find_package(PostgresServer 15 QUIET)

macro(dv_optional option part)
    set(dv_packages ${ARGN})
    set(dv_found)
    set(dv_missing)
    while(dv_packages)
        list(POP_FRONT dv_packages dv_package dv_debian)
        list(APPEND dv_found ${dv_package}_FOUND)
        if(NOT ${dv_package}_FOUND)
            list(APPEND dv_missing ${dv_debian})
        endif()
    endwhile()
    cmake_dependent_option(${option} "Build ${part}" ON "${dv_found}" OFF)
    if(dv_missing)
        list(JOIN dv_missing ", " dv_missing)
        message(STATUS "Left out: ${part}. Debian packages that are missing: ${dv_missing}")
    endif()
endmacro()
