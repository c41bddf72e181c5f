// The table of SQLSTATEs: ranges of codes that are of one kind, in the order of the codes.

#include "postgres_sqlstate.h"

#include "dvtypes/base.h"
#include "postgres_api.h"

namespace {

struct range {
    int last, first;  // codes are negative
    int sqlstate;
};

constexpr range _ranges[] = {
    {-11035, -11035, ERRCODE_INVALID_PARAMETER_VALUE},             // no language
    {-5123, -5123, ERRCODE_INVALID_PARAMETER_VALUE},               // no Arrow array
    {-5122, -5122, ERRCODE_OUT_OF_MEMORY},                         // a total without memory
    {-5121, -5120, ERRCODE_INVALID_BINARY_REPRESENTATION},         // no bytes of a total, no offsets
    {-5114, -5114, ERRCODE_DATETIME_FIELD_OVERFLOW},               // a field out of range
    {-5113, -5113, ERRCODE_INVALID_DATETIME_FORMAT},               // a text that is no such field
    {-5112, -5112, ERRCODE_INVALID_PARAMETER_VALUE},               // a model with a field twice
    {-5111, -5111, ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE},            // too large for NUMBER(p,s)
    {-5110, -5091, ERRCODE_INVALID_TIME_ZONE_DISPLACEMENT_VALUE},  // zones, and their local times
    {-5089, -5088, ERRCODE_INVALID_DATETIME_FORMAT},               // not exactly the model
    {-5087, -5087, ERRCODE_INTERVAL_FIELD_OVERFLOW},               // too many seconds for an interval
    {-5084, -5081, ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE},            // parts of a rowid
    {-5080, -5080, ERRCODE_INVALID_TEXT_REPRESENTATION},           // no rowid
    {-5075, -5075, ERRCODE_INVALID_PARAMETER_VALUE},               // no number model
    {-5074, -5074, ERRCODE_INVALID_TEXT_REPRESENTATION},           // no number
    {-5073, -5073, ERRCODE_INVALID_ARGUMENT_FOR_POWER_FUNCTION},   // outside the domain of a function
    {-5072, -5072, ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE},            // outside a machine type
    {-5070, -5070, ERRCODE_DIVISION_BY_ZERO},                      //
    {-5069, -5068, ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE},            // overflow, underflow
    {-5067, -5067, ERRCODE_STRING_DATA_RIGHT_TRUNCATION},          // a text that was shortened
    {-5065, -5065, ERRCODE_DIVISION_BY_ZERO},                      // of an interval
    {-5064, -5060, ERRCODE_INTERVAL_FIELD_OVERFLOW},               // fields of an interval
    {-5059, -5057, ERRCODE_INVALID_PARAMETER_VALUE},               // qualifiers, precisions
    {-5056, -5056, ERRCODE_INVALID_DATETIME_FORMAT},               // no interval
    {-5054, -5048, ERRCODE_INVALID_PARAMETER_VALUE},               // models
    {-5045, -5042, ERRCODE_INVALID_DATETIME_FORMAT},               // texts
    {-5041, -5011, ERRCODE_INVALID_PARAMETER_VALUE},               // models
    {-5010, -5009, ERRCODE_INVALID_DATETIME_FORMAT},               // too much, too little
    {-5008, -5006, ERRCODE_INVALID_PARAMETER_VALUE},               // precisions, lengths, fields
    {-5005, -5005, ERRCODE_DATETIME_FIELD_OVERFLOW},               // a month without that day
    {-3006, -3005, ERRCODE_INVALID_PARAMETER_VALUE},               // number models, buffers
    {DV_ERR_CHARSET_UNUSABLE, DV_ERR_CHARSET_UNUSABLE, ERRCODE_FEATURE_NOT_SUPPORTED},
    {DV_ERR_NO_MEMORY, DV_ERR_NO_MEMORY, ERRCODE_OUT_OF_MEMORY},
};

}  // namespace

int dv::impl::postgres_sqlstate(int code) {
    for (const range &each : _ranges) {
        if (code >= each.last && code <= each.first) return each.sqlstate;
    }
    return ERRCODE_DATA_EXCEPTION;
}
