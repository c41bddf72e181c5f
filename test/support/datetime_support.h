// Shared pieces of the DATE and TIME tests: equality and printing of records, records from fields.

#ifndef DV_TEST_DATETIME_SUPPORT_H
#define DV_TEST_DATETIME_SUPPORT_H

#include "dvtypes/datetime.h"
#include "number_support.h"

// For GoogleTest: all eight bytes count, and records print as bytes and value.
bool operator==(const dv_date_t &x, const dv_date_t &y);
bool operator==(const dv_time_t &x, const dv_time_t &y);
void PrintTo(const dv_date_t &date, std::ostream *out);
void PrintTo(const dv_time_t &time, std::ostream *out);

namespace dv::test {

std::string describe(const dv_date_t &date);  // "78:7c:02:1d:0d:05:00:00 (2024-02-29 13:05:00)"

// Unchecked; fields that no byte holds are cut. Not made by the library.
dv_date_t make_date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

dv_date_t random_date(number_source &source);  // from day number 0 on, any time of day

}  // namespace dv::test

#endif  // DV_TEST_DATETIME_SUPPORT_H
