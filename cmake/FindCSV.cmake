# libcsv (Debian: libcsv-dev): CSV_FOUND, CSV_INCLUDE_DIR, CSV_LIBRARY.

find_path(CSV_INCLUDE_DIR csv.h)
find_library(CSV_LIBRARY csv)
mark_as_advanced(CSV_INCLUDE_DIR CSV_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(CSV DEFAULT_MSG CSV_LIBRARY CSV_INCLUDE_DIR)
