// Linguistic sorts.
//
//   sort    := ["X"] name ["_" ("CI" | "AI")]
//   name    := "BINARY" | "EBCDIC" | "GERMAN" | "FRENCH" | "DUTCH"
//
// The suffix is the strength of the collation; the "X" goes with sorts that have a collator's locale. Letter
// case does not matter, nor does white space around the name and the suffix.

#include <iterator>

#include "../error.h"
#include "nls_setting.h"

using namespace dv::impl;

constexpr dv_nls_sort_info_t _nls_sort_info[DV_NLS_SORT_MAX] = {
    {"--", 0}, {"--", 0}, {"de", 1}, {"fr", 1}, {"nl", 1},
};

namespace {

constexpr const char *_sort_names[] = {"BINARY", "EBCDIC", "GERMAN", "FRENCH", "DUTCH"};
static_assert(std::size(_sort_names) == DV_NLS_SORT_MAX);

constexpr const char *_strength_suffixes[] = {"AI", "CI"};  // by dv_nls_strength_e
static_assert(std::size(_strength_suffixes) == DV_NLS_STRENGTH_TERTIARY);

}  // namespace

bool dv::impl::parse_sort(std::string_view text, dv_nls_sort_ctx_t &ctx) {
    const auto underscores = std::count(text.begin(), text.end(), '_');
    ctx.extended = !text.empty() && to_upper(text[0]) == 'X' ? 1 : 0;
    text.remove_prefix(ctx.extended);
    if (underscores > 1 || text.size() > DV_NLS_TEXT_MAX) return false;

    const two_pieces_t pieces = split(text, '_');
    const int sort = find_name(_sort_names, pieces.first);
    if (sort < 0) return false;
    ctx.sort = sort;
    ctx.strength =
        pieces.has_second ? find_name(_strength_suffixes, pieces.second) : DV_NLS_STRENGTH_TERTIARY;
    return ctx.strength >= 0 && (ctx.extended == 0 || _nls_sort_info[sort].extendable != 0);
}

extern "C" bool dv_nls_sort_parse(const char *str, dv_nls_sort_ctx_t *ctx) {
    if (!DV_ASSERT(str != NULL) || !DV_ASSERT(ctx != NULL)) return false;
    constexpr size_t enough = DV_NLS_TEXT_MAX + 2;  // an X, the longest sort, and one byte too many
    return parse_sort(bounded_text(str, enough), *ctx);
}
