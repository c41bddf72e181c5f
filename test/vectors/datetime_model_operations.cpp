// Datetime models: compiled, written, read.
//
// A model is given as SETTING "MODEL". The setting is a language and a character set, AMERICAN.UTF8, a blank
// in the language's name written as "_".

#include <cstring>
#include <string>

#include "datetime_model.h"

using namespace dv::test;

namespace {

constexpr int _text_size = 1024;

// The text that write(buffer, size) gives, and its status. A size may stand at the line's end.
template <typename Write>
void put_written_(vector_call &call, Write write) {
    const auto size = static_cast<size_t>(call.integer_or(_text_size));
    auto *const text = static_cast<char *>(call.memory(size + 1));
    std::memset(text, 0x5A, size + 1);
    long status = 0;
    if (!call.run([&] { status = write(text, static_cast<int>(size)); })) return;
    if (text[size] != 0x5A) call.fail("written beyond the buffer");
    const size_t length = strnlen(text, size);
    call.put_text({text, length});
    call.put(status);
    if (length == size && size != 0) call.put_word("unended");
}

template <typename Record>
Record *record_(vector_call &call) {
    return vector_bind::read_record<Record>(call);
}

void write_date_(vector_call &call) {
    const vector_model model(call, DV_TYPE_DATE, /*is_reading=*/false);
    if (!model) return;
    const dv_date_t *const date = call.date();
    put_written_(call, [&](char *text, int size) { return dv_date_to_str(date, text, size, model); });
}

template <auto Write, typename Record, int Type>
void write_(vector_call &call) {
    const vector_model model(call, Type, /*is_reading=*/false);
    if (!model) return;
    const Record *const value = record_<Record>(call);
    const auto precision = static_cast<int>(call.integer());
    put_written_(call, [&](char *text, int size) { return Write(value, text, size, model, precision); });
}

void write_local_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_LTZ, /*is_reading=*/false);
    if (!model) return;
    const dv_ts_ltz_t *const value = call.local_timestamp();
    const auto precision = static_cast<int>(call.integer());
    const timezone_t *const zone = call.zone();
    put_written_(call, [&](char *text, int size) {
        return dv_ts_ltz_to_str(value, text, size, model, precision, zone);
    });
}

void read_date_(vector_call &call) {
    const vector_model model(call, DV_TYPE_DATE, /*is_reading=*/true);
    if (!model) return;
    const vector_text text = call.text();
    dv_date_t date{};
    call.run([&] { dv_date_from_str(&date, text.data, text.size, model); });
    call.put_bytes(&date, sizeof date);
}

template <auto Read, typename Record, int Type>
void read_(vector_call &call) {
    const vector_model model(call, Type, /*is_reading=*/true);
    if (!model) return;
    const vector_text text = call.text();
    const auto precision = static_cast<int>(call.integer());
    Record value{};
    call.run([&] { Read(&value, text.data, text.size, model, precision); });
    call.put_bytes(&value, sizeof value);
}

// Model, text, precision, zone of the session; of a local value the zone comes back too.
template <auto Read, typename Record, int Type>
void read_in_zone_(vector_call &call) {
    const vector_model model(call, Type, /*is_reading=*/true);
    if (!model) return;
    const vector_text text = call.text();
    const auto precision = static_cast<int>(call.integer());
    timezone_t *const zone = call.zone();
    Record value{};
    call.run([&] { Read(&value, text.data, text.size, model, precision, zone); });
    call.put_bytes(&value, sizeof value);
    if (std::is_same_v<Record, dv_ts_ltz_t> && zone != nullptr) call.put_bytes(zone, sizeof *zone);
}

// Type, whether for reading, model: the predicted length at precision 6, and each element as
// id:case:suffix:type:precision:width:fill:exact:punctuation-follows, with its text.
void compile_(vector_call &call) {
    const auto type = static_cast<int>(call.integer()), is_reading = static_cast<int>(call.integer());
    const vector_model model(call, type, is_reading != 0);
    if (!model) return;
    call.put(dt_fmt_get_predicted_str_len(model, 6));
    for (int i = 0; i < model.compiled.token_cnt; ++i) {
        const dt_fmt_token_info_t &element = model.compiled.token_infos[i];
        const int fields[] = {element.id,           element.case_type,     element.sfx_type,
                              element.type,         element.fprec,         element.token_len,
                              element.is_fill_mode, element.is_exact_mode, element.next_token_is_punc};
        std::string text;
        for (const int field : fields) text += ':' + std::to_string(field);
        call.put_word(text.substr(1));
        if (element.token != nullptr) call.put_text({element.token, static_cast<size_t>(element.token_len)});
    }
}

// The flattened form with its addresses counted from its beginning. A size may stand at the line's end.
void serialise_(vector_call &call) {
    const auto type = static_cast<int>(call.integer()), is_reading = static_cast<int>(call.integer());
    const vector_model model(call, type, is_reading != 0);
    if (!model) return;
    const auto size = static_cast<size_t>(dt_fmt_ctx_get_serialize_size(model));
    auto *const block = static_cast<char *>(call.memory(size));
    const auto room = static_cast<int>(call.integer_or(static_cast<int64_t>(size)));
    if (!call.run([&] { dt_fmt_ctx_serialize(model, block, room); }) || room < static_cast<int>(size)) return;
    const auto make_relative = [&](size_t at) {
        uint64_t address;
        std::memcpy(&address, block + at, sizeof address);
        if (address != 0) address -= reinterpret_cast<uintptr_t>(block);
        std::memcpy(block + at, &address, sizeof address);
    };
    make_relative(8);
    for (int i = 0; i < model.compiled.token_cnt; ++i) make_relative(40 + 40 * static_cast<size_t>(i) + 24);
    call.put_bytes(block, size);
}

// Forms with the model as text: a value, a model, for all but DATE a precision, for a local timestamp the
// zone.
template <auto Write, typename Record, typename... More>
void write_once_(vector_call &call) {
    const Record *const value = record_<Record>(call);
    const vector_text model = call.text();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    put_written_(call, [&](char *text, int size) {
        const auto write = [&](auto... rest) {
            return Write(value, text, size, model.data, model.size, rest...);
        };
        return std::apply(write, more);
    });
}

// The present.
void write_current_date_(vector_call &call) {
    const vector_model model(call, DV_TYPE_DATE, /*is_reading=*/false);
    put_written_(call, [&](char *text, int size) { return dv_date_current_str(text, size, model), 0; });
}

void write_current_date_once_(vector_call &call) {
    const vector_text model = call.text();
    put_written_(call, [&](char *text, int size) {
        return dv_date_current_str_DEPRECATED(text, size, model.data, model.size), 0;
    });
}

void write_current_timestamp_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TIMESTAMP, /*is_reading=*/false);
    put_written_(call, [&](char *text, int size) { return dv_timestamp_current_str(text, size, model), 0; });
}

void write_current_zoned_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/false);
    const timezone_t *const zone = call.zone();
    put_written_(call,
                 [&](char *text, int size) { return dv_ts_tz_current_str(text, size, model, zone), 0; });
}

// Text, for timestamps a precision and for zoned ones the zone of the session, then the DATE that stands for
// the present.
template <auto Read, typename Record, int Type, typename... More>
void read_as_of_(vector_call &call) {
    const vector_model model(call, Type, /*is_reading=*/true);
    if (!model) return;
    const vector_text text = call.text();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    const dv_date_t *const as_of = call.date();
    Record value{};
    call.run([&] {
        std::apply([&](auto... rest) { Read(&value, text.data, text.size, model, rest..., as_of); }, more);
    });
    call.put_bytes(&value, sizeof value);
}

constexpr vector_operation _operations[] = {
    {"dt_fmt_ctx_set", compile_},
    {"dt_fmt_ctx_serialize", serialise_},
    {"dv_date_to_str", write_date_},
    {"dv_date_to_str_DEPRECATED", write_once_<dv_date_to_str_DEPRECATED, dv_date_t>},
    {"dv_time_to_str_DEPRECATED", write_once_<dv_time_to_str_DEPRECATED, dv_time_t, int>},
    {"dv_timestamp_to_str_DEPRECATED", write_once_<dv_timestamp_to_str_DEPRECATED, dv_timestamp_t, int>},
    {"dv_ts_tz_to_str_DEPRECATED", write_once_<dv_ts_tz_to_str_DEPRECATED, dv_ts_tz_t, int>},
    {"dv_ts_ltz_to_str_DEPRECATED",
     write_once_<dv_ts_ltz_to_str_DEPRECATED, dv_ts_ltz_t, int, const timezone_t *>},
    {"dv_date_current_str", write_current_date_},
    {"dv_date_current_str_DEPRECATED", write_current_date_once_},
    {"dv_timestamp_current_str", write_current_timestamp_},
    {"dv_ts_tz_current_str", write_current_zoned_},
    {"dv_date_from_str_as_of", read_as_of_<dv_date_from_str_as_of, dv_date_t, DV_TYPE_DATE>},
    {"dv_timestamp_from_str_as_of",
     read_as_of_<dv_timestamp_from_str_as_of, dv_timestamp_t, DV_TYPE_TIMESTAMP, int>},
    {"dv_ts_tz_from_str_as_of",
     read_as_of_<dv_ts_tz_from_str_as_of, dv_ts_tz_t, DV_TYPE_TS_TZ, int, const timezone_t *>},
    {"dv_time_to_str", write_<dv_time_to_str, dv_time_t, DV_TYPE_TIME>},
    {"dv_timestamp_to_str", write_<dv_timestamp_to_str, dv_timestamp_t, DV_TYPE_TIMESTAMP>},
    {"dv_ts_tz_to_str", write_<dv_ts_tz_to_str, dv_ts_tz_t, DV_TYPE_TS_TZ>},
    {"dv_ts_ltz_to_str", write_local_},
    {"dv_date_from_str", read_date_},
    {"dv_date_from_str_DEPRECATED", into<dv_date_from_str_DEPRECATED>},
    {"dv_time_from_str", read_<dv_time_from_str, dv_time_t, DV_TYPE_TIME>},
    {"dv_time_from_str_DEPRECATED", into<dv_time_from_str_DEPRECATED>},
    {"dv_timestamp_from_str", read_<dv_timestamp_from_str, dv_timestamp_t, DV_TYPE_TIMESTAMP>},
    {"dv_timestamp_from_str_DEPRECATED", into<dv_timestamp_from_str_DEPRECATED>},
    {"dv_ts_tz_from_str", read_in_zone_<dv_ts_tz_from_str, dv_ts_tz_t, DV_TYPE_TS_TZ>},
    {"dv_ts_tz_from_str_DEPRECATED", into<dv_ts_tz_from_str_DEPRECATED>},
    {"dv_ts_ltz_from_str", read_in_zone_<dv_ts_ltz_from_str, dv_ts_ltz_t, DV_TYPE_TS_LTZ>},
    {"dv_ts_ltz_from_str_DEPRECATED", into<dv_ts_ltz_from_str_DEPRECATED>},
    {"dv_date_get_length", in_place<dv_date_get_length>},
    {"dv_time_get_length", in_place<dv_time_get_length>},
    {"dv_timestamp_get_length", in_place<dv_timestamp_get_length>},
    {"dv_ts_tz_get_length", in_place<dv_ts_tz_get_length>},
    {"dv_date_check_format", in_place<dv_date_check_format>},
    {"dv_time_check_format", in_place<dv_time_check_format>},
    {"dv_timestamp_check_format", in_place<dv_timestamp_check_format>},
    {"dv_ts_tz_check_format", in_place<dv_ts_tz_check_format>},
};

}  // namespace

std::span<const vector_operation> dv::test::datetime_model_operations() { return _operations; }
