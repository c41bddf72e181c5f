// Datetime models: compiled, written, read.

#include <bit>
#include <cstring>
#include <string>

#include "bytes.h"
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

// Model, value, then what the writer takes behind the model: a precision, the zone of the session.
template <typename R, typename Record, typename... More>
void write_(vector_call &call, R (*write)(const Record *, char *, int, const dt_fmt_ctx_t *, More...)) {
    const vector_model model(call, type_of<Record>, /*is_reading=*/false);
    if (!model) return;
    const Record *const value = call.record<Record>();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    put_written_(call, [&](char *text, int size) {
        return std::apply([&](auto... rest) { return write(value, text, size, model, rest...); }, more);
    });
}

// The same with the model as text, behind the value.
template <typename R, typename Record, typename... More>
void write_(vector_call &call, R (*write)(const Record *, char *, int, const char *, int, More...)) {
    const Record *const value = call.record<Record>();
    const vector_text model = call.text();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    put_written_(call, [&](char *text, int size) {
        return std::apply(
            [&](auto... rest) { return write(value, text, size, model.data, model.size, rest...); }, more);
    });
}

// Model, text, then what the reader takes behind the model: a precision, the zone of the session, the DATE
// that stands for the present. A zone that may be written comes back too.
template <typename Record, typename... More>
void read_(vector_call &call, void (*read)(Record *, const char *, int, const dt_fmt_ctx_t *, More...)) {
    const vector_model model(call, type_of<Record>, /*is_reading=*/true);
    if (!model) return;
    const vector_text text = call.text();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    Record value{};
    const bool has_returned = call.run(
        [&] { std::apply([&](auto... rest) { read(&value, text.data, text.size, model, rest...); }, more); });
    call.put_bytes(&value, sizeof value);
    std::apply([&](auto... rest) { (vector_bind::put_left(call, rest, has_returned), ...); }, more);
}

template <auto... Functions>
void add_writers_(vector_operations &all) {
    (all.add(name_of<Functions>(), [](vector_call &call) { write_(call, Functions); }), ...);
}

template <auto... Functions>
void add_readers_(vector_operations &all) {
    (all.add(name_of<Functions>(), [](vector_call &call) { read_(call, Functions); }), ...);
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

// Integers of a block, less where it begins if they are addresses, put in little-endian order.
template <typename Word>
void put_in_order_(char *block, std::initializer_list<size_t> places, uintptr_t begin = 0) {
    for (const size_t at : places) {
        Word word;
        std::memcpy(&word, block + at, sizeof word);
        if (word != 0) word -= static_cast<Word>(begin);
        if (std::endian::native == std::endian::big) word = dv::impl::swap_bytes(word);
        std::memcpy(block + at, &word, sizeof word);
    }
}

// The flattened form on a little-endian machine, its addresses counted from its beginning. A size may stand
// at the line's end.
void serialise_(vector_call &call) {
    const auto type = static_cast<int>(call.integer()), is_reading = static_cast<int>(call.integer());
    const vector_model model(call, type, is_reading != 0);
    if (!model) return;
    const auto size = static_cast<size_t>(dt_fmt_ctx_get_serialize_size(model));
    auto *const block = static_cast<char *>(call.memory(size));
    const auto room = static_cast<int>(call.integer_or(static_cast<int64_t>(size)));
    if (!call.run([&] { dt_fmt_ctx_serialize(model, block, room); }) || room < static_cast<int>(size)) return;
    put_in_order_<uint64_t>(block, {8}, reinterpret_cast<uintptr_t>(block));
    put_in_order_<uint32_t>(block, {0, 20, 24, 28, 32, 36});
    for (int i = 0; i < model.compiled.token_cnt; ++i) {
        char *const element = block + 40 + 40 * i;
        put_in_order_<uint64_t>(element, {24}, reinterpret_cast<uintptr_t>(block));
        put_in_order_<uint32_t>(element, {0, 4, 8, 16});
    }
    call.put_bytes(block, size);
}

// The present, of a type; in the zone of the session where it is zoned.
template <auto Write, int Type, typename... Zone>
void write_current_(vector_call &call) {
    const vector_model model(call, Type, /*is_reading=*/false);
    const std::tuple<Zone...> zone{vector_bind::read_more<Zone>(call)...};
    put_written_(call, [&](char *text, int size) {
        return std::apply([&](auto... rest) { Write(text, size, model, rest...); }, zone), 0;
    });
}

void write_current_date_once_(vector_call &call) {
    const vector_text model = call.text();
    put_written_(call, [&](char *text, int size) {
        return dv_date_current_str_DEPRECATED(text, size, model.data, model.size), 0;
    });
}

}  // namespace

void dv::test::add_datetime_model_operations(vector_operations &all) {
    all.add("dt_fmt_ctx_set", compile_);
    all.add("dt_fmt_ctx_serialize", serialise_);
    add_writers_<dv_date_to_str, dv_time_to_str, dv_timestamp_to_str, dv_ts_tz_to_str, dv_ts_ltz_to_str,
                 dv_date_to_str_DEPRECATED, dv_time_to_str_DEPRECATED, dv_timestamp_to_str_DEPRECATED,
                 dv_ts_tz_to_str_DEPRECATED, dv_ts_ltz_to_str_DEPRECATED>(all);
    all.add("dv_date_current_str", write_current_<dv_date_current_str, DV_TYPE_DATE>);
    all.add("dv_date_current_str_DEPRECATED", write_current_date_once_);
    all.add("dv_timestamp_current_str", write_current_<dv_timestamp_current_str, DV_TYPE_TIMESTAMP>);
    all.add("dv_ts_tz_current_str", write_current_<dv_ts_tz_current_str, DV_TYPE_TS_TZ, const timezone_t *>);
    add_readers_<dv_date_from_str, dv_time_from_str, dv_timestamp_from_str, dv_ts_tz_from_str,
                 dv_ts_ltz_from_str, dv_date_from_str_as_of, dv_timestamp_from_str_as_of,
                 dv_ts_tz_from_str_as_of>(all);
    all.add_into<dv_date_from_str_DEPRECATED, dv_time_from_str_DEPRECATED, dv_timestamp_from_str_DEPRECATED,
                 dv_ts_tz_from_str_DEPRECATED, dv_ts_ltz_from_str_DEPRECATED>();
    all.add_in_place<dv_date_get_length, dv_time_get_length, dv_timestamp_get_length, dv_ts_tz_get_length,
                     dv_date_check_format, dv_time_check_format, dv_timestamp_check_format,
                     dv_ts_tz_check_format>();
}
