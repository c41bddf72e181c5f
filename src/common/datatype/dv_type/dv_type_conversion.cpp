// Conversion, comparison and compatibility of pairs of types: rows are the first (from, left) type, columns
// the second. The column heads are the types' names, read downwards.

#include "dv_type_table.h"

using namespace dv::impl;

// ---------------------------------------------------------------------------------------------------------
// SQL types: "o" and "*" allowed, "." the same type, "-" not allowed
// ---------------------------------------------------------------------------------------------------------

// clang-format off
constexpr char _dv_type_tbl_conv[DV_TYPE_MAX][DV_TYPE_MAX + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTT
    //                OUHAAAIMTTORLLFOUNCVCSS
    //                NMARWTMSMSNAOOIWRKHALTL
    //                E RC EET  GWBBLISNAROZT
    /* NONE       */ ".***************-******",
    /* NUMBER     */ "-.oo------*--*---ooo---",
    /* CHAR       */ "-o.ooooooo***o-o-oooooo",
    /* VARCHAR    */ "-oo.oooooo***o-o-oooooo",
    /* RAW        */ "--oo.-----**o*---ooo---",
    /* DATE       */ "--oo-.-o--*------ooo-oo",
    /* TIME       */ "--oo--.---*------ooo---",
    /* TIMESTAMP  */ "--oo-o-.--*------ooo-oo",
    /* ITV_YTM    */ "--oo----.-*------ooo---",
    /* ITV_DTS    */ "--oo-----.*------ooo---",
    /* LONG       */ "----------.------------",
    /* LONG_RAW   */ "-----------.-----------",
    /* BLOB       */ "----o------*.----o-----",
    /* CLOB       */ "--oo------*--.---oooo--",
    /* BFILE      */ "--------------.--o-----",
    /* ROWID      */ "--oo------*----.-ooo---",
    /* CSR        */ "----------------.------",
    /* UNKNOWN    */ "-ooooooooo**ooooo.ooooo",
    /* NCHAR      */ "-ooooooooo**-o-o-o.oooo",
    /* NVARCHAR   */ "-ooooooooo**-o-o-oo.ooo",
    /* NCLOB      */ "--oo------*--o---ooo.--",
    /* TS_TZ      */ "--oo-o-o--*------ooo-.o",
    /* TS_LTZ     */ "--oo-o-o--*------ooo-o.",
};

constexpr char _dv_type_tbl_cmp[DV_TYPE_MAX][DV_TYPE_MAX + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTT
    //                OUHAAAIMTTORLLFOUNCVCSS
    //                NMARWTMSMSNAOOIWRKHALTL
    //                E RC EET  GWBBLISNAROZT
    /* NONE       */ ".ooooooooooooooo-ooo-oo",
    /* NUMBER     */ "o.oo-------------ooo---",
    /* CHAR       */ "oo.ooooooo-----o-ooo-oo",
    /* VARCHAR    */ "ooo.oooooo-----o-ooo-oo",
    /* RAW        */ "o-oo.------------ooo---",
    /* DATE       */ "o-oo-.-o---------ooo-oo",
    /* TIME       */ "o-oo--.----------ooo---",
    /* TIMESTAMP  */ "o-oo-o-.---------ooo-oo",
    /* ITV_YTM    */ "o-oo----.--------ooo---",
    /* ITV_DTS    */ "o-oo-----.-------ooo---",
    /* LONG       */ "o----------------------",
    /* LONG_RAW   */ "o----------------------",
    /* BLOB       */ "o----------------------",
    /* CLOB       */ "o----------------------",
    /* BFILE      */ "o----------------------",
    /* ROWID      */ "o-oo-----------.-ooo---",
    /* CSR        */ "o----------------------",
    /* UNKNOWN    */ "oooooooooo-----oo.oo-oo",
    /* NCHAR      */ "oooooooooo-----o-o.o-oo",
    /* NVARCHAR   */ "oooooooooo-----o-oo.-oo",
    /* NCLOB      */ "o-------------------.--",
    /* TS_TZ      */ "o-oo-o-o---------ooo-.o",
    /* TS_LTZ     */ "o-oo-o-o---------ooo-o.",
};

constexpr char _dv_type_tbl_compat[DV_TYPE_MAX][DV_TYPE_MAX + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTT
    //                OUHAAAIMTTORLLFOUNCVCSS
    //                NMARWTMSMSNAOOIWRKHALTL
    //                E RC EET  GWBBLISNAROZT
    /* NONE       */ "oooooooooooooooo-oooooo",
    /* NUMBER     */ "oo---------------o-----",
    /* CHAR       */ "o-oo-------------o-----",
    /* VARCHAR    */ "o-oo-------------o-----",
    /* RAW        */ "o---o------------o-----",
    /* DATE       */ "o----o-o---------o---oo",
    /* TIME       */ "o-----o----------o-----",
    /* TIMESTAMP  */ "o----o-o---------o---oo",
    /* ITV_YTM    */ "o-------o--------o-----",
    /* ITV_DTS    */ "o--------o-------o-----",
    /* LONG       */ "o---------o------o-----",
    /* LONG_RAW   */ "o----------o-----o-----",
    /* BLOB       */ "o-----------o----o-----",
    /* CLOB       */ "o------------o---o-----",
    /* BFILE      */ "o-------------o--o-----",
    /* ROWID      */ "o--------------o-o-----",
    /* CSR        */ "----------------oo-----",
    /* UNKNOWN    */ "ooooooooooooooooooooooo",
    /* NCHAR      */ "o----------------ooo---",
    /* NVARCHAR   */ "o----------------ooo---",
    /* NCLOB      */ "o----------------o--o--",
    /* TS_TZ      */ "o----o-o---------o---oo",
    /* TS_LTZ     */ "o----o-o---------o---oo",
};

// ---------------------------------------------------------------------------------------------------------
// All types, in stored procedures: the same cells, and "#" a cursor or composite type with itself
// ---------------------------------------------------------------------------------------------------------

constexpr char _dv_type_tbl_conv_psm[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTTFDBPBRVTIO
    //                OUHAAAIMTTORLLFOUNCVCSSLBOLIEAADB
    //                NMARWTMSMSNAOOIWRKHALTLTLOSNCRBXJ
    //                E RC EET  GWBBLISNAROZT  LII RLT
    /* NONE       */ ".***************-****************",
    /* NUMBER     */ "-.oo------*------ooo---oo-oo-----",
    /* CHAR       */ "-o.ooooooooo-o-o-ooo-oooo-oo-----",
    /* VARCHAR    */ "-oo.oooooooo-o-o-ooo-oooo-oo-----",
    /* RAW        */ "--oo.-----ooo----ooo-------------",
    /* DATE       */ "--oo-.oo--*------ooo-oo----------",
    /* TIME       */ "--oo-o.---*------ooo-------------",
    /* TIMESTAMP  */ "--oo-o-.---------ooo-oo----------",
    /* ITV_YTM    */ "--oo----.--------ooo-------------",
    /* ITV_DTS    */ "--oo-----.-------ooo-------------",
    /* LONG       */ "--ooo-----.o-o---o---------------",
    /* LONG_RAW   */ "--ooo-----o.o----o---------------",
    /* BLOB       */ "----o------o.----o---------------",
    /* CLOB       */ "--oo------o--.---oooo------------",
    /* BFILE      */ "--------------.--o---------------",
    /* ROWID      */ "--oo-----------.-ooo-------------",
    /* CSR        */ "----------------#o---------------",
    /* UNKNOWN    */ "-oooooooooooooooo.oooooooooo-----",
    /* NCHAR      */ "-ooooooooo**-o-o-o.oooooo-oo-----",
    /* NVARCHAR   */ "-ooooooooo**-o-o-oo.ooooo-oo-----",
    /* NCLOB      */ "--oo------*--o---ooo.------------",
    /* TS_TZ      */ "--oo-o-o---------ooo-.o----------",
    /* TS_LTZ     */ "--oo-o-o---------ooo-o.----------",
    /* BIN_FLOAT  */ "-ooo------*------ooo---.o-oo-----",
    /* BIN_DOUBLE */ "-ooo------*------ooo---o.-oo-----",
    /* BOOLEAN    */ "-----------------o-------.-------",
    /* PLS_INT    */ "-ooo------*------ooo---oo-.o-----",
    /* BIN_INT    */ "-ooo------*------ooo---oo-o.-----",
    /* RECORD     */ "----------------------------#----",
    /* VARRAY     */ "-----------------------------#---",
    /* TABLE      */ "------------------------------#--",
    /* IDX_BY_TBL */ "-------------------------------#-",
    /* OBJECT     */ "--------------------------------#",
};

constexpr char _dv_type_tbl_compat_psm[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTTFDBPBRVTIO
    //                OUHAAAIMTTORLLFOUNCVCSSLBOLIEAADB
    //                NMARWTMSMSNAOOIWRKHALTLTLOSNCRBXJ
    //                E RC EET  GWBBLISNAROZT  LII RLT
    /* NONE       */ "oooooooooooooooo-ooooooooooo-ooo-",
    /* NUMBER     */ "oooo-------------ooo---oo-oo-----",
    /* CHAR       */ "oooooooooooo-o-o-oooooooo-oo-----",
    /* VARCHAR    */ "oooooooooooo-o-o-oooooooo-oo-----",
    /* RAW        */ "o-ooo------oo----ooo-------------",
    /* DATE       */ "o-oo-o-o---------ooo-oo----------",
    /* TIME       */ "o-oo--o----------ooo-------------",
    /* TIMESTAMP  */ "o-oo-o-o---------ooo-oo----------",
    /* ITV_YTM    */ "o-oo----o--------ooo-------------",
    /* ITV_DTS    */ "o-oo-----o-------ooo-------------",
    /* LONG       */ "o-oo------o--o---ooo-------------",
    /* LONG_RAW   */ "o-ooo------oo----ooo-------------",
    /* BLOB       */ "o---o------oo----o---------------",
    /* CLOB       */ "o-oo------o--o---ooo-------------",
    /* BFILE      */ "o-------------o--o---------------",
    /* ROWID      */ "o-oo-----------o-ooo-------------",
    /* CSR        */ "o---------------oo---------------",
    /* UNKNOWN    */ "oooooooooooooooooooooooooooo-----",
    /* NCHAR      */ "oooooooooooo-o-o-oooooooo-oo-----",
    /* NVARCHAR   */ "oooooooooooo-o-o-oooooooo-oo-----",
    /* NCLOB      */ "o-oo-------------oooo------------",
    /* TS_TZ      */ "o-oo-o-o---------ooo-oo----------",
    /* TS_LTZ     */ "o-oo-o-o---------ooo-oo----------",
    /* BIN_FLOAT  */ "oooo-------------ooo---oo-oo-----",
    /* BIN_DOUBLE */ "oooo-------------ooo---oo-oo-----",
    /* BOOLEAN    */ "o----------------o-------o-------",
    /* PLS_INT    */ "oooo-------------ooo---oo-oo-----",
    /* BIN_INT    */ "oooo-------------ooo---oo-oo-----",
    /* RECORD     */ "----------------------------o----",
    /* VARRAY     */ "o----------------------------o---",
    /* TABLE      */ "o-----------------------------o--",
    /* IDX_BY_TBL */ "o------------------------------o-",
    /* OBJECT     */ "--------------------------------o",
};

// ---------------------------------------------------------------------------------------------------------
// All types: the type that two are compared in, as a digit of base 32; the distance of a conversion
// ---------------------------------------------------------------------------------------------------------

constexpr char _dv_type_tbl_cmp_result[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTTFDBPBRVTIO
    //                OUHAAAIMTTORLLFOUNCVCSSLBOLIEAADB
    //                NMARWTMSMSNAOOIWRKHALTLTLOSNCRBXJ
    //                E RC EET  GWBBLISNAROZT  LII RLT
    /* NONE       */ "0123456789ABCDEF-HIJKLMNOPQR-TUV-",
    /* NUMBER     */ "11113--333-3---3-H11-33NO-11-----",
    /* CHAR       */ "2123256789AA-D-F-HIJKLM11-11-----",
    /* VARCHAR    */ "3133356789AA-D-F-HJJKLM11-11-----",
    /* RAW        */ "432343333333-D-3-HIJK3333-33-----",
    /* DATE       */ "5-55353733-3---3-H55-LM----------",
    /* TIME       */ "6-66336333-3---3-H66-33----------",
    /* TIMESTAMP  */ "7377373733-3---3-H77-LM33-33-----",
    /* ITV_YTM    */ "8388333383-3---3-H88-3333-33-----",
    /* ITV_DTS    */ "9399333339-3---3-H99-3333-33-----",
    /* LONG       */ "A-AA3-----AA-A-F-H---------------",
    /* LONG_RAW   */ "B3AA333333AB-A-3-H---3333-33-----",
    /* BLOB       */ "C--------------------------------",
    /* CLOB       */ "D-DDD-----AA-D-F-HDDK------------",
    /* BFILE      */ "E--------------------------------",
    /* ROWID      */ "F3FF333333F3-F-F-HFF-3333-33-----",
    /* CSR        */ "---------------------------------",
    /* UNKNOWN    */ "HHHHHHHHHHHH-H-H-HHHHHHHHHHH-----",
    /* NCHAR      */ "I1IJI56789---D-F-HIJKLM11-11-----",
    /* NVARCHAR   */ "J1JJJ56789---D-F-HJJKLM11-11-----",
    /* NCLOB      */ "K-KKK--------K---HKKK------------",
    /* TS_TZ      */ "L377373L33-3---3-H77-LL33-33-----",
    /* TS_LTZ     */ "M377373M33-3---3-H77-LM33-33-----",
    /* BIN_FLOAT  */ "NN113--333-3---3-H11-33NO-NN-----",
    /* BIN_DOUBLE */ "OO113--333-3---3-H11-33OO-OO-----",
    /* BOOLEAN    */ "P----------------H-------P-------",
    /* PLS_INT    */ "Q1113--333-3---3-H11-33NO-QQ-----",
    /* BIN_INT    */ "R1113--333-3---3-H11-33NO-RR-----",
    /* RECORD     */ "---------------------------------",
    /* VARRAY     */ "T----------------------------T---",
    /* TABLE      */ "U-----------------------------U--",
    /* IDX_BY_TBL */ "V--------------------------------",
    /* OBJECT     */ "---------------------------------",
};

constexpr char _dv_type_tbl_distance[DV_TYPE_MAX_PSM][DV_TYPE_MAX_PSM + 1] = {
    //                NNCVRDTTYDLLBCBRCUNNNTTFDBPBRVTIO
    //                OUHAAAIMTTORLLFOUNCVCSSLBOLIEAADB
    //                NMARWTMSMSNAOOIWRKHALTLTLOSNCRBXJ
    //                E RC EET  GWBBLISNAROZT  LII RLT
    /* NONE       */ "---------------------------------",
    /* NUMBER     */ "-099------9------------12-22-----",
    /* CHAR       */ "-90009-99900-9-------9999-99-----",
    /* VARCHAR    */ "-90009-99900-9-------9999-99-----",
    /* RAW        */ "--000-----009--------------------",
    /* DATE       */ "--99-0-9--9----------99----------",
    /* TIME       */ "------0--------------------------",
    /* TIMESTAMP  */ "--99-9-0--9----------99----------",
    /* ITV_YTM    */ "--99----0-9----------------------",
    /* ITV_DTS    */ "--99-----09----------------------",
    /* LONG       */ "-90009-99900-9-------9999-99-----",
    /* LONG_RAW   */ "--000-----009--------------------",
    /* BLOB       */ "----9------90--------------------",
    /* CLOB       */ "--99-------9-0-------------------",
    /* BFILE      */ "--------------0------------------",
    /* ROWID      */ "---------------0-----------------",
    /* CSR        */ "----------------0----------------",
    /* UNKNOWN    */ "---------------------------------",
    /* NCHAR      */ "------------------0--------------",
    /* NVARCHAR   */ "-------------------0-------------",
    /* NCLOB      */ "--------------------0------------",
    /* TS_TZ      */ "--99-9-9--9----------09----------",
    /* TS_LTZ     */ "--99-9-9--9----------90----------",
    /* BIN_FLOAT  */ "-299------9------------01-33-----",
    /* BIN_DOUBLE */ "-399------9------------20-44-----",
    /* BOOLEAN    */ "-------------------------0-------",
    /* PLS_INT    */ "-199------9------------23-00-----",
    /* BIN_INT    */ "-199------9------------23-00-----",
    /* RECORD     */ "---------------------------------",
    /* VARRAY     */ "---------------------------------",
    /* TABLE      */ "---------------------------------",
    /* IDX_BY_TBL */ "---------------------------------",
    /* OBJECT     */ "---------------------------------",
};

// clang-format on

static_assert(is_table_of(_dv_type_tbl_conv, ".o*-"));
static_assert(is_table_of(_dv_type_tbl_cmp, ".o-"));
static_assert(is_table_of(_dv_type_tbl_compat, "o-"));
static_assert(is_table_of(_dv_type_tbl_conv_psm, ".o*-#"));
static_assert(is_table_of(_dv_type_tbl_compat_psm, "o-"));
static_assert(is_table_of(_dv_type_tbl_cmp_result, "0123456789ABCDEFGHIJKLMNOPQRSTUV-"));
static_assert(is_table_of(_dv_type_tbl_distance, "0123456789-"));

static_assert(has_diagonal(_dv_type_tbl_conv, "......................."));
static_assert(has_diagonal(_dv_type_tbl_cmp, "..........-----.-......"));
static_assert(has_diagonal(_dv_type_tbl_compat, "ooooooooooooooooooooooo"));
static_assert(has_diagonal(_dv_type_tbl_conv_psm, "................#...........#####"));
static_assert(has_diagonal(_dv_type_tbl_compat_psm, "ooooooooooooooooooooooooooooooooo"));
static_assert(has_diagonal(_dv_type_tbl_cmp_result, "0123456789AB-D-F-HIJKLMNOPQR-TU--"));
static_assert(has_diagonal(_dv_type_tbl_distance, "-0000000000000000-0000000000-----"));

static_assert(is_defined_both_ways(_dv_type_tbl_compat));
static_assert(is_defined_both_ways(_dv_type_tbl_cmp_result));
