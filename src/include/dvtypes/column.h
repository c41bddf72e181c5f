// dvtypes/column.h: all operations on columns of values.
//
//   dvtypes/column_record.h         what a column is, failures by row, vector levels
//   dvtypes/column_number.h         NUMBER
//   dvtypes/column_compare.h        NUMBER: comparison into bitmaps, least and greatest value
//   dvtypes/column_decimal.h        decimals in 64 or 128 bits
//   dvtypes/column_arrow.h          columns of other libraries, by the Arrow C data interface
//   dvtypes/column_key.h            sort keys of every type, sorting by them
//   dvtypes/packed_key.h            keys of several columns for stores, written and read back
//   dvtypes/column_sum.h            NUMBER: exact sums, averages, by groups too
//   dvtypes/column_datetime.h       datetimes: fields, truncation, adding, differences
//   dvtypes/column_datetime_text.h  datetimes to and from text
//   dvtypes/column_epoch.h          datetimes to and from counts since 1970-01-01
//   dvtypes/column_zone.h           UTC and local time

#ifndef DVTYPES_COLUMN_H
#define DVTYPES_COLUMN_H

#include "dvtypes/column_arrow.h"
#include "dvtypes/column_compare.h"
#include "dvtypes/column_datetime.h"
#include "dvtypes/column_datetime_text.h"
#include "dvtypes/column_decimal.h"
#include "dvtypes/column_epoch.h"
#include "dvtypes/column_key.h"
#include "dvtypes/column_number.h"
#include "dvtypes/column_record.h"
#include "dvtypes/column_sum.h"
#include "dvtypes/column_zone.h"
#include "dvtypes/packed_key.h"

#endif  // DVTYPES_COLUMN_H
