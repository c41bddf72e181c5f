// NUMBER: arithmetic, machine numbers, records.

#include <cstring>

#include "number_support.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

// The first input is the rounding mode in which the call runs.
template <void (*Operation)(vector_call &)>
void with_mode_(vector_call &call) {
    const rounding_mode mode(static_cast<int>(call.integer()));
    Operation(call);
}

void compare_(vector_call &call) {
    const number_t *const x = call.record<number_t>(), *const y = call.record<number_t>();
    const int order = number_cmp(x, y);
    call.put((order > 0) - (order < 0));
}

void is_valid_(vector_call &call) { call.put(number_is_valid_ptr(call.record<number_t>())); }

void to_interchange_(vector_call &call) {
    const number_t *const x = call.record<number_t>();
    auto *const y = static_cast<uint8_t *>(call.memory(23));
    if (call.run([&] { number_to_oracle_format(x, y); }) && x != nullptr) call.put_bytes(y, y[0] + size_t{1});
}

void from_interchange_(vector_call &call) {
    const uint8_t *const y = call.bytes(23);
    number_t x{};
    if (call.run([&] { number_from_oracle_format(&x, y); })) call.put_bytes(&x, x.size + size_t{2});
}

void integer_square_root_(vector_call &call) {
    uint32_t limbs[16], root[8] = {};
    int count = 0;
    while (call.has_more() && count < 16) limbs[count++] = static_cast<uint32_t>(call.integer());
    call.run([&] { number_ui_sqrt(root, limbs, count); });
    for (int i = 0; i < (count + 1) / 2; ++i) call.put(root[i]);
    for (int i = 0; i < count; ++i) call.put(limbs[i]);
}

void constant_(vector_call &call) {
    const std::string_view name = call.word();
    const std::pair<std::string_view, const number_t *> constants[] = {
        {"_number_posinf", _number_posinf},   {"_number_max", _number_max},
        {"_number_poszero", _number_poszero}, {"_number_zero", _number_zero},
        {"_number_negzero", _number_negzero}, {"_number_min", _number_min},
        {"_number_neginf", _number_neginf},   {"_number_null", _number_null},
        {"_number_one", _number_one},         {"_number_e", _number_e},
        {"n1000000000", n1000000000}};
    for (const auto &[known, x] : constants) {
        if (known == name) call.put_bytes(x, x->size + size_t{1});
    }
}

void limit_(vector_call &call) {
    const auto &row = _number_limit[static_cast<size_t>(call.integer()) % NUMBER_LIMIT_ROWS];
    call.put_bytes(row.byte, row.byte[0] + size_t{1});
}

template <auto... Functions>
void add_with_mode_(vector_operations &all) {
    (all.add(name_of<Functions>(), with_mode_<in_place<Functions>>), ...);
}

}  // namespace

void dv::test::add_number_operations(vector_operations &all) {
    add_with_mode_<number_add, number_sub, number_add_with_mode, number_mul, number_sqr, number_div,
                   number_mod, number_rem, number_sqrt, number_pow, number_exp>(all);
    all.add_in_place<number_negate, number_abs, number_round_at_withmode, number_force_prec_scale,
                     number_check_prec_scale, number_range_check, number_to_int8, number_to_int16,
                     number_to_int32, number_to_int64, number_to_uint8, number_to_uint16, number_to_uint32,
                     number_to_uint64, number_to_float, number_to_double, number_to_long_double>();
    all.add_into<number_assign, number_from_int8, number_from_int16, number_from_int32, number_from_int64,
                 number_from_uint8, number_from_uint16, number_from_uint32, number_from_uint64,
                 number_from_float, number_from_double, number_from_double_shortest,
                 number_from_long_double>();
    all.add("number_cmp", compare_);
    all.add("number_is_valid_ptr", is_valid_);
    all.add("number_to_oracle_format", to_interchange_);
    all.add("number_from_oracle_format", from_interchange_);
    all.add("number_ui_sqrt", integer_square_root_);
    all.add("number_constant", constant_);
    all.add("_number_limit", limit_);
}
