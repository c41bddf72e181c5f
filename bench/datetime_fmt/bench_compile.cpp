// Compiling a datetime model and releasing it. ICU's SimpleDateFormat keeps its pattern as text and reads it
// again for each value; its construction also loads the names and the calendar of its locale, so it is given
// as what a caller pays for a format, and its applyPattern, which changes the text of one that exists, too.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "dvtypes/datetime_fmt.h"
#include "gauged.h"

#ifdef DV_HAVE_ICU
#include <unicode/smpdtfmt.h>
#endif

namespace {

struct model_t {
    const char *name;
    const char *text;
    int elements;
    const char *icu_pattern;
    bool is_readable;  // no field twice
};
constexpr model_t _models[] = {
    {"date", "YYYY-MM-DD", 5, "yyyy-MM-dd", true},
    {"timestamp", "YYYY-MM-DD HH24:MI:SS.FF9", 13, "yyyy-MM-dd HH:mm:ss.SSSSSSSSS", true},
    {"long", "FMDay, DD \"of\" Month YYYY B.C., \"at\" HH12:MI:SS.FF3 A.M. (TZR, \"offset\" TZH:TZM)", 33,
     "EEEE, d 'of' MMMM yyyy G, 'at' hh:mm:ss.SSS a (VV, 'offset' xxx)", false},
};

void compile_(benchmark::State &state, const model_t &model, uchar is_reading) {
    const auto length = static_cast<int>(std::strlen(model.text));
    dt_fmt_ctx_t ctx{};
    for (auto _ : dv::bench::gauged(state)) {
        dt_fmt_ctx_set(_system_allocator, &ctx, model.text, length, DV_TYPE_TS_TZ, is_reading,
                       DVSTR_CHARSET_UTF8);
        const int elements = ctx.token_cnt;
        dt_fmt_ctx_reset(_system_allocator, &ctx);
        if (elements != model.elements) return state.SkipWithError("wrong number of elements");
    }
}

#ifdef DV_HAVE_ICU
void construct_icu_(benchmark::State &state, const model_t &model) {
    const icu::UnicodeString pattern(model.icu_pattern);
    for (auto _ : dv::bench::gauged(state)) {
        UErrorCode error = U_ZERO_ERROR;
        const icu::SimpleDateFormat format(pattern, icu::Locale::getUS(), error);
        if (U_FAILURE(error)) return state.SkipWithError(u_errorName(error));
        benchmark::DoNotOptimize(&format);
    }
}

void apply_icu_(benchmark::State &state, const model_t &model) {
    const icu::UnicodeString pattern(model.icu_pattern);
    UErrorCode error = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString("y"), icu::Locale::getUS(), error);
    for (auto _ : dv::bench::gauged(state)) {
        format.applyPattern(pattern);
        benchmark::DoNotOptimize(&format);
    }
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
}
#endif

const bool _registered = [] {
    for (const model_t &model : _models) {
        const auto add = [&](const char *library, auto run) {
            const std::string name = std::string("compile/") + model.name + '/' + library;
            benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) { run(state, model); });
        };
        add("dvtypes_writing", [](auto &state, const model_t &m) { compile_(state, m, /*is_reading=*/0); });
        if (model.is_readable) {
            add("dvtypes_reading",
                [](auto &state, const model_t &m) { compile_(state, m, /*is_reading=*/1); });
        }
#ifdef DV_HAVE_ICU
        add("icu_construct", construct_icu_);
        add("icu_apply_pattern", apply_icu_);
#endif
    }
    return true;
}();

}  // namespace

BENCHMARK_MAIN();
