// dvtypes/column.h: all operations on columns of values.
//
//   dvtypes/column_record.h    what a column is, failures by row, vector levels
//   dvtypes/column_number.h    NUMBER
//   dvtypes/column_decimal.h   decimals in 64 or 128 bits
//   dvtypes/column_key.h       sort keys of every type, sorting by them
//   dvtypes/column_sum.h       NUMBER: exact sums, averages, by groups too

#ifndef DVTYPES_COLUMN_H
#define DVTYPES_COLUMN_H

#include "dvtypes/column_decimal.h"
#include "dvtypes/column_key.h"
#include "dvtypes/column_number.h"
#include "dvtypes/column_record.h"
#include "dvtypes/column_sum.h"

#endif  // DVTYPES_COLUMN_H
