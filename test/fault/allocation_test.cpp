// Every allocation of every function that allocates fails once: it is an error, nothing is lost, and the next
// call gives what it gives where nothing fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "dvtypes/model.hpp"
#include "failing_allocator.h"
#include "public_headers.h"
#include "raise.h"

using namespace dv::test;

namespace {

// What a call left.
struct outcome_t {
    int code;
    long returned;
    alignas(8) char record[32];
    char text[512];
    bool operator==(const outcome_t &) const = default;
};

// A call under a model of some type. Readers get the text, writers a record of 2024-02-29 13:05:07.5 +09:00.
struct allocating_t {
    const char *name;
    dv_type_t type;
    void (*call)(const std::string &model, const std::string &text, outcome_t &out);
};

template <typename Record>
Record &record_(outcome_t &out) {
    return reinterpret_cast<Record &>(out.record);
}

const timezone_t _seoul = {109, 0, 0, {TZ_ID_OFFSET >> 8, TZ_ID_OFFSET & 0xFF}};

template <typename Record>
Record sample_() {
    dv_ts_tz_t sample{};
    dv_timestamp_t local{};
    dv_timestamp_from_unit_values(&local, 2024, 2, 29, 13, 5, 7, 500000000);
    dv_ts_tz_from_timestamp(&sample, &local, &_seoul);
    Record record{};
    if constexpr (std::is_same_v<Record, dv_time_t>) {
        dv_time_from_unit_values(&record, 13, 5, 7, 500000000);
    } else {
        std::memcpy(&record, &sample, sizeof record);
    }
    return record;
}

int size_(const std::string &text) { return static_cast<int>(text.size()); }

// One function by address, whatever its order of arguments: record, texts, precision, zone.
template <auto function, typename Record>
void read_(const std::string &model, const std::string &text, outcome_t &out) {
    Record *const record = &record_<Record>(out);
    timezone_t zone = _seoul;
    const char *const str = text.c_str(), *const fmt = model.c_str();
    if constexpr (std::is_invocable_v<decltype(function), Record *, const char *, int, const char *, int>)
        function(record, str, size_(text), fmt, size_(model));
    else if constexpr (std::is_invocable_v<decltype(function), Record *, const char *, int, const char *, int,
                                           int>)
        function(record, str, size_(text), fmt, size_(model), 9);
    else
        function(record, str, size_(text), fmt, size_(model), 9, &zone);
}

template <auto function, typename Record>
void write_(const std::string &model, const std::string &, outcome_t &out) {
    const auto record = sample_<Record>();
    const char *const fmt = model.c_str();
    const int size = static_cast<int>(sizeof out.text);
    if constexpr (std::is_invocable_v<decltype(function), const Record *, char *, int, const char *, int>)
        out.returned = function(&record, out.text, size, fmt, size_(model));
    else if constexpr (std::is_invocable_v<decltype(function), const Record *, char *, int, const char *, int,
                                           int>)
        out.returned = function(&record, out.text, size, fmt, size_(model), 9);
    else
        out.returned = function(&record, out.text, size, fmt, size_(model), 9, &_seoul);
}

template <auto function>
void look_(const std::string &model, const std::string &, outcome_t &out) {
    if constexpr (std::is_invocable_r_v<int, decltype(function), const char *, int, int>)
        out.returned = function(model.c_str(), size_(model), 9);
    else if constexpr (std::is_invocable_r_v<int, decltype(function), const char *, int>)
        out.returned = function(model.c_str(), size_(model));
    else
        function(model.c_str(), size_(model));
}

void compile_(const std::string &model, const std::string &, outcome_t &out) {
    dt_fmt_ctx_t compiled{};
    out.code = raise_of([&] {
        dt_fmt_ctx_set(_system_allocator, &compiled, model.c_str(), size_(model), DV_TYPE_DATE, 1,
                       DVSTR_CHARSET_UTF8);
    });
    out.returned = out.code == 0 ? compiled.token_cnt : 0;
    dt_fmt_ctx_reset(_system_allocator, &compiled);
}

void parse_element_(const std::string &, const std::string &, outcome_t &out) {
    dt_fmt_parse_ctx_t context;
    dt_fmt_token_info_t element{};
    dt_parse_ctx_init(&context, nullptr, nullptr, 0, "\"literal\"", 9, 0);
    context.cur_token_info = &element;
    out.code = raise_of([&] { dt_fmt_parse_token(_system_allocator, &context); });
    if (element.token == nullptr) return;
    std::memcpy(out.text, element.token, static_cast<size_t>(element.token_len));
    _system_allocator->free(_system_allocator, element.token, "", 0);
}

// The C++ layer raises exceptions of its own.
void read_in_cpp_(const std::string &model, const std::string &text, outcome_t &out) {
    try {
        record_<dv_date_t>(out) = dv::reader<dv::date>(model)(text).record();
    } catch (const dv::error &error) {
        out.code = error.code();
    }
}
void write_in_cpp_(const std::string &model, const std::string &, outcome_t &out) {
    try {
        const std::string text = dv::writer<dv::date>(model)(dv::date(2024, 2, 29));
        std::memcpy(out.text, text.data(), std::min(text.size(), sizeof out.text));
    } catch (const dv::error &error) {
        out.code = error.code();
    }
}

constexpr allocating_t _allocating[] = {
    {"dv_date_from_str_DEPRECATED", DV_TYPE_DATE, read_<dv_date_from_str_DEPRECATED, dv_date_t>},
    {"dv_date_to_str_DEPRECATED", DV_TYPE_DATE, write_<dv_date_to_str_DEPRECATED, dv_date_t>},
    {"dv_date_current_str_DEPRECATED", DV_TYPE_DATE,
     [](auto &model, auto &, outcome_t &out) {
         char text[sizeof out.text];
         dv_date_current_str_DEPRECATED(text, sizeof text, model.c_str(), size_(model));
     }},
    {"dv_date_get_length", DV_TYPE_DATE, look_<dv_date_get_length>},
    {"dv_date_check_format", DV_TYPE_DATE, look_<dv_date_check_format>},
    {"dv_time_from_str_DEPRECATED", DV_TYPE_TIME, read_<dv_time_from_str_DEPRECATED, dv_time_t>},
    {"dv_time_to_str_DEPRECATED", DV_TYPE_TIME, write_<dv_time_to_str_DEPRECATED, dv_time_t>},
    {"dv_time_get_length", DV_TYPE_TIME, look_<dv_time_get_length>},
    {"dv_time_check_format", DV_TYPE_TIME, look_<dv_time_check_format>},
    {"dv_timestamp_from_str_DEPRECATED", DV_TYPE_DATE,
     read_<dv_timestamp_from_str_DEPRECATED, dv_timestamp_t>},
    {"dv_timestamp_to_str_DEPRECATED", DV_TYPE_DATE, write_<dv_timestamp_to_str_DEPRECATED, dv_timestamp_t>},
    {"dv_timestamp_get_length", DV_TYPE_DATE, look_<dv_timestamp_get_length>},
    {"dv_timestamp_check_format", DV_TYPE_DATE, look_<dv_timestamp_check_format>},
    {"dv_ts_tz_from_str_DEPRECATED", DV_TYPE_DATE, read_<dv_ts_tz_from_str_DEPRECATED, dv_ts_tz_t>},
    {"dv_ts_tz_to_str_DEPRECATED", DV_TYPE_DATE, write_<dv_ts_tz_to_str_DEPRECATED, dv_ts_tz_t>},
    {"dv_ts_tz_get_length", DV_TYPE_DATE, look_<dv_ts_tz_get_length>},
    {"dv_ts_tz_check_format", DV_TYPE_DATE, look_<dv_ts_tz_check_format>},
    {"dv_ts_ltz_from_str_DEPRECATED", DV_TYPE_DATE, read_<dv_ts_ltz_from_str_DEPRECATED, dv_ts_ltz_t>},
    {"dv_ts_ltz_to_str_DEPRECATED", DV_TYPE_DATE, write_<dv_ts_ltz_to_str_DEPRECATED, dv_ts_ltz_t>},
    {"dt_fmt_ctx_set", DV_TYPE_DATE, compile_},
    {"dt_fmt_parse_token", DV_TYPE_DATE, parse_element_},
    {"dv::reader", DV_TYPE_DATE, read_in_cpp_},
    {"dv::writer", DV_TYPE_DATE, write_in_cpp_},
};

outcome_t run_(const allocating_t &row, const std::string &model, const std::string &text) {
    outcome_t out{};
    const int code = raise_of([&] { row.call(model, text, out); });
    if (code != 0) out.code = code;
    return out;
}

void expect_none_is_lost_(const allocating_t &row, const std::string &model, const std::string &text) {
    failing_allocator memory;
    const outcome_t want = run_(row, model, text);
    EXPECT_TRUE(want.code != 0 || memory.blocks() == 0) << row.name;
    for (const bool lasts : {false, true}) {
        long n = 0;
        for (bool has_failed = true; has_failed; n += has_failed) {
            memory.fail_at(n, lasts);
            const outcome_t got = run_(row, model, text);
            has_failed = memory.has_failed();
            memory.fail_at(-1, /*lasts=*/false);
            EXPECT_EQ(got.code, has_failed ? DV_ERR_NO_MEMORY : want.code) << row.name << " " << n;
            EXPECT_EQ(memory.lost(), 0) << row.name << " " << n << " " << text;
            EXPECT_TRUE(run_(row, model, text) == want) << row.name << " " << n;
        }
        EXPECT_GT(n, 0) << row.name;
    }
}

}  // namespace

// Models too long for a block on the stack, and texts that raise under them.
TEST(Allocation, ThatFailsLosesNothing) {
    for (const allocating_t &row : _allocating) {
        std::string model = row.type == DV_TYPE_TIME ? "HH24:MI:SS" : "YYYY-MM-DD";
        for (int i = 0; i < 70; ++i) model += i % 2 == 0 ? "\"x\"" : "-";
        for (const char *text : {row.type == DV_TYPE_TIME ? "13:05:07" : "2024-02-29", "20:xx:-"})
            expect_none_is_lost_(row, model, text);
    }
}

// Whoever takes a model as text compiles it.
TEST(Allocation, IsTestedForAllThatAllocate) {
    std::set<std::string> tested, documented;
    for (const allocating_t &row : _allocating) tested.insert(row.name);
    for (const auto &[name, function] : documented_functions()) {
        const bool has_model = std::ranges::count(function.parameters, "fmt_len") > 0;
        const bool has_allocator = std::ranges::count(function.parameters, "alloc") > 0;
        if (has_allocator || (has_model && name.starts_with("dv_"))) documented.insert(name);
    }
    for (const char *const not_compiled :
         {"dv_date_trunc", "dv_date_round", "dv_date_column_trunc", "dv_date_column_round"})
        documented.erase(not_compiled);
    for (const char *const frees_or_nothing : {"dt_fmt_ctx_reset", "dt_fmt_ctx_set_user_nls"})
        documented.erase(frees_or_nothing);
    for (const char *const in_cpp : {"dv::reader", "dv::writer"}) tested.erase(in_cpp);
    EXPECT_EQ(tested, documented);
}
