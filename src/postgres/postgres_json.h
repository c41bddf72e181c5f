// Values as JSON.

#ifndef DV_POSTGRES_JSON_H
#define DV_POSTGRES_JSON_H

#include "postgres_value.h"

namespace dv::impl {

// What dv_json gives, as the server's types; TIMESTAMP WITH LOCAL TIME ZONE in UTC.
Datum postgres_to_json(sql_kind kind, FunctionCallInfo fcinfo);   // value
Datum postgres_to_jsonb(sql_kind kind, FunctionCallInfo fcinfo);  // value

}  // namespace dv::impl

#endif  // DV_POSTGRES_JSON_H
