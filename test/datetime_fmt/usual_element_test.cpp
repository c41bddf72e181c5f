// Elements that the walk writes and reads in place beside the exported writers and readers of all elements,
// and names beside those fetched into the working context: the same bytes, the same ends, the same errors.

#include <gtest/gtest.h>

#include <cstdio>

#include "dvtypes/timestamp.h"
#include "left_behind.h"
#include "model_text.h"

using namespace dv::test;

namespace {

constexpr const char *_models[] = {
    "DD-MM-YYYY HH24:MI",
    "MM/DD/YYYY\"  \"SS",
    "YYYY FMYYYY MM FMDD HH24 FMMI SS",
    "YYYYTH MMSP ddth HH24SPTH miTH",
    "SYYYY YYY YY RRRR HH12 SSSSS DDD Q",
};

// Each holds the year and the month, so that the present is not looked at.
constexpr const char *_readable_models[] = {
    "DD-MM-YYYY HH24:MI",      "MM/DD/YYYY\"  \"SS",          "YYYY MM DD HH24 MI SS",
    "FXDD-MM-YYYY HH24:MI:SS", "DD.MM.YYYY\nHH24,MI-SS.FF",   "AD YYYY/MM-DD",
    "DDMMYYYYHH24MISS",        "DD- MM\"T\"YYYYFM HH24 FXMI", "YYYY+MM DD-HH12:MI PM",
};

conv_status_t write_element_(dt_fmt_parse_ctx_t &ctx, const dv_timestamp_t &ts) {
    dv_date_t date;
    dv_time_t time;
    std::memcpy(&date, &ts, sizeof date);
    std::memcpy(&time, &ts.hour, sizeof time);
    if (ctx.cur_token_info->type == DT_FMT_TYPE_DATE) return dt_fmt_write_date(&ctx, &date);
    if (ctx.cur_token_info->type == DT_FMT_TYPE_TIME) return dt_fmt_write_time(&ctx, &time, 9);
    if (ctx.cur_token_info->type == DT_FMT_TYPE_PUNC) return dt_fmt_write_punc_token(&ctx);
    return CONV_STATUS_WHOLE;
}

// Through the exported writers alone.
conv_status_t write_all_(const dt_fmt_ctx_t &model, const dv_timestamp_t &ts, char *text, int size) {
    dt_fmt_parse_ctx_t ctx;
    dt_parse_ctx_init(&ctx, &model, text, size, nullptr, 0, /*is_from_str=*/0);
    for (int i = 0; i < model.token_cnt; ++i) {
        ctx.cur_token_info = &model.token_infos[i];
        const conv_status_t status = write_element_(ctx, ts);
        if (status != CONV_STATUS_WHOLE) return status;
    }
    if (ctx.str_idx < ctx.str_len) text[ctx.str_idx] = '\0';
    return CONV_STATUS_WHOLE;
}

conv_status_t read_all_(const dt_fmt_ctx_t &model, char *text, int size, char *to) {
    auto &date = *reinterpret_cast<dv_date_t *>(to);
    auto &time = *reinterpret_cast<dv_time_t *>(to + 4);
    date = make_date(1, 1, 1);
    std::memset(&time, 0, sizeof time);
    dt_fmt_parse_ctx_t ctx;
    dt_parse_ctx_init(&ctx, &model, text, size, nullptr, 0, /*is_from_str=*/1);
    for (int i = 0; i < model.token_cnt; ++i) {
        ctx.cur_token_info = &model.token_infos[i];
        if (ctx.cur_token_info->type == DT_FMT_TYPE_DATE) dt_fmt_parse_date(&ctx, &date);
        if (ctx.cur_token_info->type == DT_FMT_TYPE_TIME) dt_fmt_parse_time(&ctx, &time, 9, &i);
        if (ctx.cur_token_info->type == DT_FMT_TYPE_PUNC) dt_fmt_parse_punc_token(&ctx, &i);
    }
    dt_fmt_check_ddd(&ctx, &date);
    dt_parse_check_input_trailing_space(&ctx);
    dv_date_is_valid(&date);
    return CONV_STATUS_WHOLE;
}

}  // namespace

TEST(UsualElement, IsWrittenAsItsWriterWritesIt) {
    const assertion_watch quiet;  // records of any bytes make assertions fail
    number_source source(1);
    for (const char *model_text : _models) {
        const compiled_model model = writing(model_text, DV_TYPE_TIMESTAMP);
        for (long round = scaled(20'000); round > 0; --round) {
            dv_timestamp_t ts{};
            const dv_date_t date = random_date(source);
            std::memcpy(&ts, &date, sizeof date);
            if (source.pick(0, 3) == 0) source.fill(&ts, sizeof ts);
            const int size = source.pick(0, 1) == 0 ? source.pick(1, 40) : 120;
            const left_behind_t got = left_behind(static_cast<size_t>(size), [&](char *to) {
                return dv_timestamp_to_str(&ts, to, size, &model.ctx, 9);
            });
            const left_behind_t want = left_behind(
                static_cast<size_t>(size), [&](char *to) { return write_all_(model.ctx, ts, to, size); });
            ASSERT_EQ(got.bytes, want.bytes) << model_text << ' ' << testing::PrintToString(ts);
            ASSERT_TRUE(got == want) << model_text << ' ' << testing::PrintToString(ts);
        }
    }
}

TEST(UsualElement, IsReadAsItsReaderReadsIt) {
    number_source source(3);
    int right = 0;
    for (const char *model_text : _readable_models) {
        const compiled_model model = reading(model_text, DV_TYPE_TIMESTAMP), writer = writing(model_text);
        for (long round = scaled(20'000); round > 0; --round) {
            const dv_date_t date = random_date(source);
            const std::string text = damaged(source, written(writer, date));
            const guarded block(text.size(), text.data());
            const left_behind_t got = left_behind(sizeof(dv_timestamp_t), [&](char *to) {
                auto &ts = *reinterpret_cast<dv_timestamp_t *>(to);
                dv_timestamp_from_str(&ts, block.text(), static_cast<int>(text.size()), &model.ctx, 9);
                return CONV_STATUS_WHOLE;
            });
            const left_behind_t want = left_behind(sizeof(dv_timestamp_t), [&](char *to) {
                return read_all_(model.ctx, block.text(), static_cast<int>(text.size()), to);
            });
            ASSERT_TRUE(got == want) << model_text << ": " << testing::PrintToString(text) << got.error
                                     << want.error;
            right += got.code == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(right, scaled(20'000));
}

// Every name of every language in every character set and letter case, in buffers of any length.
TEST(UsualElement, IsANameAsItIsFetchedAndPadded) {
    struct list_t {
        const char *models[3];  // by letter case
        char *(*get)(dt_fmt_parse_ctx_t *, int, int);
        const char *const *formats;
        int count;
    };
    const list_t lists[] = {
        {{"MONTH", "month", "Month"}, nls_date_lang_get_std_month, nls_date_lang_std_mon_fmt_tab_, 12},
        {{"MON", "mon", "Mon"}, nls_date_lang_get_abb_month, nls_date_lang_abb_mon_fmt_tab_, 12},
        {{"DAY", "day", "Day"}, nls_date_lang_get_std_day, nls_date_lang_std_day_fmt_tab_, 7},
        {{"DY", "dy", "Dy"}, nls_date_lang_get_abb_day, nls_date_lang_abb_day_fmt_tab_, 7}};
    constexpr int languages = DV_NLS_DATE_LANG_MAX, charsets = DVSTR_CHARSET_MAX;
    number_source source(2);
    for (const list_t &list : lists) {
        for (int i = 0; i < languages * charsets * 3 * list.count; ++i) {
            const int idx = i % list.count, kase = i / list.count % 3, combination = i / list.count / 3;
            compiled_model model = writing(list.models[kase]);
            model.ctx.nls_date_ctx.lang = combination % languages;
            model.ctx.charset = combination / languages;
            const dv_date_t date = make_date(2024, list.count == 12 ? idx + 1 : 1, idx + 1);  // from a Monday
            dt_fmt_parse_ctx_t ctx;
            dt_parse_ctx_init(&ctx, &model.ctx, nullptr, 0, nullptr, 0, /*is_from_str=*/0);
            char padded[128];
            const int length = std::snprintf(padded, sizeof padded, list.formats[model.ctx.nls_date_ctx.lang],
                                             list.get(&ctx, idx, kase));
            const int size = source.pick(0, 1) == 0 ? source.pick(1, 30) : 100;
            std::string want(static_cast<size_t>(size), '~');
            want.replace(0, static_cast<size_t>(length) + 1, padded, static_cast<size_t>(length) + 1);
            const left_behind_t got = left_behind(static_cast<size_t>(size), [&](char *to) {
                return dv_date_to_str(&date, to, size, &model.ctx);
            });
            ASSERT_EQ(got.bytes, want.substr(0, static_cast<size_t>(size))) << list.models[kase] << i;
            ASSERT_EQ(got.status, length > size ? CONV_STATUS_CUT : CONV_STATUS_WHOLE)
                << list.models[kase] << i;
        }
    }
}
