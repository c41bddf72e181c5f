// What the machine that is compiled for can do beyond plain C++. Each use has a plain twin that gives the
// same bytes; -DDV_PORTABLE=ON builds the twins everywhere.

#ifndef DV_MACHINE_H
#define DV_MACHINE_H

#if defined(__SSE2__) && !defined(DV_PORTABLE)
#define DV_HAS_VECTOR_BYTES 1  // vectors of sixteen bytes (number/vector_bytes.h)
#else
#define DV_HAS_VECTOR_BYTES 0
#endif

#if defined(__x86_64__) && !defined(DV_PORTABLE)
#define DV_HAS_X86_64 1  // its division of 128 bits, its addition with carry
#else
#define DV_HAS_X86_64 0
#endif

#if __LDBL_MANT_DIG__ == 64 && !defined(DV_PORTABLE)
#define DV_HAS_EXTENDED_FLOAT 1  // a long double of 64 significant bits
#else
#define DV_HAS_EXTENDED_FLOAT 0
#endif

#endif  // DV_MACHINE_H
