// dv_number_variance_state: the exact sums of NUMBERs and of their squares, for variances and standard
// deviations.
//
//   byte 0     version, 1
//   byte 1     2
//   byte 2     how many bytes the first total has: two bytes, the most significant first
//   byte 4..   the totals of the terms and of their squares, each as number_total_pack writes it

#include "postgres_total_state.h"
#include "postgres_value.h"

using namespace dv::impl;

namespace {

constexpr int _head_size = 4;
constexpr uint8_t _head[2] = {1, 2};

struct variance_state {
    static constexpr int count = 2;

    static bool open_packed(opened_totals<2> &to, const uint8_t *bytes, int size) {
        if (size < _head_size || memcmp(bytes, _head, sizeof _head) != 0) return false;
        const int first = bytes[2] << 8 | bytes[3], second = size - _head_size - first;
        if (second < 0) return false;
        const uint8_t *const from[] = {bytes + _head_size, bytes + _head_size + first};
        const int sizes[] = {first, second};
        to.clear();
        for (int i = 0; i < count; ++i) {
            to.change(i, [&](number_total_t &total, int) {
                return number_total_unpack(&total, sizes[i], from[i]);
            });
        }
        return number_total_has_squares(&to.total[0], &to.total[1]) != 0;
    }

    // Of what no rows come to, as when rows are taken out that were not in, there are no bytes.
    static int write_packed(const opened_totals<2> &from, uint8_t *bytes) {
        if (number_total_has_squares(&from.total[0], &from.total[1]) == 0)
            ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("not the state of any rows")));
        uint8_t *const at = bytes + _head_size;
        const int64_t first = number_total_pack(&from.total[0], DV_TOTAL_PACKED_MAX, at);
        const int64_t second = number_total_pack(&from.total[1], DV_TOTAL_PACKED_MAX, at + first);
        memcpy(bytes, _head, sizeof _head);
        bytes[2] = static_cast<uint8_t>(first >> 8);
        bytes[3] = static_cast<uint8_t>(first);
        return static_cast<int>(_head_size + first + second);
    }
};

constexpr int _bytes_max = _head_size + 2 * DV_TOTAL_PACKED_MAX;
static_assert(_bytes_max <= POSTGRES_STATE_BYTES_MAX);
constexpr postgres_state_type _type = {"dv_number_variance_state", _bytes_max, read_state<variance_state>,
                                       write_state<variance_state>};

using rounding = void (*)(const number_total_t *, const number_total_t *, uint8_t, number_t *);

// NULL where there are too few rows.
template <rounding round, uint8_t is_sample>
Datum rounded_(FunctionCallInfo fcinfo) {
    opened_totals<2> opened;
    open_state<variance_state>(opened, PG_GETARG_DATUM(0));
    number_t result = *_number_zero;
    round(&opened.total[0], &opened.total[1], is_sample, &result);
    if (result.size == 0) PG_RETURN_NULL();
    return postgres_give_number(result);
}

using change = int64_t (*)(number_total_t *, const number_t *);
using product_change = int64_t (*)(number_total_t *, const number_t *, const number_t *);

template <change of_term, product_change of_square>
Datum changed_(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(1)) return same_state<variance_state>(fcinfo);
    number_t x;
    postgres_take_number(x, PG_GETARG_DATUM(1));
    return change_state<variance_state>(fcinfo, [&x](number_total_t &total, int i) {
        return i == 0 ? of_term(&total, &x) : of_square(&total, &x, &x);
    });
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_variance_state_in) { return postgres_state_in(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_out) { return postgres_state_out(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_recv) { return postgres_state_receive(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_send) { return postgres_state_send(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_eq) { return postgres_state_eq(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_ne) { return postgres_state_ne(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_hash) { return postgres_state_hash(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_hash_extended) {
    return postgres_state_hash_extended(_type, fcinfo);
}

DV_POSTGRES_FUNCTION(dvpg_number_variance_state_add) {
    return changed_<number_total_add, number_total_add_product>(fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_sub) {
    return changed_<number_total_sub, number_total_sub_product>(fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_merge) { return merge_states<variance_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_pack) { return pack_state<variance_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_count) { return count_of_state<variance_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_var_samp) {
    return rounded_<number_total_variance, 1>(fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_var_pop) {
    return rounded_<number_total_variance, 0>(fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_stddev_samp) {
    return rounded_<number_total_deviation, 1>(fcinfo);
}
DV_POSTGRES_FUNCTION(dvpg_number_variance_state_stddev_pop) {
    return rounded_<number_total_deviation, 0>(fcinfo);
}
