// dvtypes/timezone.h: time zone values.

#ifndef DVTYPES_TIMEZONE_H
#define DVTYPES_TIMEZONE_H

#include "dvtypes/base.h"
#include "dvtypes/datetime_record.h"

// A time zone: a region with the UTC offset in force at the value it belongs to, or a fixed UTC offset.
typedef struct timezone_s {
    uint8_t utc_hour;    // hours of the UTC offset + 100: 88..114 for -12..14
    uint8_t utc_min;     // 0..59; the sign is that of the hour
    uint8_t utc_sec;     // 0..59
    uint8_t zone_id[2];  // big-endian: 0..579 regions, 580 no zone given, 581 fixed offset
} timezone_t;

// ---- regions and their history

#ifdef __cplusplus
extern "C" {
#endif

// Number of a zone: 0..579 is a region, its index in region_tab_. Regions are numbered by their names in
// lower case; numbers and names never change. dvtypes/timezone_id.h names them all: TZ_ID_ASIA_SEOUL is 301.
typedef enum tz_id_e {
    TZ_ID_MAX = 580,      // count of regions
    TZ_ID_DEFAULT = 580,  // no zone given
    TZ_ID_OFFSET = 581    // a fixed UTC offset
} tz_id_e;
typedef int32_t tz_id_t;

enum {
    TZ_NAME_MAX = 64,         // characters of the longest region name
    TZ_NAME_TEXT_SIZE = 65,   // with its NUL
    TZ_ABBREV_TEXT_SIZE = 9,  // of the longest abbreviation, with its NUL; longer ones are cut
    TZ_SAMPLE_COUNT = 480,
    TZ_SAMPLE_NEWEST = 974937600,  // 2000-11-23 00:00:00 UTC, in seconds since 1970
    TZ_SAMPLE_STEP = 7862400       // 91 days in seconds
};

// An entry of a region's history: an instant, and the local time in force at it. All parts of the offset have
// its sign: -4:56:02 is -4, -56, -2.
typedef struct tz_info_s {
    int8_t utc_hour;
    int8_t utc_min;
    int8_t utc_sec;
    dv_date_t normal;  // the instant in UTC
    dv_date_t local;   // the same in local time: normal plus the whole offset, seconds included
    char abbrev[TZ_ABBREV_TEXT_SIZE];
} tz_info_t;

// A region. Its history is a pair of entries for each change of the offset, the daylight flag or the
// abbreviation up to the end of 2050 UTC, newest first: where the new period begins, and one second before,
// where the old one ends. A region without changes has one entry, with -9999-01-01 00:00:00 for both dates.
typedef struct tz_region_s {
    tz_id_t id;                          // index of the record
    char canon_name[TZ_NAME_TEXT_SIZE];  // "America/New_York"
    char lc_name[TZ_NAME_TEXT_SIZE];     // "america/new_york": the order of the table
    int32_t info_cnt;                    // 1, or even
    const tz_info_t *infos;              // regions with one history share it
} tz_region_t;

// A local time as the C library's struct tm has it: months 0..11, years since 1900, Sunday 0.
typedef struct tz_smpl_tm_s {
    int32_t tm_sec;
    int32_t tm_min;
    int32_t tm_hour;
    int32_t tm_mday;
    int32_t tm_mon;
    int32_t tm_year;
    int32_t tm_wday;
    int32_t tm_yday;
    int32_t tm_isdst;
    char abbrev[TZ_ABBREV_TEXT_SIZE];
} tz_smpl_tm_t;

// Local times of a region; sample j is that of TZ_SAMPLE_NEWEST - j * TZ_SAMPLE_STEP.
typedef struct tz_sample_s {
    tz_id_t id;
    tz_smpl_tm_t stms[TZ_SAMPLE_COUNT];
} tz_sample_t;

// Constant, indexed by zone number. The histories that region_tab_ refers to are symbols of the library too,
// named by region: africa_abidjan_infos_, america_port_au_prince_infos_, etc_gmt_plus_5_infos_.
extern DV_EXPORT_DATA const tz_region_t region_tab_[TZ_ID_MAX];
extern DV_EXPORT_DATA const tz_sample_t sample_tab_[TZ_ID_MAX];

// The region of a name, in any letter case (ASCII); Etc/UTC for NULL or "". A name that the tz database gave
// a region later finds that region under the name that it has here: Europe/Kyiv finds Europe/Kiev. NULL if
// there is none. Allocates nothing; any thread may call it.
DV_EXPORT const tz_region_t *zonetab_search_region(const char *region);

// The entry of a region's history that is in force at a time in UTC. Asserts "region != NULL", "utc != NULL"
// and then gives NULL. Any thread may call it.
DV_EXPORT const tz_info_t *zonetab_get_info(const tz_region_t *region, const dv_date_t *utc);

// The release of the tz database from which the tables were made: "2025b".
DV_EXPORT const char *zonetab_get_version(void);

#ifdef __cplusplus
}  // extern "C"
#endif

// ---- operations

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dv_date_s dv_date_t;  // dvtypes/datetime.h

// Permanent, as the numbers of zones are.
typedef enum tz_field_e {
    TZ_FLD_UTC_HOUR = 0,
    TZ_FLD_UTC_MIN = 1,
    TZ_FLD_UTC_SEC = 2,
    TZ_FLD_ZONE_ID = 3
} tz_field_e;
typedef int32_t tz_field_t;

// Functions work on the caller's records and constant tables, allocate nothing and may be called from any
// thread on records that no other thread is writing. A NULL pointer is reported by an assertion ("tz !=
// NULL", "local_tz != NULL", "sess_tz != NULL", "date != NULL", "buf != NULL"); the call then returns and
// touches nothing. A zone that is neither a region nor a fixed offset (number 580, or above 581) is reported
// by "zone_id < TZ_ID_MAX" where a history would be needed; the call then returns with the date untouched.
//
// A date is the DATE at the beginning of any datetime record; its fraction of a second is never looked at.

// Offset 0:00:00, no zone given.
DV_EXPORT void timezone_init(timezone_t *tz);

// What is wrong with the bytes of a zone that came from elsewhere, as an English clause; NULL when nothing
// is: it is a region or a fixed offset, with an offset of -12:59 to +14:00, which in a region may come to 15
// hours either way. That a region had the offset at some time is not looked at.
DV_EXPORT const char *timezone_get_fault(const timezone_t *tz);

// Stores one field.
// Raises  -5098  an hour outside -12..14     -5099  a minute outside 0..59     -5100  a second outside 0..59
//         -5006  no such field
// A zone number outside 0..581 asserts "value >= 0 && value <= TZ_ID_OFFSET"; its low 16 bits are stored.
DV_EXPORT void timezone_set_field(timezone_t *tz, tz_field_t field, int value);

// One field; the hour signed.
// Raises  -5006  no such field
DV_EXPORT int timezone_get_field(const timezone_t *tz, tz_field_t field);

// Reads a zone: blanks, then a UTC offset ("+09:00", "-5", "9:30") or the name of a region in any letter case
// ("Asia/Seoul"), then blanks. A region gets the offset 0:00:00; blanks alone are Etc/UTC.
//
//   str, str_len  the text, of 1 byte or more: 0 does not mean up to its NUL. Behind its leading blanks a
//                 name has at most 64 characters, trailing blanks included
//
// Raises  -5104  no text, a name that is too long or no region's     -5103  an offset with other characters
//         -5098  hours outside -12..14     -5099  minutes above 59, or outside -12:59..+14:00
DV_EXPORT void timezone_parse(timezone_t *tz, const char *str, int str_len);

// Reads a UTC offset: letters, which are skipped, blanks, a sign, hours, and ":" and minutes, with blanks
// between.
//
//   for_parser  1: "-" means west of Greenwich, and nothing may follow
//               0: as in the environment variable TZ: "-" means east, and what follows does not matter
//
// Returns 0 with the offset stored, or the code -5103, -5098 or -5099 with *tz as it was. Raises nothing.
DV_EXPORT int parse_offset_(timezone_t *tz, const char *str, int str_len, uchar for_parser);

// Moves a date by the zone's offset: to the east from UTC to local time, to the west back. The seconds of the
// offset take no part, and minutes have the sign of the hour, that of 0 being minus: an offset of +00:30 is
// applied as -00:30.
// Raises  -5114  as dv_date_add_field
DV_EXPORT void timezone_shift_to_east(const timezone_t *local_tz, dv_date_t *date);
DV_EXPORT void timezone_shift_to_west(const timezone_t *local_tz, dv_date_t *date);

// Turns local time into UTC, and stores the offset in force in *local_tz.
//
//   abbrev  abbreviation, NUL ended, that decides between the two meanings of a local time that clocks showed
//           twice, and must be the one in force at any other; NULL or "" takes the later meaning. It is not
//           looked at for a fixed offset, a region whose clocks never changed, or before their first change
//
// Raises  -5110  the region's clocks never showed this time     -5109  the abbreviation was not in force
//         -5114  as dv_date_add_field
DV_EXPORT void timezone_normalize(timezone_t *local_tz, dv_date_t *date, const char *abbrev);

// What a local time is on the clocks of a zone, as timezone_normalize takes it.
typedef struct tz_local_times_s {
    int32_t count;      // how often they showed it: 1; 0 where they were set forward over it, 2 where back
    timezone_t before;  // the zone with the offset before that change, and behind it: the same one where
    timezone_t after;   // count is 1
    dv_date_t begin;    // what was skipped or shown twice: from here on,
    dv_date_t end;      // in front of here; both are the local time where count is 1
} tz_local_times_t;

// Tells of a local time whether the clocks of a zone skipped it, showed it once or showed it twice. Its
// instants come by timezone_shift_to_west: of one that was shown twice the earlier by `before`, the later by
// `after`. In a gap `before` gives the instant that is as long after the change as the local time lies behind
// the gap's begin, `after` the one that is as long before the change as it lies in front of the gap's end.
// Asserts "tz != NULL", "local != NULL", "times != NULL".
//
// ```c
// const dv_date_t half_past_two = {120, 126, 3, 29, 2, 30, 0, 0};  // 2026-03-29
// timezone_t paris;
// tz_local_times_t times;
// timezone_parse(&paris, "Europe/Paris", 12);
// timezone_get_local_times(&paris, &half_past_two, &times);
// printf("%d: from %d to %d\n", (int)times.count, times.begin.hour, times.end.hour);  // 0: from 2 to 3
// ```
DV_EXPORT void timezone_get_local_times(const timezone_t *tz, const dv_date_t *local,
                                        tz_local_times_t *times);

// Turns UTC into the local time of sess_tz. *out_tz, unless NULL, gets that zone with the offset in force.
// Raises  -5114  as dv_date_add_field
DV_EXPORT void timezone_localize(const timezone_t *sess_tz, dv_date_t *date, timezone_t *out_tz);

// Stores in *local_tz the offset that its region has at a time in UTC. A fixed offset stays.
DV_EXPORT void timezone_adjust(timezone_t *local_tz, const dv_date_t *date);

// The zone as text, NUL ended: a fixed offset as printf writes its hour and minute with "%+.2d:%.2d"
// ("+09:00"), cut to buf_size - 1 characters, or a region's name, for which buf must hold TZ_NAME_TEXT_SIZE
// bytes. A zone that is neither gives "". Nothing is written when buf_size is below 1.
DV_EXPORT void timezone_get_zone_name(const timezone_t *local_tz, char *buf, int buf_size);

// The abbreviation in force in a region at a time in UTC, NUL ended, cut to buf_size - 1 characters; "" for a
// fixed offset.
DV_EXPORT void timezone_get_zone_abbr(const timezone_t *local_tz, const dv_date_t *date, char *buf,
                                      int buf_size);

// The region whose samples (sample_tab_) agree longest with the C library's local time, from the newest on;
// of several the one with the lowest number, of none Etc/UTC. Calls tzset, so that no other thread may change
// the process's zone meanwhile.
DV_EXPORT int32_t zonesmpl_search_default(void);

// The host's zone. Without TZ in the environment a region, with the offset 0:00:00. With it always a fixed
// offset: the one that the named region has now, or the one that TZ gives ("KST-9"), else 0:00:00.
// Raises  -5110  the present local time does not exist in the region that TZ names
DV_EXPORT void timezone_get_system_default(timezone_t *tz);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_TIMEZONE_H
