// Text and bytes of values at the server's door, and the modifiers of types.
//
// Text input and output are the catalogue's readers and writers without a model, which depend on no setting
// and read back. A modifier, such as that of number(10,2), is applied by the catalogue's casts.

#ifndef DV_POSTGRES_IO_H
#define DV_POSTGRES_IO_H

#include "postgres_value.h"

namespace dv::impl {

// The functions of a type, each with the server's arguments.
Datum postgres_in(sql_kind kind, FunctionCallInfo fcinfo);              // cstring, oid, modifier
Datum postgres_out(sql_kind kind, FunctionCallInfo fcinfo);             // value
Datum postgres_receive(sql_kind kind, FunctionCallInfo fcinfo);         // internal, oid, modifier
Datum postgres_send(sql_kind kind, FunctionCallInfo fcinfo);            // value
Datum postgres_modifier_in(sql_kind kind, FunctionCallInfo fcinfo);     // cstring[]
Datum postgres_modifier_out(sql_kind kind, FunctionCallInfo fcinfo);    // modifier
Datum postgres_apply_modifier(sql_kind kind, FunctionCallInfo fcinfo);  // value, modifier, is_explicit

}  // namespace dv::impl

#endif  // DV_POSTGRES_IO_H
