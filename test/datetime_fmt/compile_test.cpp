// Datetime models: what they compile to, what is refused and in whose name, settings, flattening.

#include <gtest/gtest.h>

#include "compiled_model.h"
#include "number_support.h"

using namespace dv::test;
using namespace std::literals;

namespace {

constexpr auto _long_model = R"(FM"a"YYYY"b"-MM-DD" "HH24:MI:SS.FF9" "TZR"end"/"x"/"y"/FX"z")"sv;

constexpr std::pair<std::string_view, std::string_view> _models[] = {
    {"yyyy+MM--:\x80\tDD", "YYYY4l, '+'1l MM2u, '--:\x80\t'5l DD2u 14"},
    {"MonthmonthmONTHMOnthA.M.a.d.P.m.cC", "MONTH9i MONTH9l MONTH9l MONTH9u A.M.4u A.D.4l P.M.4i CC2l 50"},
    {"DDdDayDyDa.d.", "DDD3u DAY9i DY3i D1u A.D.4l 20"},
    {"YYYYYYYQYYJYEARYIYYWIWI", "YYYY4u YYY3u Q1u YY2u J10u YEAR40u Y1u IYY3u W1u IW2u I1u 68"},
    {"SYYYYSYEARRRRRRMRRSSSSSSSSCC", "SYYYY4u SYEAR40u RRRR4u RM1u RR2u SSSSS5u SS2u SCC3u 62"},
    {"HH12HH24HHMIMMMONXff9FF", "HH122u HH242u HH2u MI2u MM2u MON3u X1u FF9u_9 FF9u 29"},
    {"tzhTzrTZMtzdDDTHTZH", "TZH2u TZR32u TZM2u TZD8l DD2us0 TZH2u 44"},
    {"FMDDTHfmddspFXMMTHSPFF2SpThfx", "FM0uf DD2us0f FM0l DD2lS0 FX0ux MM2uo0x FF9uO2x FX0u 40"},
    {R"(YYYY" at ".""mi"Abc)", R"(YYYY4u, " at "4l, '.'1l, ""0l MI2l, "Abc"3i 14)"},
    {"\"A\0b\"\"A.\"\"A.b\""sv, "\"A\0b\"3u, \"A.\"2u, \"A.b\"3i 8"sv}};
constexpr std::tuple<std::string_view, int, std::string_view> _refused[] = {
    {"MIH", DV_TYPE_DATE, "-5014 parse_dt_fmt_"},
    {"DDTHTH", DV_TYPE_DATE, "-5014 parse_dt_fmt_"},
    {"MISP", DV_TYPE_DATE, "0 "},
    {"AMSP", DV_TYPE_DATE, "-5014 dt_fmt_parse_token"},
    {"FF0", DV_TYPE_TIME, "-5041 parse_fsec_prec_"},
    {"MIFF", DV_TYPE_DATE, "-5011 dt_fmt_ctx_set"},
    {"TZH", DV_TYPE_DATE, "-5011 dt_fmt_ctx_set"},
    {"MIYY", DV_TYPE_TIME, "-5012 dt_fmt_ctx_set"},
    {"TZR", DV_TYPE_TIME, "-5012 dt_fmt_ctx_set"}};

TEST(ModelCompile, MakesRecordsOrRefusesInTheNameOfTheFinder) {
    for (const auto &[model, records] : _models) EXPECT_EQ(dump(compiled_model(model).ctx), records) << model;
    for (const auto &[model, type, refusal] : _refused) {
        const dv_error_t error = compiled_model(model, /*is_reading=*/false, type).error;
        EXPECT_EQ(std::to_string(error.code) + ' ' + error.function, refusal) << model;
    }
    for (const char *word : {"X", "FM", "FX", "TZR", "TZD", "AD", "P.M.", "DY", "\"abc\"", "-", "YEAR"})
        EXPECT_EQ(compiled_model(std::string(word) + "TH").error.code, -5014) << word;
    EXPECT_EQ(compiled_model("DDTH", /*is_reading=*/true).error.code, -5014);
}

// What elements give, as their users know it, and what must not stand beside what: the outcome in this order
// and in the other.
constexpr std::string_view _fields[] = {"YEAR: IYYY IYY IY I YEAR SYEAR YYYY YYY YY Y RR RRRR ",
                                        "MONTH: MM MON MONTH RM ",
                                        "DAY: D DAY DD DY ",
                                        "AD/BC: AD A.D. BC B.C. ",
                                        "AM/PM: AM A.M. PM P.M. ",
                                        "HOUR: HH HH12 ",
                                        "MINUTE: MI ",
                                        "SECOND: SS ",
                                        "fractions of a second: FF ",
                                        ": CC SCC WW W Q IW J X FM FX "};
constexpr std::string_view _pairs[][4] = {{"YEAR", "SYYYY", "-5112YEAR", "-5112YEAR"},
                                          {"SYYYY", "AD/BC", "-5039", "-5039"},
                                          {"HH24", "AM/PM", "-5040", "-5040"},
                                          {"HOUR", "HH24", "-5112HOUR", "0"},
                                          {"HOUR", "SSSSS", "-5026", "-5026"},
                                          {"HH24", "SSSSS", "0", "-5026"},
                                          {"MINUTE", "SSSSS", "-5027", "-5027"},
                                          {"SECOND", "SSSSS", "-5028", "-5028"},
                                          {"TZR", "TZH", "-5097TZH", "-5096TZR"},
                                          {"TZR", "TZM", "-5097TZM", "-5096TZR"},
                                          {"TZD", "TZH", "-5097TZH", "-5096TZD"},
                                          {"TZD", "TZM", "-5097TZM", "-5096TZD"},
                                          {"HH24", "HH24", "0", ""},
                                          {"SYYYY", "SYYYY", "0", ""},
                                          {"SSSSS", "SSSSS", "0", ""},
                                          {"", "", "0", ""}};

std::string field_of_(const std::string &element) {
    for (const std::string_view field : _fields) {
        if (field.find(' ' + element + ' ') != field.npos)
            return std::string(field.substr(0, field.find(':')));
    }
    return element;
}

std::string expected_(const std::string &first, const std::string &second) {
    for (const auto &[one, other, forth, back] : _pairs) {
        if (first == one && second == other) return std::string(forth);
        if (first == other && second == one) return std::string(back);
    }
    return first == second ? "-5112" + first : "0";
}

TEST(ModelCompile, RefusesFieldsTwiceAndContradictionsForReading) {
    constexpr size_t end = dv::impl::FMT_TOKEN_IDS_END;
    for (size_t pair = 0; pair < end * end; ++pair) {
        if (!dv::impl::is_keyword(pair / end) || !dv::impl::is_keyword(pair % end)) continue;
        const std::string first = dv::impl::fmt_tokens_[pair / end].token;
        const std::string second = dv::impl::fmt_tokens_[pair % end].token;
        const dv_error_t error =
            compiled_model(std::string(first).append(1, ' ').append(second), /*is_reading=*/true).error;
        const std::string want = expected_(field_of_(first), field_of_(second));
        EXPECT_EQ(std::to_string(error.code) + error.args[0], want) << first << ' ' << second;
        EXPECT_EQ(error.function, error.code == 0 ? ""sv : "check_duplicated_token_"sv);
    }
}

TEST(ModelCompile, LosesNothingWhicheverAllocationFails) {
    const auto fails = [](long call) {  // compiled_model ends the process over a leak
        return compiled_model(_long_model, /*is_reading=*/true, 0, call).error.code == DV_ERR_NO_MEMORY;
    };
    long call = 0;
    while (fails(call)) ++call;
    EXPECT_EQ(call, 1 + 16 + 3);  // array, texts, growth
}

TEST(ModelSettings, ReplaceWhatIsInForce) {
    compiled_model model("DD");
    const auto set = [&](const std::string &text) {
        const auto size = static_cast<int>(text.size());
        const int code = raise_of([&] { dt_fmt_ctx_set_user_nls(&model, &model.ctx, text.data(), size); });
        const dv_nls_date_ctx_t &user = model.ctx.user_date_ctx, &used = model.ctx.nls_date_ctx;
        return std::array{code, user.lang, user.cal, used.lang, used.cal};
    };
    const std::string cut_behind_korean = "NLS_DATE_LANGUAGE=KOREAN" + std::string(232, ' ') + "=";
    EXPECT_EQ(set(""), (std::array{0, 7, 1, 1, 0}));
    EXPECT_EQ(set("NLS_SORT=BINARY"), (std::array{-11035, 7, 1, 1, 0}));
    EXPECT_EQ(set(cut_behind_korean), (std::array{0, 1, 1, 1, 1}));
    EXPECT_EQ(set("NLS_CALENDAR = GREGORIAN"), (std::array{0, 1, 0, 1, 0}));
}

TEST(ModelSerialize, GivesABlockThatMovesAndStopsAtTheEndOfAShortBuffer) {
    const compiled_model model(_long_model);
    const int size = dt_fmt_ctx_get_serialize_size(&model.ctx), texts = 40 + 40 * model.ctx.token_cnt;
    for (int room = 0; room <= size; ++room) {
        const guarded block(static_cast<size_t>(room));
        const assertion_watch watch;
        dt_fmt_ctx_serialize(&model.ctx, block.text(), room);
        EXPECT_TRUE(block.intact() && watch.count() == (room < size ? 1 : 0)) << room;
        if (room < size) continue;
        const guarded moved(static_cast<size_t>(size), block.text());
        for (int at = 8; at < texts; at += at == 8 ? 56 : 40) {  // where the pointers are
            char *pointer = nullptr;
            std::memcpy(&pointer, block.text() + at, sizeof pointer);
            if (pointer != nullptr) pointer = moved.text() + (pointer - block.text());
            std::memcpy(moved.text() + at, &pointer, sizeof pointer);
        }
        EXPECT_EQ(dump(*reinterpret_cast<dt_fmt_ctx_t *>(moved.text())), dump(model.ctx));
        EXPECT_EQ(std::memcmp(moved.text() + 16, &model.ctx.has_tz_token, 24), 0);
    }
}

}  // namespace
