// Fields that a model for reading must not give twice, and elements that contradict each other.
//
// One row per pair, judged from the top. The rows look at the bits that elements set when they were read, and
// each element sets one bit alone. So SSSSS, SYYYY and HH24 may stand twice, and HH, HH12 and SSSSS may
// follow HH24 but not precede it: models in use depend on that.

#include "datetime_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr dt_fmt_unit_t _era = DT_FMT_UNIT_AD | DT_FMT_UNIT_BC;
constexpr dt_fmt_unit_t _meridiem = DT_FMT_UNIT_AM | DT_FMT_UNIT_PM;
constexpr dt_fmt_unit_t _zone_offset = DT_FMT_UNIT_TZH | DT_FMT_UNIT_TZM;
constexpr dt_fmt_unit_t _zone_name = DT_FMT_UNIT_TZR | DT_FMT_UNIT_TZD;

// clang-format off
constexpr fmt_conflict_t _conflicts[] = {
    // the new element's  given before                            error                     argument
    {DT_FMT_UNIT_YEAR,    DT_FMT_UNIT_YEAR | DT_FMT_UNIT_SYYYY,   DV_ERR_FIELD_TWICE,          "YEAR"},
    {DT_FMT_UNIT_SYYYY,   _era,                                   DV_ERR_SYYYY_AND_ERA,        nullptr},
    {DT_FMT_UNIT_SYYYY,   DT_FMT_UNIT_YEAR,                       DV_ERR_FIELD_TWICE,          "YEAR"},
    {DT_FMT_UNIT_MONTH,   DT_FMT_UNIT_MONTH,                      DV_ERR_FIELD_TWICE,          "MONTH"},
    {DT_FMT_UNIT_DAY,     DT_FMT_UNIT_DAY,                        DV_ERR_FIELD_TWICE,          "DAY"},
    {DT_FMT_UNIT_DDD,     DT_FMT_UNIT_DDD,                        DV_ERR_FIELD_TWICE,          "DDD"},
    {_era,                _era,                                   DV_ERR_FIELD_TWICE,          "AD/BC"},
    {_era,                DT_FMT_UNIT_SYYYY,                      DV_ERR_SYYYY_AND_ERA,        nullptr},
    {_meridiem,           _meridiem,                              DV_ERR_FIELD_TWICE,          "AM/PM"},
    {_meridiem,           DT_FMT_UNIT_HH24,                       DV_ERR_HH24_AND_MERIDIEM,    nullptr},
    {DT_FMT_UNIT_HOUR,    DT_FMT_UNIT_HOUR,                       DV_ERR_FIELD_TWICE,          "HOUR"},
    {DT_FMT_UNIT_HOUR,    DT_FMT_UNIT_SSSSS,                      DV_ERR_SSSSS_AND_HOUR,       nullptr},
    {DT_FMT_UNIT_HH24,    _meridiem,                              DV_ERR_HH24_AND_MERIDIEM,    nullptr},
    {DT_FMT_UNIT_HH24,    DT_FMT_UNIT_HOUR,                       DV_ERR_FIELD_TWICE,          "HOUR"},
    {DT_FMT_UNIT_HH24,    DT_FMT_UNIT_SSSSS,                      DV_ERR_SSSSS_AND_HOUR,       nullptr},
    {DT_FMT_UNIT_MINUTE,  DT_FMT_UNIT_MINUTE,                     DV_ERR_FIELD_TWICE,          "MINUTE"},
    {DT_FMT_UNIT_MINUTE,  DT_FMT_UNIT_SSSSS,                      DV_ERR_SSSSS_AND_MINUTE,     nullptr},
    {DT_FMT_UNIT_SECOND,  DT_FMT_UNIT_SECOND,                     DV_ERR_FIELD_TWICE,          "SECOND"},
    {DT_FMT_UNIT_SECOND,  DT_FMT_UNIT_SSSSS,                      DV_ERR_SSSSS_AND_SECOND,     nullptr},
    {DT_FMT_UNIT_SSSSS,   DT_FMT_UNIT_HOUR,                       DV_ERR_SSSSS_AND_HOUR,       nullptr},
    {DT_FMT_UNIT_SSSSS,   DT_FMT_UNIT_MINUTE,                     DV_ERR_SSSSS_AND_MINUTE,     nullptr},
    {DT_FMT_UNIT_SSSSS,   DT_FMT_UNIT_SECOND,                     DV_ERR_SSSSS_AND_SECOND,     nullptr},
    {DT_FMT_UNIT_FSEC,    DT_FMT_UNIT_FSEC,                       DV_ERR_FIELD_TWICE,          "fractions of a second"},
    {DT_FMT_UNIT_TZR,     DT_FMT_UNIT_TZR,                        DV_ERR_FIELD_TWICE,          "TZR"},
    {DT_FMT_UNIT_TZR,     _zone_offset,                           DV_ERR_ZONE_NAME_CONFLICT,   "TZR"},
    {DT_FMT_UNIT_TZD,     DT_FMT_UNIT_TZD,                        DV_ERR_FIELD_TWICE,          "TZD"},
    {DT_FMT_UNIT_TZD,     _zone_offset,                           DV_ERR_ZONE_NAME_CONFLICT,   "TZD"},
    {DT_FMT_UNIT_TZH,     DT_FMT_UNIT_TZH,                        DV_ERR_FIELD_TWICE,          "TZH"},
    {DT_FMT_UNIT_TZH,     _zone_name,                             DV_ERR_ZONE_OFFSET_CONFLICT, "TZH"},
    {DT_FMT_UNIT_TZM,     DT_FMT_UNIT_TZM,                        DV_ERR_FIELD_TWICE,          "TZM"},
    {DT_FMT_UNIT_TZM,     _zone_name,                             DV_ERR_ZONE_OFFSET_CONFLICT, "TZM"},
};
// clang-format on

// By number of the unit's bit: all that it conflicts with. Nearly every element passes with one look.
constexpr auto _given_in_conflict = [] {
    std::array<dt_fmt_unit_t, std::countr_zero(uint32_t{DT_FMT_UNIT_MAX})> given{};
    for (size_t bit = 0; bit < given.size(); ++bit) {
        for (const fmt_conflict_t &row : _conflicts) {
            if ((row.unit & 1 << bit) != 0) given[bit] |= row.given;
        }
    }
    return given;
}();

}  // namespace

namespace dv::impl {

const fmt_conflict_t *find_conflict(dt_fmt_unit_t unit, dt_fmt_unit_t given) {
    const auto bit = static_cast<size_t>(std::countr_zero(static_cast<uint32_t>(unit)));
    if (bit >= _given_in_conflict.size() || (_given_in_conflict[bit] & given) == 0) return nullptr;
    return std::find_if(std::begin(_conflicts), std::end(_conflicts), [=](const fmt_conflict_t &row) {
        return (row.unit & unit) != 0 && (row.given & given) != 0;
    });
}

}  // namespace dv::impl
