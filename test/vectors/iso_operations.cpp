// Datetimes as ISO 8601 texts. Reading takes the text, writing the record and at times the buffer's size.

#include "dvtypes/iso.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

template <typename Record, int (*Write)(const Record *, char *, int)>
void written_(vector_call &call) {
    const Record *const record = call.record<Record>();
    char *const text = static_cast<char *>(call.memory(DV_ISO_TS_TZ_SIZE));
    const auto size = static_cast<int>(call.integer_or(DV_ISO_TS_TZ_SIZE));
    int length = 0;
    if (!call.run([&] { length = Write(record, text, size); })) return;
    call.put_text(text);
    call.put(length);
}

}  // namespace

void dv::test::add_iso_operations(vector_operations &all) {
    all.add_into<dv_date_from_iso, dv_time_from_iso, dv_timestamp_from_iso, dv_ts_tz_from_iso>();
    all.add("dv_date_to_iso", written_<dv_date_t, dv_date_to_iso>);
    all.add("dv_time_to_iso", written_<dv_time_t, dv_time_to_iso>);
    all.add("dv_timestamp_to_iso", written_<dv_timestamp_t, dv_timestamp_to_iso>);
    all.add("dv_ts_tz_to_iso", written_<dv_ts_tz_t, dv_ts_tz_to_iso>);
}
