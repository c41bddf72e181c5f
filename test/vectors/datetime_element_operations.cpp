// Single elements of datetime models: written, read, checked. The model's first one but FM and FX is taken.

#include <algorithm>
#include <cstring>

#include "datetime_model.h"

using namespace dv::test;

namespace {

constexpr int _text_size = 64;

// What one call of a writer or reader works on: the model's first element over a text.
struct element_t {
    dt_fmt_token_info_t element{};
    dt_fmt_parse_ctx_t context{};

    element_t(const vector_model &model, char *text, int size, bool is_reading) {
        dt_parse_ctx_init(&context, model, text, size, nullptr, 0, is_reading);
        if (is_reading)
            std::memcpy(context.org_str, text, std::min(static_cast<size_t>(size), sizeof context.org_str));
        context.cur_token_info = &element;
        for (int i = model.compiled.token_cnt; i-- > 0;) {
            const dt_fmt_token_info_t &at = model.compiled.token_infos[i];
            if (at.type != DT_FMT_TYPE_FM && at.type != DT_FMT_TYPE_FX) element = at;
        }
    }
};

// The text that a writer gives of a record, and its status.
template <typename Record, typename... More>
void write_(vector_call &call, conv_status_t (*write)(dt_fmt_parse_ctx_t *, const Record *, More...)) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/false);
    const Record *const record = call.record<Record>();
    const std::tuple<More...> more{vector_bind::read_more<More>(call)...};
    char text[_text_size] = {};
    element_t at(model, text, _text_size, /*is_reading=*/false);
    conv_status_t status = 0;
    if (!call.run([&] {
            status = std::apply([&](auto... rest) { return write(&at.context, record, rest...); }, more);
        }))
        return;
    const std::string_view whole(text, sizeof text);
    const auto written = static_cast<size_t>(at.context.str_idx);
    if (whole.find_first_not_of('\0', written) != whole.npos) call.fail("written behind the text");
    call.put_text(whole.substr(0, written));
    call.put(status);
}

// The record that read(context) leaves, the bytes read, the fields given.
template <typename Record, typename Read>
void read_(vector_call &call, const vector_model &model, vector_text text, Record *record, Read read) {
    element_t at(model, const_cast<char *>(text.data), text.size, /*is_reading=*/true);
    const bool has_returned = call.run([&] { read(&at.context); });
    if (record != nullptr) call.put_bytes(record, sizeof *record);
    if (!has_returned) return;
    call.put(at.context.str_idx);
    call.put(at.context.update_flag);
}

template <auto Read, typename Record>
void read_record_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/true);
    const vector_text text = call.text();
    auto *const record = call.record<Record>();
    read_(call, model, text, record, [&](auto *context) { Read(context, record); });
}

void read_time_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/true);
    const vector_text text = call.text();
    dv_time_t *const time = call.record<dv_time_t>();
    const auto precision = static_cast<int>(call.integer());
    int index = 0;
    read_(call, model, text, time,
          [&](auto *context) { dt_fmt_parse_time(context, time, precision, &index); });
}

void read_punctuation_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/true);
    const vector_text text = call.text();
    int index = 0;
    read_<int>(call, model, text, nullptr, [&](auto *context) { dt_fmt_parse_punc_token(context, &index); });
}

// Whether the text has the form of an ANSI literal there, and the bytes accepted.
template <auto Check>
void check_ansi_(vector_call &call) {
    const vector_model model(call, DV_TYPE_TS_TZ, /*is_reading=*/true);
    const vector_text text = call.text();
    element_t at(model, const_cast<char *>(text.data), text.size, /*is_reading=*/true);
    int answer = 0;
    if (!call.run([&] { answer = Check(&at.context); })) return;
    call.put(answer);
    if (answer != 0) call.put(at.context.str_idx);
}

// Day of the year, fields given, date.
void check_day_of_year_(vector_call &call) {
    dt_fmt_parse_ctx_t context{};
    context.ddd = static_cast<int>(call.integer());
    context.update_flag = static_cast<int>(call.integer());
    dv_date_t *const date = call.record<dv_date_t>();
    call.run([&] { dt_fmt_check_ddd(&context, date); });
    if (date != nullptr) call.put_bytes(date, sizeof *date);
}

void check_input_end_(vector_call &call) {
    const vector_text text = call.text();
    dt_fmt_parse_ctx_t context{};
    context.str = const_cast<char *>(text.data);
    context.str_len = text.size;
    call.run([&] { dt_parse_check_input_trailing_space(&context); });
}

void check_model_end_(vector_call &call) {
    const vector_text model = call.text();
    const auto is_truncating = static_cast<uchar>(call.integer());
    dt_fmt_parse_ctx_t context{};
    context.fmt = model.data;
    context.fmt_len = model.size;
    call.run([&] { dt_parse_check_fmt_trailing_space(&context, is_truncating); });
}

// Settings one after the other: language and calendar in force.
void settings_(vector_call &call) {
    dt_fmt_ctx_t compiled{};
    call.run([&] {
        dt_fmt_ctx_set(_system_allocator, &compiled, "YYYY", 4, DV_TYPE_DATE, 0, DVSTR_CHARSET_UTF8);
    });
    bool is_good = true;
    while (is_good && call.has_more()) {
        const vector_text text = call.text();
        is_good =
            call.run([&] { dt_fmt_ctx_set_user_nls(_system_allocator, &compiled, text.data, text.size); });
    }
    call.put(compiled.nls_date_ctx.lang);
    call.put(compiled.nls_date_ctx.cal);
    dt_fmt_ctx_reset(_system_allocator, &compiled);
}

template <auto... Functions>
void add_writers_(vector_operations &all) {
    (all.add(name_of<Functions>(), [](vector_call &call) { write_(call, Functions); }), ...);
}

}  // namespace

void dv::test::add_datetime_element_operations(vector_operations &all) {
    add_writers_<dt_fmt_write_date, dt_fmt_write_time, dt_fmt_write_tz>(all);
    all.add("dt_fmt_parse_date", read_record_<dt_fmt_parse_date, dv_date_t>);
    all.add("dt_fmt_parse_time", read_time_);
    all.add("dt_fmt_parse_tz", read_record_<dt_fmt_parse_tz, timezone_t>);
    all.add("dt_fmt_parse_punc_token", read_punctuation_);
    all.add("dt_fmt_check_ansi_date", check_ansi_<dt_fmt_check_ansi_date>);
    all.add("dt_fmt_check_ansi_time", check_ansi_<dt_fmt_check_ansi_time>);
    all.add("dt_fmt_check_ansi_punc", check_ansi_<dt_fmt_check_ansi_punc>);
    all.add("dt_fmt_check_ddd", check_day_of_year_);
    all.add("dt_parse_check_input_trailing_space", check_input_end_);
    all.add("dt_parse_check_fmt_trailing_space", check_model_end_);
    all.add("dt_fmt_ctx_set_user_nls", settings_);
}
