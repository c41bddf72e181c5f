// Error records: made from a raise's arguments by the message catalogue. Shared by every way of unwinding.

#ifndef DV_BASE_ERROR_MESSAGE_H
#define DV_BASE_ERROR_MESSAGE_H

#include <cstdarg>

#include "dvtypes/base.h"

namespace dv::impl {

// Fills in the whole record. Takes from args as many values as the message of the code has placeholders, each
// by its type; texts that do not fit are cut, never inside a UTF-8 sequence. A NULL text reads "(null)".
void error_fill(dv_error_t &error, const char *src_file, int line, const char *function, int code,
                va_list args);

// Ends the process for an error that nobody catches: message and place go to standard error.
[[noreturn]] void error_abort(const dv_error_t &error);

}  // namespace dv::impl

#endif  // DV_BASE_ERROR_MESSAGE_H
