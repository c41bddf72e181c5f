# LMDB (Debian: liblmdb-dev): LMDB_FOUND, LMDB_INCLUDE_DIR, LMDB_LIBRARY.

find_path(LMDB_INCLUDE_DIR lmdb.h)
find_library(LMDB_LIBRARY lmdb)
mark_as_advanced(LMDB_INCLUDE_DIR LMDB_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LMDB DEFAULT_MSG LMDB_LIBRARY LMDB_INCLUDE_DIR)
