// The exported tables of the interval types: the fields and separators that each qualifier has, and the texts
// that are written, as printf formats. The reader walks the rows of the first; the writer gives the
// characters of the second without printf.

#include "dvtypes/interval.h"

extern "C" {

// clang-format off
const dv_itv_fmt_t _itv_fmt[DV_ITV_QUALIFIER_MAX] = {
    {3, {DV_ITV_TOKEN_YYT, DV_ITV_TOKEN_PUNC_HYPHON, DV_ITV_TOKEN_MM}},
    {1, {DV_ITV_TOKEN_YYT}},
    {1, {DV_ITV_TOKEN_MMT}},
    {1, {DV_ITV_TOKEN_DDT}},
    {3, {DV_ITV_TOKEN_DDT, DV_ITV_TOKEN_PUNC_SPACE, DV_ITV_TOKEN_HH}},
    {5, {DV_ITV_TOKEN_DDT, DV_ITV_TOKEN_PUNC_SPACE, DV_ITV_TOKEN_HH, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_MI}},
    {9, {DV_ITV_TOKEN_DDT, DV_ITV_TOKEN_PUNC_SPACE, DV_ITV_TOKEN_HH, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_MI,
         DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_SS, DV_ITV_TOKEN_PUNC_END, DV_ITV_TOKEN_FF}},
    {1, {DV_ITV_TOKEN_HHT}},
    {3, {DV_ITV_TOKEN_HHT, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_MI}},
    {7, {DV_ITV_TOKEN_HHT, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_MI, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_SS,
         DV_ITV_TOKEN_PUNC_END, DV_ITV_TOKEN_FF}},
    {1, {DV_ITV_TOKEN_MIT}},
    {5, {DV_ITV_TOKEN_MIT, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_SS, DV_ITV_TOKEN_PUNC_END, DV_ITV_TOKEN_FF}},
    {3, {DV_ITV_TOKEN_SST, DV_ITV_TOKEN_PUNC_END, DV_ITV_TOKEN_FF}},
};

const char *const _itv_print_fmt[DV_ITV_PRINT_FMTS] = {
    "+%.*d-%.02d",
    "-%.*d-%.02d",
    "+%.*d %.02d:%.02d:%.02d",
    "-%.*d %.02d:%.02d:%.02d",
    "+%.*d %.02d:%.02d:%.02d.%.*d",
    "-%.*d %.02d:%.02d:%.02d.%.*d",
};
// clang-format on

}  // extern "C"
