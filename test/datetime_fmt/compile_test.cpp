// Datetime models: what is refused beside what, allocations that fail, flattening.

#include <gtest/gtest.h>

#include "compiled_model.h"
#include "number_support.h"

using namespace dv::test;
using namespace std::literals;

namespace {

constexpr auto _long_model = R"(FM"a"YYYY"b"-MM-DD" "HH24:MI:SS.FF9" "TZR"end"/"x"/"y"/FX"z")"sv;

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
        EXPECT_TRUE(is_same_model(*reinterpret_cast<dt_fmt_ctx_t *>(moved.text()), model.ctx));
    }
}

}  // namespace
