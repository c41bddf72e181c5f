// The machine's vector instructions as functions.

#ifndef DV_INTRINSICS_H
#define DV_INTRINSICS_H

// GCC 12 takes operands that a mask of all ones ignores for uninitialised (its bug 105593).
#ifndef __clang__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <immintrin.h>

#ifndef __clang__
#pragma GCC diagnostic pop
#endif

#endif  // DV_INTRINSICS_H
