// What every way of unwinding shares, beside dv_error_fill.

#ifndef DV_BASE_ERROR_MESSAGE_H
#define DV_BASE_ERROR_MESSAGE_H

#include "dvtypes/base.h"

namespace dv::impl {

// Ends the process for an error that nobody catches: message and place go to standard error.
[[noreturn]] void error_abort(const dv_error_t &error);

// Forgets the thread's recovery points: those that a host's own way of leaving has left behind.
void recovery_forget();

}  // namespace dv::impl

#endif  // DV_BASE_ERROR_MESSAGE_H
