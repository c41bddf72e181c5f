// The SQL function that reads the text of a value, by the name of its type.

#ifndef DV_TEST_SQL_READERS_H
#define DV_TEST_SQL_READERS_H

#include <map>
#include <string>

namespace dv::test {

inline const std::map<std::string, std::string> sql_readers = {
    {"NUMBER", "to_number"},
    {"DATE", "to_date"},
    {"TIME", "to_time"},
    {"TIMESTAMP", "to_timestamp"},
    {"TIMESTAMP WITH TIME ZONE", "to_timestamp_tz"},
    {"INTERVAL YEAR TO MONTH", "to_yminterval"},
    {"INTERVAL DAY TO SECOND", "to_dsinterval"},
    {"ROWID", "dv_rowid"}};

}  // namespace dv::test

#endif  // DV_TEST_SQL_READERS_H
