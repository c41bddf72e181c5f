// dvtypes/dvtypes.hpp: the C++ face of the library, all of it. Header only; C++20.
//
//   number.hpp         dv::number, 12.50_number
//   number_sum.hpp     dv::number_sum: exact sums
//   datetime.hpp       dv::date, dv::time_of_day, dv::timestamp
//   interval.hpp       dv::interval_ym, dv::interval_ds
//   zoned.hpp          dv::zone, dv::timestamp_tz, dv::timestamp_ltz
//   rowid.hpp          dv::rowid
//   value.hpp          what all of them have: default, text both ways, order, hash, <<
//   model.hpp          dv::reader, dv::writer: datetimes under format models
//   number_model.hpp   dv::number_reader, dv::number_writer: numbers under format models
//   bytes.hpp          dv::to_bytes, dv::from_bytes, dv::append_key: to store and send, checked coming back
//   column.hpp         dv::column, dv::total, ...: many rows at once
//   key.hpp            dv::key_of: keys of several columns for stores, read back, ranges
//   chrono.hpp         dv::chrono_cast: to and from std::chrono
//   format.hpp         std::format
//   try.hpp            dv::try_parse, dv::try_add, ...: without exceptions
//   explain.hpp        dv::explain: what is wrong and where, with its values
//   result.hpp         dv::result, dv::attempt; codes as std::error_code
//   error.hpp          dv::error, dv::guarded: a raise as an exception
//   type.hpp           dv::type_...: the type catalogue
//
// Values are plain records: copying one copies its bytes. Every operation that can raise throws dv::error.
// Nothing allocates but what returns a std::string, and making a datetime model. Values may be read by any
// number of threads at once, and so may readers and writers.

#ifndef DVTYPES_DVTYPES_HPP
#define DVTYPES_DVTYPES_HPP

#include "dvtypes/bytes.hpp"
#include "dvtypes/chrono.hpp"
#include "dvtypes/column.hpp"
#include "dvtypes/datetime.hpp"
#include "dvtypes/error.hpp"
#include "dvtypes/explain.hpp"
#include "dvtypes/format.hpp"
#include "dvtypes/interval.hpp"
#include "dvtypes/key.hpp"
#include "dvtypes/model.hpp"
#include "dvtypes/number.hpp"
#include "dvtypes/number_model.hpp"
#include "dvtypes/number_sum.hpp"
#include "dvtypes/result.hpp"
#include "dvtypes/rowid.hpp"
#include "dvtypes/try.hpp"
#include "dvtypes/type.hpp"
#include "dvtypes/value.hpp"
#include "dvtypes/zoned.hpp"

#endif  // DVTYPES_DVTYPES_HPP
