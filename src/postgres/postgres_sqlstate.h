// The SQLSTATE of each of the library's codes.

#ifndef DV_POSTGRES_SQLSTATE_H
#define DV_POSTGRES_SQLSTATE_H

namespace dv::impl {

// As the server's errcode() takes it; ERRCODE_DATA_EXCEPTION for a code that has none of its own.
int postgres_sqlstate(int code);

}  // namespace dv::impl

#endif  // DV_POSTGRES_SQLSTATE_H
