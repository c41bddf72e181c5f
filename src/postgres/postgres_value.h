// Values between the server and the catalogue.

#ifndef DV_POSTGRES_VALUE_H
#define DV_POSTGRES_VALUE_H

#include "postgres_api.h"
#include "postgres_type.h"

namespace dv::impl {

// Memory of the context that is current when it is asked for. Raises DV_ERR_NO_MEMORY and nothing of the
// server's, so that it may be used under a recovery point.
extern allocator_t postgres_memory;

// The value of an argument, which is not NULL, of the kind that the function's declaration gives it; into its
// place, since a copy of what was just written costs as much as an addition. A TIMESTAMP WITH LOCAL TIME ZONE
// comes as one with a zone, in UTC.
void postgres_take(sql_value &value, Datum datum, sql_kind kind);

// What the server gets for a value of a kind, in memory of the current context.
Datum postgres_give(const sql_value &value);

// ---------------------------------------------------------------------------------------------------------
// Records
// ---------------------------------------------------------------------------------------------------------

// The bytes of a NUMBER as a record; behind fewer than eight digits are zeros. Raises ERRCODE_DATA_CORRUPTED
// where there are none or too many bytes.
void postgres_take_number(number_t &number, Datum datum);
Datum postgres_give_number(const number_t &number);

// A record of a fixed length that is passed by reference.
template <typename Record>
Record postgres_take_record(Datum datum) {
    Record record;
    memcpy(&record, DatumGetPointer(datum), sizeof record);
    return record;
}

template <typename Record>
Datum postgres_give_record(const Record &record) {
    void *bytes = palloc(sizeof record);
    memcpy(bytes, &record, sizeof record);
    return PointerGetDatum(bytes);
}

// A record of eight bytes, which is passed by value.
template <typename Record>
Record postgres_take_word(Datum datum) {
    static_assert(sizeof(Record) == sizeof datum);
    Record record;
    memcpy(&record, &datum, sizeof record);
    return record;
}

template <typename Record>
Datum postgres_give_word(const Record &record) {
    Datum datum;
    static_assert(sizeof record == sizeof datum);
    memcpy(&datum, &record, sizeof datum);
    return datum;
}

// ---------------------------------------------------------------------------------------------------------
// Texts, which the catalogue has in UTF-8
// ---------------------------------------------------------------------------------------------------------

// A text of the server's in UTF-8; as long as the argument where the server's encoding is that.
sql_text postgres_take_text(Datum datum);
sql_text postgres_take_cstring(const char *given);

Datum postgres_give_text(const sql_text &from);

// NUL ended, in the server's encoding.
char *postgres_give_cstring(const sql_text &from);

}  // namespace dv::impl

#endif  // DV_POSTGRES_VALUE_H
