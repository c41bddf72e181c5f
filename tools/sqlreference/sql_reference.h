// docs/sql-functions.md, as the catalogue of SQL functions makes it.

#ifndef DV_SQL_REFERENCE_H
#define DV_SQL_REFERENCE_H

#include <string>

#include "sql_catalogue.h"

namespace dv::impl {

std::string sql_reference();

}  // namespace dv::impl

#endif  // DV_SQL_REFERENCE_H
