// dvtypes/iso.h: datetimes as texts of ISO 8601's shape, without a format model.
//
// What is written is the one text of a value: it depends on no setting, and read back it gives the same
// record.
//
//     DATE                       2024-02-29 13:05:00                 -0044-03-15 00:00:00
//     TIME                       13:05:00.500000000
//     TIMESTAMP                  2024-02-29 13:05:00.500000000
//     TIMESTAMP WITH TIME ZONE   2024-02-29 13:05:00.500000000 +09:00      (local time, and its zone)
//                                2024-10-27 02:30:00.000000000 Europe/Paris CEST
//                                2014-10-26 01:30:00.000000000 Europe/Moscow +04:00   (both meanings were
//                                MSK)
//
// What is read is such a text or one of ISO 8601, and nothing else: each field has all its digits, none is
// left out but from the end, and nothing stands in front or behind.
//
//     date   [+|-]YYYY-MM-DD          or compact [+|-]YYYYMMDD
//     time   HH[:MI[:SS[.f]]]         or compact HH[MI[SS[.f]]], where the date is compact too;
//                                     f is 1 to 9 digits
//     zone   Z, +hh, -hh, +hh:mm      or +hhmm, in both forms; or a blank and the name of a region in any
//                                     letter case, which a blank and the abbreviation or the offset
//                                     (+hh:mm) in force may follow
//
// Between date and time stands one blank or a T; T and Z may be small letters. The time may be left out, and
// is then midnight. In front of an offset one blank may stand; a text without a zone is of +00:00.
//
// ```c
// dv_timestamp_t ts;
// char text[DV_ISO_TIMESTAMP_SIZE];
// dv_timestamp_from_iso(&ts, "20240229T1305", 13);
// dv_timestamp_to_iso(&ts, text, sizeof text);
// puts(text);                                                      // 2024-02-29 13:05:00.000000000
// ```
//
// All functions may be called from any thread on records that no other thread is writing; a NULL pointer
// asserts ("date != NULL", "time != NULL", "ts != NULL", "ts_tz != NULL", "str != NULL", "buf != NULL") and
// nothing else happens; 0 is returned.

#ifndef DVTYPES_ISO_H
#define DVTYPES_ISO_H

#include "dvtypes/timestamp_tz.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {  // bytes of the longest text, with its NUL
    DV_ISO_DATE_SIZE = 21,
    DV_ISO_TIME_SIZE = 19,
    DV_ISO_TIMESTAMP_SIZE = 31,
    DV_ISO_TS_TZ_SIZE = DV_ISO_TIMESTAMP_SIZE + 1 + TZ_NAME_MAX + TZ_ABBREV_TEXT_SIZE
};

// Reads a value; the record is written only when the whole text has been accepted.
//
//   str, str_len  the text; a length below 1 is that of an empty one
//
// Raises  -5113  (field, the text from there on, the whole text) the text does not have the shape: of the
//                field "date", "time of day", "fractional second" or "time zone", or "text" for what is left
//                over, as the fraction of a DATE is
//         -5114  a field out of range; year 0 is one
// Days from 1582-10-05 to 1582-10-14 become 1582-10-15.
DV_EXPORT void dv_date_from_iso(dv_date_t *date, const char *str, int str_len);
DV_EXPORT void dv_time_from_iso(dv_time_t *time, const char *str, int str_len);
DV_EXPORT void dv_timestamp_from_iso(dv_timestamp_t *ts, const char *str, int str_len);

// As dv_timestamp_from_iso, of a local time and its zone. Also
// Raises  -5104  no region has the name     -5098  offset hours outside -12..14
//         -5099  offset minutes above 59, an offset outside -12:59..+14:00, or one from +00:01 to +00:59,
//                which no record can hold
//         -5110  the region's clocks never showed the time, or not at that offset
//         -5109  the abbreviation was not in force
DV_EXPORT void dv_ts_tz_from_iso(dv_ts_tz_t *ts_tz, const char *str, int str_len);

// Writes the text of a value and a NUL; returns its length without that. NULL, a record of zeros, gives the
// empty text; of a TIME that is midnight.
//
//   buf, buf_size  the sizes above are enough for any value
//
// Raises  -3005  the text and its NUL do not fit; nothing is written     -5114  it is no valid value
DV_EXPORT int dv_date_to_iso(const dv_date_t *date, char *buf, int buf_size);
DV_EXPORT int dv_time_to_iso(const dv_time_t *time, char *buf, int buf_size);
DV_EXPORT int dv_timestamp_to_iso(const dv_timestamp_t *ts, char *buf, int buf_size);

// As dv_timestamp_to_iso, and the zone: a fixed offset, or the region's name and the abbreviation in force,
// or the offset where the abbreviation does not tell it.
//
// Raises  -5104  a zone that is neither     -5114  a local time out of the range of DATE arithmetic, too
DV_EXPORT int dv_ts_tz_to_iso(const dv_ts_tz_t *ts_tz, char *buf, int buf_size);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_ISO_H
