// The straight road for texts of the ISO shape beside the walk over the model's elements: the same bytes, the
// same errors. An empty literal in front keeps a model off the straight road and changes nothing else.

#include <gtest/gtest.h>

#include "left_behind.h"
#include "model_text.h"
#include "text_type.h"

using namespace dv::test;

namespace {

constexpr const char *_models[] = {
    "YYYY-MM-DD",
    "YYYY-MM-DD HH24:MI:SS",
    "YYYY-MM-DD HH24:MI:SS.FF",
    "HH24:MI:SS",
    "HH24:MI:SS.FF",
    "YYYY-MM-DD\"T\"HH24:MI:SS.FF",
    "yyyy/mm.dd\nHh24\"5\"mi ss,ff",
    "YYYY\"\x01\"MM\"0\"DD\" \"HH24+MI-SS FF",
    "YYYY\xEC-MM-DD HH24:MI:SS",  // refused
    // near misses
    "FXYYYY-MM-DD",
    "HH24:MI:SSFX.FF",
    "YYYY-MM-FMDD",
    "YYYY--MM-DD",
    "YYYY-DD-MM",
    "YYYYMMDDHH24MISSFF",
    "DD/MM/YYYY HH24:MI",
    "MM-DD-YY",
    "RRRR-MM-DD HH24:MI:SS",
    "SYYYY-MM-DD HH24:MI:SS",
    "YYYY-MON-DD HH24:MI:SS",
    "YYYY-MM-DD HH12:MI:SS.FF",
    "YYYYTH-MMSP-DD HH24:MI:SS",
    "HH24:MI:SS FF X",
};

// Where a type's bytes lie in those of a timestamp.
template <typename Type>
constexpr size_t first_ = Type::type == DV_TYPE_TIME ? 4 : 0;

// A model and its twin. Modes are those of every record; FM and FX in a model would be elements of their own.
struct road_pair_t {
    compiled_model straight, walked;
    road_pair_t(const std::string &model, bool is_reading, bool is_fill_mode, bool is_exact_mode)
        : straight(model, is_reading), walked("\"\"" + model, is_reading) {
        for (dt_fmt_ctx_t *ctx : {&straight.ctx, &walked.ctx}) {
            for (int i = 0; i < ctx->token_cnt; ++i) {
                ctx->token_infos[i].is_fill_mode |= is_fill_mode;
                ctx->token_infos[i].is_exact_mode |= is_exact_mode;
            }
        }
    }
};

// With a digit behind FF.
std::string with_precision_(std::string model, int digits) {
    const size_t fraction = model.find_last_of("Ff");
    if (digits != 0 && fraction != model.npos && fraction != 0 && (model[fraction - 1] | 0x20) == 'f') {
        model.insert(fraction + 1, std::to_string(digits));
    }
    return model;
}

template <typename Type>
left_behind_t written_(const dt_fmt_ctx_t &model, const typename Type::record &value, int size,
                       int precision) {
    return left_behind(static_cast<size_t>(size),
                       [&](char *text) { return Type::write(&value, text, size, &model, {precision}); });
}

template <typename Type>
left_behind_t read_(const dt_fmt_ctx_t &model, std::string_view text, int precision) {
    using record = typename Type::record;
    const guarded block(text.size(), text.data());
    return left_behind(sizeof(record), [&](char *value) {
        Type::read(reinterpret_cast<record *>(value), block.text(), static_cast<int>(text.size()), &model,
                   {precision});
        return 0L;
    });
}

// The twelve bytes of a timestamp, of which a DATE is the beginning and a TIME the end: a valid one, one with
// a strange byte, or any.
dv_timestamp_t any_record_(number_source &source) {
    dv_timestamp_t ts;
    dv_date_t date = random_date(source);
    const int kind = source.pick(0, 9);
    if (kind == 0) date = make_date(1582, 10, source.pick(3, 16));  // days that the calendar lacks
    if (kind == 1) date = make_date(0, source.pick(1, 12), source.pick(1, 28));
    dv_timestamp_from_date(&ts, &date);
    const int fraction =
        source.pick(0, 3) == 0 ? source.pick(999'999'990, 999'999'999) : source.pick(0, 999'999'999);
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, fraction / (source.pick(0, 1) != 0 ? 1 : 1'000'000), 1, 1);
    constexpr int strange[] = {0, 1, 24, 60, 99, 100, 127, 128, 199, 200, 255};
    const int how = source.pick(0, 3);
    if (how == 0)
        reinterpret_cast<uint8_t *>(&ts)[source.pick(0, 11)] =
            static_cast<uint8_t>(strange[source.pick(0, 10)]);
    if (how == 1) source.fill(&ts, sizeof ts);
    return ts;
}

template <typename Type>
void compare_writing_(const std::string &model, int precision, number_source &source) {
    const road_pair_t roads(model, /*is_reading=*/false, source.pick(0, 3) == 0, source.pick(0, 3) == 0);
    for (long round = scaled(200); round > 0; --round) {
        const dv_timestamp_t ts = any_record_(source);
        typename Type::record value;
        std::memcpy(&value, reinterpret_cast<const char *>(&ts) + first_<Type>, sizeof value);
        const int size = source.pick(0, 2) == 0 ? source.pick(1, 45) : 45;
        ASSERT_EQ(written_<Type>(roads.straight.ctx, value, size, precision),
                  written_<Type>(roads.walked.ctx, value, size, precision))
            << model << ", precision " << precision << ", size " << size << ": "
            << testing::PrintToString(ts);
    }
}

template <typename Type>
void compare_reading_(const std::string &model, int precision, number_source &source) {
    const road_pair_t roads(model, /*is_reading=*/true, source.pick(0, 3) == 0, source.pick(0, 3) == 0);
    const compiled_model full(model);
    for (long round = scaled(500); round > 0; --round) {
        const dv_timestamp_t ts = any_record_(source);
        char right[80] = "1";
        raise_of([&] { dv_timestamp_to_str(&ts, right, 80, &full.ctx, source.pick(0, 9)); });
        const std::string text = damaged(source, right);
        ASSERT_EQ(read_<Type>(roads.straight.ctx, text, precision),
                  read_<Type>(roads.walked.ctx, text, precision))
            << model << ", precision " << precision << ": " << testing::PrintToString(text);
    }
}

template <typename Compare>
void with_every_model_(Compare compare) {
    const assertion_watch quiet;  // records of any bytes make assertions fail
    for (const std::string model : _models) {
        for (int digits = 0; digits <= 9; ++digits) {
            const std::string given = with_precision_(model, digits);
            if (digits == 0 || given != model) compare(given);
        }
    }
}

TEST(IsoText, IsWrittenAsTheWalkWritesIt) {
    number_source source(1);
    with_every_model_([&](const std::string &model) {
        for (const int precision : {-1, 0, 3, 9}) {
            compare_writing_<date_text>(model, precision, source);
            compare_writing_<time_text>(model, precision, source);
            compare_writing_<timestamp_text>(model, precision, source);
        }
    });
}

// Elements behind a model's count are not looked at, though they would make it one of the shape.
TEST(IsoText, EndsWhereTheModelEnds) {
    const dv_timestamp_t ts = {120, 124, 2, 29, 13, 5, 9, 0, {0x07, 0x5B, 0xCD, 0x15}};
    for (const char *model : {"YYYY-MM-DD HH24:MI:SS.FF", "HH24:MI:SS.FF"}) {
        const road_pair_t roads(model, /*is_reading=*/false, /*is_fill_mode=*/false, /*is_exact_mode=*/false);
        dt_fmt_ctx_t straight = roads.straight.ctx, walked = roads.walked.ctx;
        while (--straight.token_cnt > 0) {
            --walked.token_cnt;
            EXPECT_EQ(written_<timestamp_text>(straight, ts, 45, 9),
                      written_<timestamp_text>(walked, ts, 45, 9))
                << model << straight.token_cnt;
        }
    }
}

TEST(IsoText, IsReadAsTheWalkReadsIt) {
    number_source source(2);
    with_every_model_([&](const std::string &model) {
        compare_reading_<date_text>(model, source.pick(0, 9), source);
        compare_reading_<time_text>(model, source.pick(0, 9), source);
        compare_reading_<timestamp_text>(model, source.pick(0, 9), source);
    });
}

}  // namespace
