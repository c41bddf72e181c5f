// Tables of the catalogue as functions that return sets.

#ifndef DV_POSTGRES_TABLE_H
#define DV_POSTGRES_TABLE_H

#include "postgres_value.h"

namespace dv::impl {

// The next row of the table at a place of the catalogue.
Datum postgres_next_row(int table, FunctionCallInfo fcinfo);

// Tells the planner how many rows a call with constant arguments has: the support function of a table.
Datum postgres_count_rows(int table, FunctionCallInfo fcinfo);

}  // namespace dv::impl

#endif  // DV_POSTGRES_TABLE_H
