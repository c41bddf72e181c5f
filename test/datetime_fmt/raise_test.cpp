// What the readers, writers and checks of datetime models raise, and in whose name: the names are part of the
// contract.

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>

#include "dvtypes/timestamp_tz.h"
#include "model_text.h"

using namespace dv::test;
using namespace std::literals;

namespace {

std::string raised_by_reading_(std::string_view model, std::string_view text) {
    compiled_model compiled(model, /*is_reading=*/true);
    if (compiled.error.code != 0) return std::to_string(compiled.error.code) + ' ' + compiled.error.function;
    set_language(compiled, "AMERICAN");
    timezone_t session;
    timezone_parse(&session, "America/New_York", 16);
    dv_ts_tz_t value;
    return raised_by([&] {
        dv_ts_tz_from_str(&value, text.data(), static_cast<int>(text.size()), &compiled.ctx, 9, &session);
    });
}

constexpr std::tuple<std::string_view, std::string_view, const char *> _readings[] = {
    {"YYYY-MM-DD", "2024-02-29 x", "-5010 dt_parse_check_input_trailing_space"},
    {"YYYY Q", "2024 1", "-5013 dt_fmt_parse_date"},
    {"YYYY?", "2024", "0 "},
    {"YYYYZ", "2024", "-5014 parse_dt_fmt_"},
    {"YYYY MM DDD", "2024 01 060", "-5024 dt_fmt_check_ddd"},
    {"YYYY DD DDD", "2024 01 060", "-5025 dt_fmt_check_ddd"},
    {"SSSSS HH", "", "-5026 check_duplicated_token_"},
    {"SSSSS MI", "", "-5027 check_duplicated_token_"},
    {"SSSSS SS", "", "-5028 check_duplicated_token_"},
    {"SYYYY AD", "", "-5039 check_duplicated_token_"},
    {"HH24 PM", "", "-5040 check_duplicated_token_"},
    {"FF0", "", "-5041 parse_fsec_prec_"},
    {"SS.FF", "05,5", "-5042 dt_fmt_parse_punc_token"},
    {"SSXFF", "05,5", "-5042 parse_radix_"},
    {"YYYY-MM-DD", "2024-02", "-5045 check_omitted_time_token_"},
    {"YYYYMMDD", "202402", "-5045 check_omitted_time_token_"},
    {"HH24:MI DD", "12", "-5045 check_omitted_time_token_"},
    {"HH24MI DD", "12", "-5045 check_omitted_time_token_"},
    {"FXYYYY", "24", "-5088 parse_yyyy_"},
    {"FXRRRR", "24", "-5088 parse_yyyy_"},
    {"FXMM", "2", "-5088 parse_mm_"},
    {"FXDD", "2", "-5088 parse_dd_"},
    {"FXDDD", "2", "-5088 parse_ddd_"},
    {"FXHH24", "2", "-5088 parse_hour_"},
    {"FXMI", "2", "-5088 parse_minute_"},
    {"FXSS", "2", "-5088 parse_second_"},
    {"FXFF", "2", "-5088 parse_fsec_"},
    {"FXTZH", "2", "-5088 parse_tz_hour_"},
    {"FXTZM", "2", "-5088 parse_tz_minute_"},
    {"FXYYYY-MM", "2024/02", "-5089 dt_fmt_parse_punc_token"},
    {"TZH TZR", "", "-5096 check_duplicated_token_"},
    {"TZR TZD", "Asia/Seoul EDT", "-5096 parse_tz_abbr_"},
    {"TZD TZR", "EDT Asia/Seoul", "-5096 parse_tz_abbr_"},
    {"TZR TZH", "", "-5097 check_duplicated_token_"},
    {"TZR", "+15:00", "-5098 timezone_parse"},
    {"TZR", "+14:01", "-5099 timezone_parse"},
    {"TZH:TZM", "+14:30", "-5099 timezone_set_field"},
    {"TZR", "+5x", "-5103 timezone_parse"},
    {"YYYY YYYY", "", "-5112 check_duplicated_token_"},
    {"YYYY", "x", "-5113 parse_yyyy_"},
    {"YYYY", "-2024", "-5113 skip_and_check_punc_token_"},
    {"MI", "-5", "-5113 skip_and_check_punc_token_"},
    {"MM", "x", "-5113 parse_month_"},
    {"YYYYMM", "2024-5", "-5113 parse_month_"},
    {"MONTH", "x", "-5113 parse_month_"},
    {"DD", "x", "-5113 parse_dd_"},
    {"DDD", "x", "-5113 parse_ddd_"},
    {"DDD", "367", "-5113 parse_ddd_"},
    {"YYYY DDD", "2023 366", "-5113 dt_fmt_check_ddd"},
    {"AD", "x", "-5113 parse_ad_bc_"},
    {"AM", "x", "-5113 parse_am_pm_"},
    {"HH", "x", "-5113 parse_hour_"},
    {"MI", "x", "-5113 parse_minute_"},
    {"SS", "x", "-5113 parse_second_"},
    {"SSSSS", "x", "-5113 parse_second_of_day_"},
    {"FF", "x", "-5113 parse_fsec_"},
    {"TZH", "x", "-5113 parse_tz_hour_"},
    {"TZM", "x", "-5113 parse_tz_minute_"},
    {"TZR", "x", "-5113 parse_tz_region_"},
    {"TZD", "XXX", "-5113 parse_tz_abbr_"},
    {"TZD", "ESTX", "-5113 parse_tz_abbr_"},
    {"TZD", "EST5", "-5113 parse_tz_abbr_"},
    {"MM", "13", "-5114 dv_dt_check_validity_of_unit"},
    {"HH24", "24", "-5114 parse_hour_"},
    {"SSSSS", "86400", "-5114 parse_second_of_day_"},
    {"TZH", "15", "-5114 parse_tz_hour_"},
    {"TZM", "60", "-5114 parse_tz_minute_"},
    {"YYYY-MM-DD", "2023-02-29", "-5114 dv_date_is_valid"},
};

}  // namespace

TEST(ModelRaise, NamesTheFunctionOfTheContractInReading) {
    for (const auto &[model, text, want] : _readings) {
        EXPECT_EQ(raised_by_reading_(model, text), want) << model << ": " << text;
    }
}

// One element in the hands of each reader and writer, by its number; 54 is punctuation, 60 none.
TEST(ModelRaise, NamesTheFunctionOfTheContractForElementsOfOthers) {
    dt_fmt_ctx_t model{};
    dt_fmt_token_info_t element{};
    char text[40] = "12";
    dt_fmt_parse_ctx_t ctx;
    dv_date_t date = make_date(2024, 2, 29);
    dv_time_t time{};
    dv_ts_tz_t zoned{};
    timezone_t tz;
    timezone_init(&tz);
    int at = 0;
    const auto given = [&](int id, bool is_reading, int length = 2) {
        element.id = id;
        element.type = id == 54 ? DT_FMT_TYPE_PUNC : DT_FMT_TYPE_TIME;
        dt_parse_ctx_init(&ctx, &model, text, is_reading ? length : 40, nullptr, 0, is_reading);
        ctx.cur_token_info = &element;
    };
    const auto read = [&](const char *kind, int id, int length = 2) {
        given(id, /*is_reading=*/true, length);
        return raised_by([&] {
            if (*kind == 'd') dt_fmt_parse_date(&ctx, &date);
            if (*kind == 't') dt_fmt_parse_time(&ctx, &time, 9, &at);
            if (*kind == 'z') dt_fmt_parse_tz(&ctx, &tz);
        });
    };
    const auto write = [&](const char *kind, int id, int fprec = 9) {
        given(id, /*is_reading=*/false);
        return raised_by([&] {
            if (*kind == 'd') dt_fmt_write_date(&ctx, &date);
            if (*kind == 't') dt_fmt_write_time(&ctx, &time, fprec);
            if (*kind == 'z') dt_fmt_write_tz(&ctx, &zoned);
        });
    };
    for (const int id : {39, 45, 49, 54, 60}) {  // HH24 TZH FM, punctuation, none
        EXPECT_EQ(read("date", id), "-5011 dt_fmt_parse_date") << id;
        EXPECT_EQ(read("date", id, 0), "0 ") << id;  // an ended text is looked at first
        EXPECT_EQ(write("date", id), "-5011 dt_fmt_write_date") << id;
    }
    for (const int id : {13, 45, 49, 54, 60}) {
        EXPECT_EQ(read("time", id), "-5012 dt_fmt_parse_time") << id;
        EXPECT_EQ(write("time", id), "-5012 dt_fmt_write_time") << id;
    }
    for (const int id : {13, 39, 49, 54, 60}) {
        EXPECT_EQ(read("zone", id), "-5091 dt_fmt_parse_tz") << id;
        const bool is_number = id == 13 || id == 39 || id == 60;
        if (id != 60) {
            EXPECT_EQ(write("zone", id),
                      is_number ? "-5091 dv_tz_write_num_val_" : "-5091 dv_tz_write_str_val_")
                << id;
        }
    }
    for (const int id : {4, 6, 10, 24, 31}) {  // CC IYYY YEAR DAY IW
        EXPECT_EQ(read("date", id), "-5013 dt_fmt_parse_date") << id;
        EXPECT_EQ(read("time", id), "-5013 dt_fmt_parse_time") << id;
        EXPECT_EQ(read("zone", id), "-5013 dt_fmt_parse_tz") << id;
    }
    EXPECT_EQ(write("date", 32), "-5054 dv_date_write_num_val_");
    EXPECT_EQ(write("time", 43, 10), "-5041 dv_time_write_num_val_");
    element.sfx_type = 5;
    const assertion_watch watch;
    EXPECT_EQ(write("date", 25), "0 ");  // DD with a suffix that is none
    EXPECT_EQ(std::string(ctx.str, 2), "29");
    EXPECT_EQ(watch.count(), 1U);
}

TEST(ModelRaise, TellsWhatIsLeftOfTheModel) {
    dt_fmt_parse_ctx_t ctx;
    for (const auto &[fmt, fmt_idx, left] :
         {std::tuple("YYYY \t\r\n", 4, false), {"YYYY", 4, false}, {"YYYY -", 4, true}, {" YYYY", 0, true}}) {
        dt_parse_ctx_init(&ctx, nullptr, nullptr, 0, fmt, static_cast<int>(std::strlen(fmt)), 1);
        ctx.fmt_idx = fmt_idx;
        for (const auto &[is_truncate, code] : {std::pair(1, -5048), {0, -5049}}) {
            const std::string want = std::to_string(code) + " dt_parse_check_fmt_trailing_space";
            EXPECT_EQ(
                raised_by([&] { dt_parse_check_fmt_trailing_space(&ctx, static_cast<uchar>(is_truncate)); }),
                left ? want : "0 ")
                << fmt;
        }
    }
}

// The text that a message shows is the one that the context was prepared with, up to 129 bytes; where nobody
// has prepared it, the text that is read.
TEST(ModelRaise, ShowsTheTextOfTheContext) {
    const compiled_model model("YYYY", /*is_reading=*/true);
    std::string text(200, 'x');
    dt_fmt_parse_ctx_t ctx;
    dt_parse_ctx_init(&ctx, &model.ctx, text.data(), 200, nullptr, 0, /*is_from_str=*/1);
    EXPECT_EQ(std::string(ctx.org_str, sizeof ctx.org_str), std::string(129, 'x'));
    ctx.cur_token_info = model.ctx.token_infos;
    dv_date_t date = make_date(2024, 1, 1);
    dv_error_t error{};
    std::memcpy(ctx.org_str, "as it was typed", 16);
    EXPECT_EQ(raise_of([&] { dt_fmt_parse_date(&ctx, &date); }, &error), -5113);
    EXPECT_STREQ(error.args[2], "as it was typed");
    ctx.org_str[0] = '\0';
    EXPECT_EQ(raise_of([&] { dt_fmt_parse_date(&ctx, &date); }, &error), -5113);
    EXPECT_EQ(error.args[2], std::string(DV_ERROR_TEXT_MAX - 1, 'x'));
    dt_parse_ctx_init(&ctx, &model.ctx, text.data(), 200, nullptr, 0, /*is_from_str=*/0);
    EXPECT_EQ(ctx.org_str[0], '\0');
}

// A zone that is no region, a record without text: asserted or passed over, and no more.
TEST(ModelPointers, MayLackBehindRecordsOfAnyBytes) {
    const assertion_watch watch;
    const compiled_model model("TZD", /*is_reading=*/true);
    char text[8] = "EDT";
    dt_fmt_parse_ctx_t ctx;
    dt_parse_ctx_init(&ctx, &model.ctx, text, 3, nullptr, 0, 1);
    ctx.cur_token_info = model.ctx.token_infos;
    ctx.update_flag = DT_FMT_UNIT_TZR;
    timezone_t tz{100, 0, 0, {0xFF, 0xFF}};
    dt_fmt_parse_tz(&ctx, &tz);
    EXPECT_EQ(watch.count(), 1U);
    EXPECT_STREQ(ctx.tz_abbr, "EDT");

    dt_fmt_token_info_t run{};
    run.id = DT_FMT_TOKEN_PUNC;
    run.type = DT_FMT_TYPE_PUNC;
    run.token_len = 3;
    dt_parse_ctx_init(&ctx, &model.ctx, text, 8, nullptr, 0, 0);
    ctx.cur_token_info = &run;
    EXPECT_EQ(dt_fmt_write_punc_token(&ctx), CONV_STATUS_WHOLE);
    EXPECT_EQ(ctx.str_idx, 0);
}

// In a quadratic time this took minutes; the bound leaves room for sanitizers.
TEST(ModelRead, TakesATimeThatIsLinearInTheModel) {
    std::string model = "YYYY";
    for (int i = 0; i < 160'000; ++i) model += "\"x\"-";
    const compiled_model compiled = reading(model + "TZR", DV_TYPE_TS_TZ);
    timezone_t session;
    timezone_parse(&session, "UTC", 3);
    const auto begin = std::chrono::steady_clock::now();
    dv_ts_tz_t value;
    for (const char *text : {"2024Z", "2024 UTC"}) {
        raise_of([&] { dv_ts_tz_from_str(&value, text, 0, &compiled.ctx, 9, &session); });
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
}
