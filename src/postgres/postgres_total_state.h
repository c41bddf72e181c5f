// States of one or more exact totals (dvtypes/column_sum.h).
//
// A state has one of two forms, which its first byte tells apart. The packed form is a type's own, checked
// when it comes in, and the same on every machine: it is what every function gives outside of aggregates. The
// working form is what an aggregate changes row by row: the totals as they are in memory, and behind them the
// memory of those that need some. It travels within a parallel plan as its bytes, so that the totals'
// pointers count for nothing: they are set where the state is looked at.

#ifndef DV_POSTGRES_TOTAL_STATE_H
#define DV_POSTGRES_TOTAL_STATE_H

#include "dvtypes/column_sum.h"
#include "postgres_state.h"

namespace dv::impl {

inline constexpr uint8_t POSTGRES_WORKING_FORM = 0;  // the first byte; packed forms begin with a version
inline constexpr size_t LIMB_BYTES = sizeof(uint64_t);

// Totals with all the memory they can need.
template <int Count>
struct opened_totals {
    number_total_t total[Count];
    uint64_t memory[Count][DV_TOTAL_MEMORY_MAX / LIMB_BYTES];

    void clear() { memset(total, 0, sizeof total); }

    // Makes a call that changes a total and returns the memory that it needs for it, until it needs no more.
    template <typename Step>
    void change(int i, const Step &step) {
        while (const int64_t size = step(total[i], i)) number_total_attach(&total[i], size, memory[i]);
    }
};

template <int Count>
struct working_totals {
    char header[VARHDRSZ];
    uint8_t form;
    uint8_t filler[3];
    number_total_t total[Count];

    uint64_t *memory() { return reinterpret_cast<uint64_t *>(this + 1); }
    // Returns the bytes of the state.
    size_t set_pointers() {
        uint64_t *next = memory();
        for (number_total_t &each : total) {
            if (each.attached_room != 0) each.limbs.attached = next;
            next += each.attached_room;
        }
        return static_cast<size_t>(reinterpret_cast<char *>(next) - header);
    }
};

// ---------------------------------------------------------------------------------------------------------
// The working form
// ---------------------------------------------------------------------------------------------------------

// The state of an aggregate, to be changed where it is; NULL where it is none, or not of this form.
template <int Count>
working_totals<Count> *changeable_totals(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(0) || !postgres_in_aggregate(fcinfo)) return nullptr;
    auto *state = reinterpret_cast<working_totals<Count> *>(PG_GETARG_POINTER(0));
    if (!VARATT_IS_4B_U(state) || VARSIZE_4B(state) < sizeof *state || state->form != POSTGRES_WORKING_FORM)
        return nullptr;
    return state->set_pointers() == VARSIZE_4B(state) ? state : nullptr;
}

template <int Count>
Datum working_state_of(const opened_totals<Count> &from) {
    size_t limbs = 0;
    for (const number_total_t &each : from.total) limbs += each.attached_room;
    using working = working_totals<Count>;
    auto *state =
        reinterpret_cast<working *>(postgres_new_state(sizeof(working) - VARHDRSZ + limbs * LIMB_BYTES));
    state->form = POSTGRES_WORKING_FORM;
    memset(state->filler, 0, sizeof state->filler);
    memcpy(state->total, from.total, sizeof from.total);
    state->set_pointers();
    for (int i = 0; i < Count; ++i) {
        const size_t room = from.total[i].attached_room;
        if (room != 0) memcpy(state->total[i].limbs.attached, from.memory[i], room * LIMB_BYTES);
    }
    return PointerGetDatum(state);
}

// Of bytes at any address. False: they are none.
template <int Count>
bool open_working(opened_totals<Count> &to, const char *bytes, size_t size) {
    constexpr size_t head = offsetof(working_totals<Count>, total) - VARHDRSZ;
    if (size < head + sizeof to.total) return false;
    memcpy(to.total, bytes + head, sizeof to.total);
    size_t at = head + sizeof to.total;
    for (int i = 0; i < Count; ++i) {
        const size_t room = to.total[i].attached_room * LIMB_BYTES;
        if (room > sizeof to.memory[i] || room > size - at) return false;
        if (room != 0) to.total[i].limbs.attached = to.memory[i];
        memcpy(to.memory[i], bytes + at, room);
        at += room;
    }
    return at == size;
}

// ---------------------------------------------------------------------------------------------------------
// Both forms. A type has open_packed(totals, bytes, size), which gives false or raises where they are none,
// and write_packed(totals, bytes).
// ---------------------------------------------------------------------------------------------------------

template <typename Type>
void open_state(opened_totals<Type::count> &to, Datum state) {
    const varlena *from = PG_DETOAST_DATUM_PACKED(state);
    const char *bytes = VARDATA_ANY(from);
    const size_t size = VARSIZE_ANY_EXHDR(from);
    const bool is_working = size > 0 && static_cast<uint8_t>(bytes[0]) == POSTGRES_WORKING_FORM;
    const bool is_state =
        is_working ? open_working<Type::count>(to, bytes, size)
                   : Type::open_packed(to, reinterpret_cast<const uint8_t *>(bytes), static_cast<int>(size));
    if (!is_state) ereport(ERROR, (errcode(ERRCODE_DATA_CORRUPTED), errmsg("not the bytes of a state")));
}

template <typename Type>
varlena *packed_state_of(const opened_totals<Type::count> &from) {
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    const auto size = static_cast<size_t>(Type::write_packed(from, bytes));
    varlena *state = postgres_new_state(size);
    memcpy(VARDATA(state), bytes, size);
    return state;
}

template <typename Type>
varlena *read_state(const uint8_t *bytes, int size) {
    opened_totals<Type::count> opened;
    return Type::open_packed(opened, bytes, size) ? packed_state_of<Type>(opened) : nullptr;
}

template <typename Type>
int write_state(Datum state, uint8_t *bytes) {
    opened_totals<Type::count> opened;
    open_state<Type>(opened, state);
    return Type::write_packed(opened, bytes);
}

// The steps from total `done` on, on a copy of the state.
template <typename Type, typename Step>
[[gnu::noinline]] Datum change_copy(FunctionCallInfo fcinfo, int done, const Step &step) {
    opened_totals<Type::count> opened;
    if (PG_ARGISNULL(0)) {
        opened.clear();
    } else {
        open_state<Type>(opened, PG_GETARG_DATUM(0));
    }
    for (int i = done; i < Type::count; ++i) opened.change(i, step);
    if (postgres_in_aggregate(fcinfo)) return working_state_of<Type::count>(opened);
    return PointerGetDatum(packed_state_of<Type>(opened));
}

// Argument 0, or the empty state for NULL, changed by step(total, index) for each of its totals.
template <typename Type, typename Step>
Datum change_state(FunctionCallInfo fcinfo, const Step &step) {
    int done = 0;
    working_totals<Type::count> *state = changeable_totals<Type::count>(fcinfo);
    if (state != nullptr) {
        while (done < Type::count && step(state->total[done], done) == 0) ++done;
        if (done == Type::count) return PointerGetDatum(state);
    }
    return change_copy<Type>(fcinfo, done, step);
}

// Argument 0 as it is where argument 1, what is to be added, is NULL.
template <typename Type>
Datum same_state(FunctionCallInfo fcinfo) {
    if (!PG_ARGISNULL(0)) return PG_GETARG_DATUM(0);
    return change_copy<Type>(fcinfo, Type::count, [](number_total_t &, int) { return int64_t{0}; });
}

// Arguments 0 and 1, states, as one.
template <typename Type>
Datum merge_states(FunctionCallInfo fcinfo) {
    opened_totals<Type::count> other;
    open_state<Type>(other, PG_GETARG_DATUM(1));
    return change_state<Type>(fcinfo, [&other](number_total_t &total, int i) {
        return number_total_merge(&total, &other.total[i]);
    });
}

// Argument 0 in the packed form.
template <typename Type>
Datum pack_state(FunctionCallInfo fcinfo) {
    opened_totals<Type::count> opened;
    open_state<Type>(opened, PG_GETARG_DATUM(0));
    return PointerGetDatum(packed_state_of<Type>(opened));
}

// The count of argument 0, 0 for NULL.
template <typename Type>
Datum count_of_state(FunctionCallInfo fcinfo) {
    if (PG_ARGISNULL(0)) PG_RETURN_INT64(0);
    opened_totals<Type::count> opened;
    open_state<Type>(opened, PG_GETARG_DATUM(0));
    PG_RETURN_INT64(opened.total[0].count);
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_TOTAL_STATE_H
