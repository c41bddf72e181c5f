// dvtypes/dv_type.h: the SQL and stored-procedure data types by number.
//
// Codes are frozen: they are kept in data files and sent to clients. 0 to 22 are the SQL types, 23 to 27 the
// primitive and 28 to 32 the composite types of stored procedures.

#ifndef DVTYPES_DV_TYPE_H
#define DVTYPES_DV_TYPE_H

#include "dvtypes/base.h"

typedef enum dv_type_e {
    DV_TYPE_NONE = 0,
    DV_TYPE_NUMBER = 1,
    DV_TYPE_CHAR = 2,
    DV_TYPE_VARCHAR = 3,
    DV_TYPE_RAW = 4,
    DV_TYPE_DATE = 5,
    DV_TYPE_TIME = 6,
    DV_TYPE_TIMESTAMP = 7,
    DV_TYPE_ITV_YTM = 8,
    DV_TYPE_ITV_DTS = 9,
    DV_TYPE_LONG = 10,
    DV_TYPE_LONG_RAW = 11,
    DV_TYPE_BLOB = 12,
    DV_TYPE_CLOB = 13,
    DV_TYPE_BFILE = 14,
    DV_TYPE_ROWID = 15,
    DV_TYPE_CSR = 16,
    DV_TYPE_UNKNOWN = 17,
    DV_TYPE_NCHAR = 18,
    DV_TYPE_NVARCHAR = 19,
    DV_TYPE_NCLOB = 20,
    DV_TYPE_TS_TZ = 21,
    DV_TYPE_TS_LTZ = 22,
    DV_TYPE_MAX = 23,
    DV_TYPE_BIN_FLOAT = 23,
    DV_TYPE_BIN_DOUBLE = 24,
    DV_TYPE_BOOLEAN = 25,
    DV_TYPE_PLS_INT = 26,
    DV_TYPE_BIN_INT = 27,
    DV_TYPE_MAX_PSM_PRIM = 28,
    DV_TYPE_RECORD = 28,
    DV_TYPE_VARRAY = 29,
    DV_TYPE_TABLE = 30,
    DV_TYPE_IDX_BY_TBL = 31,
    DV_TYPE_OBJECT = 32,
    DV_TYPE_INVALID = 33,
    DV_TYPE_MAX_PSM = 33
} dv_type_e;

typedef int32_t dv_type_t;  // of dv_type_e

#endif  // DVTYPES_DV_TYPE_H
