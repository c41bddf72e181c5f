// dvtypes/dv_type.h: the catalogue of the SQL and stored-procedure data types.
//
// Codes are permanent: they are kept in data files and sent to clients. 0 to 22 are the SQL types, 23 to 27
// the primitive and 28 to 32 the composite types of stored procedures.
//
// The catalogue is constant data, exported for the SQL layer, and may be read from any thread: per type its
// names, stored size and categories; per pair of types whether and how they convert, compare, combine and
// meet in type checks. The library reads none of it. In C++, dvtypes.hpp has lookups with checked codes.

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

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------------------
// Each type, by its code
// ---------------------------------------------------------------------------------------------------------

// The enumerator ("DV_TYPE_VARCHAR") and the SQL name ("VARCHAR2"). DV_TYPE_NONE is "NULL";
// DV_TYPE_IDX_BY_TBL has no SQL name: "".
extern DV_EXPORT_DATA const char *const _dv_type_str[DV_TYPE_MAX_PSM];
extern DV_EXPORT_DATA const char *const _dv_type_name[DV_TYPE_MAX_PSM];

// Bytes of a stored value with one byte of length: NUMBER is 22 + 1, DATE 8 + 1. 0: of varying length, or not
// stored in this form. (DV_TYPE_PLS_INT is 0 where DV_TYPE_BIN_INT is 4 + 1.)
extern DV_EXPORT_DATA const int _dv_type_fixed_size[DV_TYPE_MAX_PSM];

// Categories, bits of _dv_type_info.
typedef enum dv_type_info_e {
    DV_TYPE_INFO_NUMERIC = 0x1,     // NUMBER, BIN_FLOAT, BIN_DOUBLE, PLS_INT, BIN_INT
    DV_TYPE_INFO_CHARACTER = 0x2,   // CHAR, VARCHAR, LONG, CLOB, NCHAR, NVARCHAR, NCLOB
    DV_TYPE_INFO_BINARY = 0x4,      // RAW, LONG_RAW, BLOB, BFILE
    DV_TYPE_INFO_DATETIME = 0x8,    // DATE, TIME, TIMESTAMP, TS_TZ, TS_LTZ
    DV_TYPE_INFO_INTERVAL = 0x10,   // ITV_YTM, ITV_DTS
    DV_TYPE_INFO_LONG = 0x20,       // LONG, LONG_RAW
    DV_TYPE_INFO_LOB = 0x40,        // BLOB, CLOB, BFILE, NCLOB
    DV_TYPE_INFO_VARYING = 0x80,    // VARCHAR, RAW and the composite types; not NVARCHAR
    DV_TYPE_INFO_LIMITED = 0x100,   // declared with a greatest length: CHAR, VARCHAR, RAW, NCHAR, NVARCHAR
    DV_TYPE_INFO_LARGE = 0x200,     // stored as long data: LONG, LONG_RAW, BLOB, CLOB, NCLOB; not BFILE
    DV_TYPE_INFO_NATIONAL = 0x400,  // in the national character set: NCHAR, NVARCHAR, NCLOB
} dv_type_info_e;

extern DV_EXPORT_DATA const int _dv_type_info[DV_TYPE_MAX_PSM];  // by type code: bits of dv_type_info_e

// ---------------------------------------------------------------------------------------------------------
// Each pair of types
// ---------------------------------------------------------------------------------------------------------

// A table's row is the first type (the left operand, or what is converted from), the column in it the second:
//
//     char cell = _dv_type_tbl_conv[DV_TYPE_DATE][DV_TYPE_CHAR];    // 'o'
//
// Both codes must be below the table's count of rows. Each row is a C string of as many characters as the
// table has columns. In every table "-" says no: not allowed, or not defined. What the classes of permitted
// cells ("o" and "*", the operand combinations, the letters of type checks) mean is up to the SQL layer.

// Conversion, comparison and compatibility of the SQL types.
//   "o"  allowed     "*"  allowed in a second way (conversion only)     "."  the same type
// Compatibility has no "."; its diagonal is "o".
extern DV_EXPORT_DATA const char _dv_type_tbl_conv[DV_TYPE_MAX][DV_TYPE_MAX + 1];
extern DV_EXPORT_DATA const char _dv_type_tbl_cmp[DV_TYPE_MAX][DV_TYPE_MAX + 1];
extern DV_EXPORT_DATA const char _dv_type_tbl_compat[DV_TYPE_MAX][DV_TYPE_MAX + 1];

// Conversion and compatibility in stored procedures, of all types; the cells as above.
//   "#"  the same type, where it is CSR or composite (conversion only)
extern DV_EXPORT_DATA const char _dv_type_tbl_conv_psm[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_tbl_compat_psm[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];

// The type in which two operands are compared: its code as one digit of base 32, "0".."9", "A".."V" (10..31).
extern DV_EXPORT_DATA const char _dv_type_tbl_cmp_result[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];

// How far a conversion is, "0" (nearest) to "9". A type is at "0" from itself, but NONE, UNKNOWN and the
// composite types have no distance to any.
extern DV_EXPORT_DATA const char _dv_type_tbl_distance[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];

// Arithmetic: the combination of the operands, 0..32, as the character '0' + combination ("0".."9", then ":"
// for 10 up to "P" for 32). A pair has one combination, whichever of the operators takes it.
extern DV_EXPORT_DATA const char _dv_type_opd_comb_add[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_opd_comb_sub[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_opd_comb_mul[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_opd_comb_div[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_opd_comb_mod[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];
extern DV_EXPORT_DATA const char _dv_type_opd_comb_expn[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];

// Type checks: a class "A".."Q", or "." for most types with themselves.
extern DV_EXPORT_DATA const char _dv_type_meta_check_op_tbl[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1];

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_DV_TYPE_H
