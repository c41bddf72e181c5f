// What the readers, writers and checks of datetime models raise, and in whose name: the names are part of the
// contract.

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>

#include "dvtypes/timestamp_tz.h"
#include "model_text.h"

using namespace dv::test;
using namespace std::literals;

// Elements that no model gives to a reader or writer: FM, and none; a suffix that is none.
TEST(ModelRaise, NamesTheFunctionOfTheContractForElementsOfNoModel) {
    dt_fmt_ctx_t model{};
    dt_fmt_token_info_t element{};
    char text[40] = "12";
    dt_fmt_parse_ctx_t ctx;
    dv_date_t date = make_date(2024, 2, 29);
    dv_time_t time{};
    dv_ts_tz_t zoned{};
    timezone_t tz{};
    int at = 0;
    const auto prepare = [&](int id, bool is_reading) {
        element.id = id;
        element.type = DT_FMT_TYPE_TIME;
        dt_parse_ctx_init(&ctx, &model, text, is_reading ? 2 : 40, nullptr, 0, is_reading);
        ctx.cur_token_info = &element;
    };
    for (const int id : {49, 60}) {
        prepare(id, /*is_reading=*/true);
        EXPECT_EQ(raised_by([&] { dt_fmt_parse_date(&ctx, &date); }), "-5011 dt_fmt_parse_date");
        EXPECT_EQ(raised_by([&] { dt_fmt_parse_time(&ctx, &time, 9, &at); }), "-5012 dt_fmt_parse_time");
        EXPECT_EQ(raised_by([&] { dt_fmt_parse_tz(&ctx, &tz); }), "-5091 dt_fmt_parse_tz");
        prepare(id, /*is_reading=*/false);
        EXPECT_EQ(raised_by([&] { dt_fmt_write_date(&ctx, &date); }), "-5011 dt_fmt_write_date");
        EXPECT_EQ(raised_by([&] { dt_fmt_write_time(&ctx, &time, 9); }), "-5012 dt_fmt_write_time");
    }
    prepare(49, /*is_reading=*/false);
    EXPECT_EQ(raised_by([&] { dt_fmt_write_tz(&ctx, &zoned); }), "-5091 dv_tz_write_str_val_");
    element.sfx_type = 5;
    prepare(DT_FMT_TOKEN_DD, /*is_reading=*/false);
    const assertion_watch watch;
    EXPECT_EQ(raised_by([&] { dt_fmt_write_date(&ctx, &date); }), "0 ");
    EXPECT_EQ(std::string(ctx.str, 2), "29");
    EXPECT_EQ(watch.count(), 1U);
}

// The text that a message shows is the one that the context was prepared with, up to 129 bytes; where nobody
// has prepared it, the text that is read.
TEST(ModelRaise, ShowsTheTextOfTheContext) {
    const compiled_model model("YYYY", /*is_reading=*/true);
    std::string text(200, 'x');
    dt_fmt_parse_ctx_t ctx;
    std::memset(&ctx, 0xFF, sizeof ctx);
    dt_parse_ctx_init(&ctx, &model.ctx, text.data(), 200, nullptr, 0, /*is_from_str=*/1);
    EXPECT_EQ(std::string(ctx.org_str, sizeof ctx.org_str), std::string(129, 'x'));
    EXPECT_EQ(ctx.str_idx | ctx.fmt_idx | ctx.fmt_len | ctx.ddd | ctx.update_flag, 0);
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

// A working context without a model or an element: each reader and writer reports which one it lacks.
TEST(ModelPointers, AreReportedByTheirNames) {
    static std::string reported;
    const compiled_model model("DD");
    dt_fmt_parse_ctx_t ctx;
    dv_date_t date = make_date(2024, 2, 29);
    dv_time_t time{};
    dv_ts_tz_t zoned{};
    timezone_t tz{};
    int at = 0;
    const auto call_all = [&] {
        dt_fmt_write_date(&ctx, &date);
        dt_fmt_write_time(&ctx, &time, 9);
        dt_fmt_write_tz(&ctx, &zoned);
        dt_fmt_write_punc_token(&ctx);
        dt_fmt_parse_date(&ctx, &date);
        dt_fmt_parse_time(&ctx, &time, 9, &at);
        dt_fmt_parse_tz(&ctx, &tz);
        dt_fmt_parse_punc_token(&ctx, &at);
        dt_fmt_check_ansi_date(&ctx);
        dt_fmt_check_ansi_time(&ctx);
        dt_fmt_check_ansi_punc(&ctx);
    };
    const assertion_watch watch;
    dv_assert_set_reporter([](const char *condition, const char *, int) { reported = condition; });
    char text[8] = "29";
    dt_parse_ctx_init(&ctx, nullptr, text, 2, nullptr, 0, 1);
    ctx.cur_token_info = model.ctx.token_infos;
    call_all();
    EXPECT_EQ(reported, "parse_ctx->fmt_ctx != NULL");
    EXPECT_EQ(watch.count(), 11U);
    dt_parse_ctx_init(&ctx, &model.ctx, text, 2, nullptr, 0, 1);
    ctx.cur_token_info = nullptr;
    call_all();
    EXPECT_EQ(reported, "parse_ctx->cur_token_info != NULL");
    EXPECT_EQ(watch.count(), 22U);
    ctx.fmt_ctx = nullptr;
    EXPECT_EQ(nls_date_lang_get_std_month(&ctx, 0, 0), nullptr);
    EXPECT_EQ(reported, "parse_ctx->fmt_ctx != NULL");
    EXPECT_EQ(watch.count(), 23U);
}

// A letter case that is none: no name, but blanks where one is padded.
TEST(ModelPointers, AreNotMadeOfALetterCaseThatIsNone) {
    const dv_date_t date = make_date(2024, 2, 29);
    const dv_time_t time{};
    for (const char *name : {"MONTH", "MON", "RM", "DAY", "DY", "AD", "B.C.", "AM", "P.M."}) {
        for (const int letter_case : {-1, 3, INT32_MAX, INT32_MIN}) {
            compiled_model model(name);
            set_language(model, "AMERICAN");
            model.ctx.token_infos->case_type = letter_case;
            char text[80] = {};
            dt_fmt_parse_ctx_t ctx;
            dt_parse_ctx_init(&ctx, &model.ctx, text, sizeof text, nullptr, 0, /*is_from_str=*/0);
            ctx.cur_token_info = model.ctx.token_infos;
            const bool is_time = ctx.cur_token_info->type == DT_FMT_TYPE_TIME;
            raise_of([&] { is_time ? dt_fmt_write_time(&ctx, &time, 9) : dt_fmt_write_date(&ctx, &date); });
            EXPECT_EQ(std::string(text), std::string(static_cast<size_t>(ctx.str_idx), ' ')) << name;
        }
    }
}

// In a quadratic time this took minutes; the bound leaves room for sanitizers.
TEST(ModelRead, TakesATimeThatIsLinearInTheModel) {
    std::string model = "YYYY";
    for (int i = 0; i < 40'000; ++i) model += "\"x\"-";
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
