// dv_number_state: the exact sum of NUMBERs and their count, for sum and avg. Its bytes are those of
// number_total_pack.

#include "postgres_total_state.h"
#include "postgres_value.h"

using namespace dv::impl;

namespace {

struct number_state {
    static constexpr int count = 1;

    static bool open_packed(opened_totals<1> &to, const uint8_t *bytes, int size) {
        to.clear();
        to.change(0, [=](number_total_t &total, int) { return number_total_unpack(&total, size, bytes); });
        return true;
    }
    static int write_packed(const opened_totals<1> &from, uint8_t *bytes) {
        return static_cast<int>(number_total_pack(&from.total[0], DV_TOTAL_PACKED_MAX, bytes));
    }
};

constexpr postgres_state_type _type = {"dv_number_state", DV_TOTAL_PACKED_MAX, read_state<number_state>,
                                       write_state<number_state>};

// NULL where the totals of no rows are rounded.
template <void (*round)(const number_total_t *, number_t *)>
Datum rounded_(FunctionCallInfo fcinfo) {
    opened_totals<1> opened;
    open_state<number_state>(opened, PG_GETARG_DATUM(0));
    number_t result = *_number_zero;
    round(&opened.total[0], &result);
    if (result.size == 0) PG_RETURN_NULL();
    return postgres_give_number(result);
}

template <int64_t (*change)(number_total_t *, const number_t *)>
Datum changed_(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(1)) return same_state<number_state>(fcinfo);
    number_t x;
    postgres_take_number(x, PG_GETARG_DATUM(1));
    return change_state<number_state>(fcinfo,
                                      [&x](number_total_t &total, int) { return change(&total, &x); });
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_state_in) { return postgres_state_in(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_out) { return postgres_state_out(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_recv) { return postgres_state_receive(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_send) { return postgres_state_send(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_eq) { return postgres_state_eq(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_ne) { return postgres_state_ne(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_hash) { return postgres_state_hash(_type, fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_hash_extended) { return postgres_state_hash_extended(_type, fcinfo); }

DV_POSTGRES_FUNCTION(dvpg_number_state_add) { return changed_<number_total_add>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_sub) { return changed_<number_total_sub>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_merge) { return merge_states<number_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_pack) { return pack_state<number_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_count) { return count_of_state<number_state>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_sum) { return rounded_<number_total_sum>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_number_state_avg) { return rounded_<number_total_average>(fcinfo); }
