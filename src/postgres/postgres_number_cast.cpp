// Casts of NUMBER from and to the server's own numbers.
//
// To integers it is rounded half away from zero, as the server's own casts of numeric do; to floating point
// to the nearest value; from floating point it is the shortest decimal that reads back.

#include "postgres_numeric.h"

extern "C" {
#include <common/shortest_dec.h>
#include <utils/jsonb.h>
}

using namespace dv::impl;

namespace {

[[noreturn, gnu::cold]] void fail_range_(const char *type) {
    ereport(ERROR, (errcode(ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE), errmsg("%s out of range", type)));
    pg_unreachable();
}

// ---------------------------------------------------------------------------------------------------------
// Integers
// ---------------------------------------------------------------------------------------------------------

Datum of_integer_(int64_t integer) {
    number_t number;
    number_from_int64(&number, integer);
    return postgres_give_number(number);
}

template <typename Integer>
Integer rounded_(FunctionCallInfo fcinfo, number_type_e type, const char *name) {
    number_t number;
    postgres_take_number(number, PG_GETARG_DATUM(0));
    number_round_to_places(&number, 0, NUMBER_RMODE_HALF_UP);
    if (number_range_check(&number, type) == 0) fail_range_(name);
    int64_t integer = 0;
    number_to_int64(&number, &integer);
    return static_cast<Integer>(integer);
}

// ---------------------------------------------------------------------------------------------------------
// Floating point
// ---------------------------------------------------------------------------------------------------------

void check_finite_(double real, const char *type) {
    if (std::isfinite(real)) return;
    ereport(ERROR,
            (errcode(ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE),
             errmsg("cannot convert %s of type %s to number", std::isnan(real) ? "NaN" : "infinity", type)));
}

// The nearest one: read back from the text, as the library's own conversion goes by fewer digits.
template <typename Real>
Real real_of_(FunctionCallInfo fcinfo, Real (*read)(const char *text, char **end), const char *type) {
    number_t number;
    postgres_take_number(number, PG_GETARG_DATUM(0));
    char text[NUMBER_SCIENTIFIC_TEXT_SIZE];
    number_to_str(&number, sizeof text, text, nullptr);
    const Real real = read(text, nullptr);
    if (std::isinf(real) || (real == 0 && number_cmp(&number, _number_zero) != 0)) fail_range_(type);
    return real;
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_from_int2) { return of_integer_(PG_GETARG_INT16(0)); }
DV_POSTGRES_FUNCTION(dvpg_number_from_int4) { return of_integer_(PG_GETARG_INT32(0)); }
DV_POSTGRES_FUNCTION(dvpg_number_from_int8) { return of_integer_(PG_GETARG_INT64(0)); }

DV_POSTGRES_FUNCTION(dvpg_number_to_int2) {
    PG_RETURN_INT16(rounded_<int16>(fcinfo, NUMBER_TYPE_INT16, "smallint"));
}
DV_POSTGRES_FUNCTION(dvpg_number_to_int4) {
    PG_RETURN_INT32(rounded_<int32>(fcinfo, NUMBER_TYPE_INT32, "integer"));
}
DV_POSTGRES_FUNCTION(dvpg_number_to_int8) {
    PG_RETURN_INT64(rounded_<int64>(fcinfo, NUMBER_TYPE_INT64, "bigint"));
}

DV_POSTGRES_FUNCTION(dvpg_number_from_float4) {
    const float real = PG_GETARG_FLOAT4(0);
    check_finite_(real, "real");
    char decimal[FLOAT_SHORTEST_DECIMAL_LEN];
    number_t number;
    number_from_str(&number, float_to_shortest_decimal_bufn(real, decimal), decimal, nullptr);
    return postgres_give_number(number);
}
DV_POSTGRES_FUNCTION(dvpg_number_from_float8) {
    const double real = PG_GETARG_FLOAT8(0);
    check_finite_(real, "double precision");
    number_t number;
    number_from_double_shortest(&number, real);
    return postgres_give_number(number);
}
DV_POSTGRES_FUNCTION(dvpg_number_to_float4) { PG_RETURN_FLOAT4(real_of_<float>(fcinfo, strtof, "real")); }
DV_POSTGRES_FUNCTION(dvpg_number_to_float8) {
    PG_RETURN_FLOAT8(real_of_<double>(fcinfo, strtod, "double precision"));
}

DV_POSTGRES_FUNCTION(dvpg_number_from_numeric) {
    number_t number;
    postgres_number_of_numeric(number, PG_GETARG_DATUM(0));
    return postgres_give_number(number);
}

DV_POSTGRES_FUNCTION(dvpg_number_to_numeric) {
    number_t number;
    postgres_take_number(number, PG_GETARG_DATUM(0));
    return postgres_numeric_of(number);
}

DV_POSTGRES_FUNCTION(dvpg_number_from_jsonb) {
    Jsonb *document = PG_GETARG_JSONB_P(0);
    JsonbValue scalar;
    if (!JsonbExtractScalar(&document->root, &scalar) || scalar.type != jbvNumeric) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE),
                        errmsg("cannot cast jsonb that is no number to type number")));
    }
    number_t number;
    postgres_number_of_numeric(number, NumericGetDatum(scalar.val.numeric));
    return postgres_give_number(number);
}
