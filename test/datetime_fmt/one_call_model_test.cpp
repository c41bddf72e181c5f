// Models that live for one call, and the form of ANSI literals.

#include <gtest/gtest.h>

#include "model_text.h"

using namespace dv::test;

namespace {

// Puts a counting allocator in the place of the system's.
class counted_allocator : allocator_t {
  public:
    counted_allocator()
        : allocator_t{
              [](auto self, auto size, auto...) { return give_(self, std::malloc(size)); },
              [](auto self, auto count, auto size, auto...) { return give_(self, std::calloc(count, size)); },
              [](auto, auto old, auto size, auto...) { return std::realloc(old, size); },
              [](auto self, auto block, auto...) {
                  --static_cast<counted_allocator *>(self)->blocks;
                  std::free(block);
              },
              [](auto, auto file, auto line) { dv_err_and_jmp(file, line, "", 0, 0, DV_ERR_NO_MEMORY); }},
          system_(_system_allocator) {
        _system_allocator = this;
    }
    ~counted_allocator() { _system_allocator = system_; }
    long blocks = 0, given = 0;

  private:
    static void *give_(allocator_t *self, void *block) {
        ++static_cast<counted_allocator *>(self)->given;
        ++static_cast<counted_allocator *>(self)->blocks;
        return block;
    }
    allocator_t *system_;
};

}  // namespace

// Short models need no memory of the allocator; long ones give it back, whether they are read, refused or
// broken.
TEST(OneCallModel, LeavesNothingBehind) {
    const std::string padding(3000, '-');
    std::string pieces;
    for (int i = 0; i < 300; ++i) pieces += "\"x\"-";
    for (const std::string &tail : {std::string(), padding, pieces}) {
        counted_allocator allocator;
        const std::string model = "YYYY-MM-DD" + tail;
        const int size = static_cast<int>(model.size());
        dv_date_t date{};
        dv_error_t error;
        EXPECT_EQ(raise_of([&] { dv_date_from_str_DEPRECATED(&date, "2024-02-29", 0, model.data(), size); }),
                  0);
        EXPECT_EQ(date, make_date(2024, 2, 29));
        EXPECT_EQ(
            raise_of([&] { dv_date_from_str_DEPRECATED(&date, "2024-xx", 0, model.data(), size); }, &error),
            -5113);
        EXPECT_STREQ(error.function, "parse_month_");
        EXPECT_STREQ(error.args[2], "2024-xx");
        const std::string broken = model + "?YYYY";
        EXPECT_EQ(raise_of([&] { dv_date_check_format(broken.data(), static_cast<int>(broken.size())); }),
                  -5112);
        EXPECT_GE(dv_date_get_length(model.data(), size), 10);
        char text[8];
        EXPECT_EQ(dv_date_to_str_DEPRECATED(&date, text, sizeof text, model.data(), size), CONV_STATUS_CUT);
        EXPECT_EQ(allocator.blocks, 0);
        EXPECT_EQ(allocator.given > 0, !tail.empty() && tail != padding) << tail.size();
    }
}

TEST(OneCallModel, SpeaksKorean) {
    char text[32];
    const dv_date_t date = make_date(2024, 2, 29);
    dv_date_to_str_DEPRECATED(&date, text, sizeof text, "MON", 0);
    EXPECT_STREQ(text, "2\xBF\xF9 ");  // in MSWIN949, padded to four bytes
    dv_time_t time;
    EXPECT_EQ(raise_of([&] { dv_time_from_str_DEPRECATED(&time, "1", 1, "YYYY", 0, 0); }), -5012);
    EXPECT_EQ(raise_of([&] { dv_time_from_str_DEPRECATED(&time, "1", 0, "HH24", 0, 0); }), -5007);
    EXPECT_EQ(raise_of([&] { dv_time_from_str_DEPRECATED(&time, "1", 1, "HH24", 0, 10); }), -5041);
    EXPECT_EQ(dv_time_get_length("HH24:MI:SS.FF", 0, 3), 12);
}

TEST(AnsiLiteral, AcceptsItsFormAlone) {
    constexpr std::tuple<const char *, const char *, bool> cases[] = {
        {"YYYY-MM-DD", "2024-02-29", true},
        {"YYYY-MM-DD", "2024-2-9", true},
        {"YYYY-MM-DD", " 2024- 2- 9", true},
        {"YYYY-MM-DD", "-2024-02-29", false},
        {"SYYYY-MM-DD", "-2024-02-29", true},
        {"YYYY-MM-DD", "2024--02-29", true},  // a separator behind punctuation
        {"YYYY-MM-DD", "x024-02-29", false},
        {"YYYY-MM-DD", "2024-Feb-29", false},
        {"YYYY-MON-DD", "2024-02-29", false},
        {"HH24:MI:SS.FF", "13:05:00.123456789", true},
        {"HH:MI:SS", "01:05:00", false},
        {"HH24:MI", "13:", false},
    };
    for (const auto &[model, text, want] : cases) {
        const compiled_model compiled = reading(model, DV_TYPE_TS_TZ);
        const guarded block(strlen(text), text);
        dt_fmt_parse_ctx_t ctx;
        dt_parse_ctx_init(&ctx, &compiled.ctx, block.text(), static_cast<int>(strlen(text)), nullptr, 0, 1);
        bool accepted = true;
        for (int i = 0; i < compiled.ctx.token_cnt; ++i) {
            ctx.cur_token_info = &compiled.ctx.token_infos[i];
            switch (ctx.cur_token_info->type) {
                case DT_FMT_TYPE_DATE:
                    accepted = accepted && dt_fmt_check_ansi_date(&ctx) != 0;
                    break;
                case DT_FMT_TYPE_TIME:
                    accepted = accepted && dt_fmt_check_ansi_time(&ctx) != 0;
                    break;
                default:
                    accepted = accepted && dt_fmt_check_ansi_punc(&ctx) != 0;
            }
        }
        EXPECT_EQ(accepted && ctx.str_idx == ctx.str_len, want) << model << ": " << text;
    }
}
