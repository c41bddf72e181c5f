// What the language area offers to other areas beyond the public header: names in any buffer, and the widths
// to which names are padded.

#ifndef DV_NLS_INTERNAL_H
#define DV_NLS_INTERNAL_H

#include "dvtypes/nls.h"

namespace dv::impl {

// Bytes that no name in a character set exceeds: what the scratch buffer of a working context holds beside a
// NUL.
inline constexpr int NLS_NAME_BYTES_MAX = 63;

constexpr bool is_charset(dvstr_charset_t charset) { return charset >= 0 && charset < DVSTR_CHARSET_MAX; }

// The lists of a language in an index table, by letter case; all languages share those of rm_month_tab_.
// nullptr for a language that does not exist.
inline const nls_date_lang_val_t *const *nls_cases(const nls_date_lang_val_t *const *lists,
                                                   dv_nls_date_lang_t lang) {
    if (!dv_nls_date_lang_is_valid(lang)) return nullptr;
    return lists == rm_month_tab_ ? lists : lists + lang * NLS_DATE_LANG_CASES;
}

constexpr bool is_letter_case(int kase) { return kase >= 0 && kase < NLS_DATE_LANG_CASES; }

// Writes a name, or the first `len` bytes of it as it is stored (two a character), in a character set: at
// most dst_size bytes, whole characters, no NUL. Returns the bytes; 0 for a character set that does not
// exist. A look-up per character: no lock, no converter.
inline int nls_name_start(char *dst, int dst_size, const nls_date_lang_val_t &name, int len,
                          dvstr_charset_t charset) {
    if (!is_charset(charset)) return 0;
    const charset_info_t &info = _charset_info[charset];
    return info.from_ucs2(&info, name.val, len, dst, dst_size);
}
inline int nls_name(char *dst, int dst_size, const nls_date_lang_val_t &name, dvstr_charset_t charset) {
    return nls_name_start(dst, dst_size, name, name.len, charset);
}

// The columns of a language's names in bytes: the widths in the exported formats.
struct nls_pad_widths_t {
    int std_month, abb_month, std_day, abb_day;
};
extern const nls_pad_widths_t NLS_PAD_WIDTHS[DV_NLS_DATE_LANG_MAX];

}  // namespace dv::impl

#endif  // DV_NLS_INTERNAL_H
