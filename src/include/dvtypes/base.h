// dvtypes/base.h: the platform interface of the data-type library, and what its default base library adds.
//
// The first half is the contract between the library and its host. libdvtypes.so imports these symbols and
// never binds them internally, so a host replaces any of them by linking or preloading its own.
// The second half is how C and C++ callers of the default base library (libdvbase.so) recover from a raise,
// and how they steer assertions. C11 and C++20.

#ifndef DVTYPES_BASE_H
#define DVTYPES_BASE_H

#if defined(__cplusplus) ? __cplusplus < 202002L : !defined(__STDC_VERSION__) || __STDC_VERSION__ < 201112L
#error "dvtypes: its headers need C++20 (-std=c++20) or C11 (-std=c11)"
#endif

#include <setjmp.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#include "dvtypes/error_code.h"

// Calls of an exported function read its address where the loader put it, instead of jumping through a stub
// that does so: two cycles less, of the ten or so that the smallest take.
#define DV_EXPORT_DATA __attribute__((visibility("default")))
#if __has_attribute(noplt)
#define DV_EXPORT __attribute__((visibility("default"), noplt))
#else
#define DV_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define DV_NORETURN [[noreturn]]
extern "C" {
#else
#define DV_NORETURN _Noreturn
#endif

typedef unsigned char uchar;

// ---------------------------------------------------------------------------------------------------------
// Errors
// ---------------------------------------------------------------------------------------------------------

// Raises an error; never returns. Control goes to the recovery point that the caller set up before it called
// into the library. Records and buffers stay as the failing call left them.
//
//   src_file   name of the source file alone ("number_add.cpp")
//   line       line in that file
//   func_name  function that found the fault
//   reserved1, reserved2  always 0
//   code       negative; one of those listed with each function, which error_code.h names
//   ...        the values that fill the message of that code, in its order: texts as const char *, NUL ended,
//              numbers as int. Always as many as the message takes.
//
// Default base library: unwinds to the thread's innermost recovery point (below). Without one it writes the
// message and the place to standard error and aborts. Safe from any thread.
DV_NORETURN DV_EXPORT void dv_err_and_jmp(const char *src_file, int line, const char *func_name,
                                          int reserved1, int reserved2, int code, ...);

// Reports an assertion that did not hold; returns. The library calls dv_thr_assert_cmd right after it and
// then goes on as if the condition had held.
//
//   cond_text  the condition as written in the source, such as "number_is_valid_ptr(x)"
//
// Default base library: hands the text to the reporter (dv_assert_set_reporter), or writes one line to
// standard error. Safe from any thread.
DV_EXPORT void dv_assert_msg(const char *cond_text, const char *src_file, int line);

// The calling thread's assertion action. Default base library: adds one to the thread's count and returns,
// or aborts after dv_assert_set_action(DV_ASSERT_ABORT).
DV_EXPORT void dv_thr_assert_cmd(void);

// ---------------------------------------------------------------------------------------------------------
// Environment and clock
// ---------------------------------------------------------------------------------------------------------

// The value of an environment variable, or NULL when it is not set. The text belongs to the environment.
DV_EXPORT char *dv_getenv(const char *name);

// The host's local time: year (such as 2024), month 1..12, day 1..31, hour 0..23, minute 0..59,
// second 0..59 (a leap second is given as 59), usec 0..999999. No pointer may be NULL.
//
// Default base library: the UTC offset is kept per thread for at most a minute and never past a change of
// the offset, so a call costs a clock read. A change of TZ is seen after the host's next tzset(); at once
// when the zones differ in abbreviations or standard offset, else within the minute.
DV_EXPORT void dv_getlocaltime(int *year, int *month, int *day, int *hour, int *minute, int *second,
                               int *usec);

// ---------------------------------------------------------------------------------------------------------
// Memory
// ---------------------------------------------------------------------------------------------------------

// An allocator: every entry gets the allocator itself and the caller's file and line. The first three return
// NULL when there is no memory; the caller then calls throw_, which raises an error and never returns.
typedef struct allocator_s allocator_t;
struct allocator_s {
    void *(*malloc)(allocator_t *self, size_t size, const char *src_file, int line);
    void *(*calloc)(allocator_t *self, size_t count, size_t size, const char *src_file, int line);
    void *(*realloc)(allocator_t *self, void *block, size_t size, const char *src_file, int line);
    void (*free)(allocator_t *self, void *block, const char *src_file, int line);
    void (*throw_)(allocator_t *self, const char *src_file, int line);
};

// Default base library: libc's heap; throw_ raises DV_ERR_NO_MEMORY.
extern DV_EXPORT_DATA allocator_t *_system_allocator;

// ---------------------------------------------------------------------------------------------------------
// Character sets
// ---------------------------------------------------------------------------------------------------------

typedef enum dvstr_charset_e {
    DVSTR_CHARSET_ASCII = 0,
    DVSTR_CHARSET_EUCKR = 1,
    DVSTR_CHARSET_MSWIN949 = 2,
    DVSTR_CHARSET_UTF8 = 3,
    DVSTR_CHARSET_SJIS = 4,
    DVSTR_CHARSET_EUCJP = 5,
    DVSTR_CHARSET_BIG5 = 6,
    DVSTR_CHARSET_GBK = 7,
    DVSTR_CHARSET_ISO8859_1 = 8,
    DVSTR_CHARSET_MSWIN1252 = 9,
    DVSTR_CHARSET_MSWIN1251 = 10,
    DVSTR_CHARSET_KOI8R = 11,
    DVSTR_CHARSET_MSWIN1258 = 12,
    DVSTR_CHARSET_MAX = 13
} dvstr_charset_e;

// A character set by number. An int, because records that hold one may hold anything.
typedef int32_t dvstr_charset_t;

typedef enum dvstr_case_e { DVSTR_CASE_LOWER = 0, DVSTR_CASE_UPPER = 1, DVSTR_CASE_INITCAP = 2 } dvstr_case_e;

// What a character set can do. In every set the bytes 00 to 7F are the ASCII characters. SJIS writes the yen
// sign U+00A5 and the overline U+203E as 5C and 7E, which read back as the ASCII characters. All entries are
// safe from any thread, never write past dst_size, never write a part of a character, write no NUL, and may
// not be given overlapping buffers (case conversion in place, src == dst, is allowed).
typedef struct charset_info_s charset_info_t;
struct charset_info_s {
    const char *name;  // upper case, such as "EUCKR"
    int max_char_len;  // bytes of the longest character

    // Big-endian UCS-2 code units (src_len bytes; an odd last byte is ignored) to this character set.
    // Returns the bytes written. A unit that has no character here becomes '?'.
    int (*from_ucs2)(const charset_info_t *cs, const uint8_t *src, int src_len, char *dst, int dst_size);

    // This character set to big-endian UCS-2. Returns the bytes written, an even number. A byte sequence that
    // is no character, or a character beyond U+FFFF, becomes '?'.
    int (*to_ucs2)(const charset_info_t *cs, const char *src, int src_len, uint8_t *dst, int dst_size);

    // Changes the case of a text. Returns the bytes written: the whole text, or as many whole characters as
    // dst_size holds. A character whose other case is longer, or is not in the set, stays as it is, so the
    // result is never longer than src_len. INITCAP: a letter after a letter or digit is made lower case, any
    // other letter upper case. Byte sequences that are no character are copied unchanged. Independent of the
    // C locale.
    //
    // Default base library: the simple case mappings of Unicode 14 for Latin (up to U+017F, Vietnamese,
    // Pinyin and what follows to U+0233, U+1E00 to U+1EFF), Greek without the accented forms from U+1F00 on,
    // Cyrillic up to U+052F, full-width Latin, roman numerals and circled letters. Other letters keep their
    // case: phonetic ones, digraphs such as U+01C4, Armenian, Georgian, Latin and Cyrillic of later blocks.
    int (*to_case)(const charset_info_t *cs, dvstr_case_e to, const char *src, int src_len, char *dst,
                   int dst_size);
};

extern DV_EXPORT_DATA const charset_info_t _charset_info[DVSTR_CHARSET_MAX];  // by dvstr_charset_e

// Can texts be converted to and from this character set? 0 for a number that is none, too.
//
// Default base library: ASCII and UTF8 always. The other eleven are tables of libc's iconv, whose modules
// some installations lack (Debian 12: /usr/lib/<machine>/gconv, in libc6). Without them ASCII characters are
// still converted; any other character raises DV_ERR_CHARSET_UNUSABLE in the three functions above, and so in
// every function that reads or writes names in the set. Raises DV_ERR_NO_MEMORY. Safe from any thread.
DV_EXPORT int dv_charset_is_usable(dvstr_charset_t set);

// ---------------------------------------------------------------------------------------------------------
// Recovery (default base library)
// ---------------------------------------------------------------------------------------------------------

enum { DV_ERROR_ARGS_MAX = 4, DV_ERROR_TEXT_MAX = 64, DV_ERROR_MESSAGE_MAX = 512 };

// A caught error. A plain record: copy it, keep it, raise it again.
typedef struct dv_error_s {
    int code;                          // negative (docs/error-codes.md)
    int line;                          // of the raise, in its file
    char file[DV_ERROR_TEXT_MAX];      // as given to dv_err_and_jmp, cut to fit; so are the others
    char function[DV_ERROR_TEXT_MAX];  // that found the fault
    int arg_count;                     // of args in use
    char args[DV_ERROR_ARGS_MAX][DV_ERROR_TEXT_MAX];  // the message arguments as text
    char message[DV_ERROR_MESSAGE_MAX];               // one English sentence, arguments filled in
} dv_error_t;

// Calls body(arg) and catches what it raises: returns 0 when body returned, else the code, with *error
// filled in. Works over any way of unwinding, and so is the form that code uses which must run over every
// base library; a thread may nest such calls to any depth. body must not leave any other way, and under the
// default base library no object with a destructor may be alive in a frame that is left.
//
// With error NULL only the code is kept and no message is made: under the default base library that is a
// third of the cost or less (docs/errors.md).
DV_EXPORT int dv_protect(void (*body)(void *arg), void *arg, dv_error_t *error);

// Raises a caught error again, with the same code, place, arguments and message. Never returns.
DV_NORETURN DV_EXPORT void dv_rethrow(const dv_error_t *error);

// The message of a code with its placeholders "{1}" to "{4}" not filled in, or NULL when the code is unknown.
// docs/error-codes.md has all of them, each with its cause and what to do.
DV_EXPORT const char *dv_error_text(int code);

// Fills in the whole of *error from what a raise is given: what a host's own dv_err_and_jmp needs to know
// what happened. Takes from args as many values as the message of the code has; texts that do not fit are
// cut, never inside a UTF-8 sequence, and a NULL text reads "(null)". An unknown code takes no value. Uses no
// recovery point.
DV_EXPORT void dv_error_fill(dv_error_t *error, const char *src_file, int line, const char *func_name,
                             int code, va_list args);

// The same for C, over _setjmp (the signal mask is not saved):
//
// ```c
// #include <dvtypes/number.h>
// number_t sum, value;
// DV_TRY {
//     number_from_str(&sum, 0, "1234.50", NULL);
//     number_from_str(&value, 0, "0.1.2", NULL);
//     number_add(&sum, &value);
// } DV_CATCH(error) {
//     printf("%d in %s\n", error->code, error->function);          // -5074 in number_from_str
// } DV_END_TRY;
// ```
//
// error is a const dv_error_t * that lives in the catch block. Both blocks may be left by return, goto, and a
// break or continue of the loop around them; longjmp out of a try block must not be used. Locals that the try
// block changes and that are read afterwards must be volatile. A raise in the catch block goes to the next
// outer recovery point. The whole is a block and no single statement: behind an if it wants braces.
typedef struct dv_recovery_s {
    jmp_buf env;
    struct dv_recovery_s *outer;
    dv_error_t error;
} dv_recovery_t;

// What DV_TRY is made of; not for direct use. The second takes the point away if no raise has done so.
DV_EXPORT void dv_recovery_push(dv_recovery_t *recovery);
DV_EXPORT void dv_recovery_pop(dv_recovery_t *recovery);

// clang-format off
#define DV_TRY                                                                            \
    {                                                                                     \
        _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wshadow\"")     \
        __attribute__((cleanup(dv_recovery_pop))) dv_recovery_t dv_recovery_here;         \
        _Pragma("GCC diagnostic pop")                                                     \
        dv_recovery_push(&dv_recovery_here);                                              \
        if (_setjmp(dv_recovery_here.env) == 0) {
#define DV_CATCH(caught)                                                                  \
        } else {                                                                          \
            const dv_error_t *const caught = &dv_recovery_here.error;                     \
            (void)caught;
#define DV_END_TRY                                                                        \
        }                                                                                 \
    }                                                                                     \
    (void)0
// clang-format on

// ---------------------------------------------------------------------------------------------------------
// Assertions (default base library)
// ---------------------------------------------------------------------------------------------------------

typedef enum dv_assert_action_e { DV_ASSERT_CONTINUE = 0, DV_ASSERT_ABORT = 1 } dv_assert_action_e;

// What a failed assertion does in the calling thread after it was reported; DV_ASSERT_CONTINUE at first.
DV_EXPORT void dv_assert_set_action(dv_assert_action_e action);

// How many assertions failed in the calling thread since it began.
DV_EXPORT unsigned long dv_assert_count(void);

// Sends the calling thread's assertion reports to a function; NULL goes back to standard error.
typedef void dv_assert_reporter_t(const char *cond_text, const char *src_file, int line);
DV_EXPORT void dv_assert_set_reporter(dv_assert_reporter_t *reporter);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_BASE_H
