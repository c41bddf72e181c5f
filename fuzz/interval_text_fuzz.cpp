// Intervals from text and back. The input is a qualifier, the two precisions, and the text.
// Properties: reading gives a record or raises a code of reading; a record whose fields are in range is
// written whole, and what is written reads back as the same record.
//
// Out of range are what the reader leaves where the text does: seconds of a whole day, by a fraction that was
// rounded up, and fields of two signs, by hours and minutes that wrapped around.

#include <algorithm>
#include <cstring>
#include <memory>

#include "dvtypes/interval.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

constexpr int _codes[] = {0, -5009, -5010, -5056, -5059, -5060, -5061, -5062, -5063, -5064};
constexpr int _digits_max = 9;  // of a leading field

bool is_code_of_reading_(int code) {
    return std::find(std::begin(_codes), std::end(_codes), code) != std::end(_codes);
}

void read_ytm_(const char *text, int length, int type, int prec) {
    dv_itv_ytm_t itv, again;
    const int code = raise_of([&] { dv_itv_ytm_from_str(&itv, text, length, type, prec); });
    require(is_code_of_reading_(code), "a code of reading", code);
    if (code != 0) return;
    char written[DV_ITV_YTM_TEXT_SIZE];
    const auto status = dv_itv_ytm_to_str(&itv, written, /*prec=*/1, sizeof written);
    require(status == CONV_STATUS_WHOLE, "a whole text", status);
    const int code_again =
        raise_of([&] { dv_itv_ytm_from_str(&again, written, 0, DV_ITV_YEAR_TO_MONTH, _digits_max); });
    require(code_again == 0 && dv_itv_ytm_compare(&itv, &again) == 0, written, code_again);
}

bool is_in_range_(const dv_itv_dts_t &itv) {
    const auto [low, high] = std::minmax({dv_itv_dts_get_field(&itv, DT_FMT_UNIT_DAY),
                                          dv_itv_dts_get_field(&itv, DT_FMT_UNIT_SECOND),
                                          dv_itv_dts_get_field(&itv, DT_FMT_UNIT_FSEC)});
    const int seconds = dv_itv_dts_get_field(&itv, DT_FMT_UNIT_SECOND);
    const int nanoseconds = dv_itv_dts_get_field(&itv, DT_FMT_UNIT_FSEC);
    return (low >= 0 || high <= 0) && seconds > -86400 && seconds < 86400 && nanoseconds > -1'000'000'000;
}

void read_dts_(const char *text, int length, int type, int prec, int fprec) {
    dv_itv_dts_t itv, again;
    const int code = raise_of([&] { dv_itv_dts_from_str(&itv, text, length, type, prec, fprec); });
    require(is_code_of_reading_(code), "a code of reading", code);
    if (code != 0 || !is_in_range_(itv)) return;
    char written[DV_ITV_DTS_TEXT_SIZE];
    const auto status = dv_itv_dts_to_str(&itv, written, /*prec=*/1, /*fprec=*/9, sizeof written);
    require(status == CONV_STATUS_WHOLE, "a whole text", status);
    const int code_again = raise_of(
        [&] { dv_itv_dts_from_str(&again, written, 0, DV_ITV_DAY_TO_SECOND, _digits_max, /*fprec=*/9); });
    require(code_again == 0 && dv_itv_dts_compare(&itv, &again) == 0, written, code_again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr size_t head = 2;
    if (size < head) return 0;
    const int length = static_cast<int>(size - head);
    const std::unique_ptr<char[]> text(new char[size - head]);  // ends where it ends
    std::memcpy(text.get(), data + head, size - head);
    const char *const input = length == 0 ? "" : text.get();
    const int type = data[0] % 15 - 1, prec = data[1] % 12 - 1, fprec = data[1] / 12 % 12 - 1;
    read_ytm_(input, length, type, prec);
    read_dts_(input, length, type, prec, fprec);
    return 0;
}
