// What a name costs: a month fetched in a character set, and a day found by its name.
//
// A fetch converts the stored name each time. Beside it, over the same names in the same order: a copy out of
// a table of names converted before the clock starts, the least that a fetch could cost; and a converter of
// iconv opened for each name, the most. Sets and languages are such that every letter is in the set.

#include <benchmark/benchmark.h>
#include <iconv.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/datetime_fmt.h"
#include "gauged.h"
#include "operand_count.h"

namespace {

struct case_t {
    dv_nls_date_lang_e lang;
    dvstr_charset_e charset;
    const char *iconv_name;
};
constexpr case_t _cases[] = {
    {DV_NLS_DATE_LANG_AMERICAN, DVSTR_CHARSET_UTF8, "UTF-8"},
    {DV_NLS_DATE_LANG_KOREAN, DVSTR_CHARSET_UTF8, "UTF-8"},
    {DV_NLS_DATE_LANG_VIETNAMESE, DVSTR_CHARSET_UTF8, "UTF-8"},
    {DV_NLS_DATE_LANG_RUSSIAN, DVSTR_CHARSET_UTF8, "UTF-8"},
    {DV_NLS_DATE_LANG_AMERICAN, DVSTR_CHARSET_MSWIN949, "UHC"},
    {DV_NLS_DATE_LANG_KOREAN, DVSTR_CHARSET_MSWIN949, "UHC"},
    {DV_NLS_DATE_LANG_RUSSIAN, DVSTR_CHARSET_MSWIN949, "UHC"},
    {DV_NLS_DATE_LANG_JAPANESE, DVSTR_CHARSET_SJIS, "CP932"},
    {DV_NLS_DATE_LANG_RUSSIAN, DVSTR_CHARSET_SJIS, "CP932"},
};

// The working context of one call; every month in every case, shuffled to defeat branch predictors.
struct session_t {
    explicit session_t(const case_t &c) {
        fmt_ctx.charset = c.charset;
        fmt_ctx.nls_date_ctx.lang = c.lang;
        parse_ctx.fmt_ctx = &fmt_ctx;
        for (int i = 0; i < dv::bench::operand_count; ++i)
            requests.push_back({i % 12, i / 12 % NLS_DATE_LANG_CASES});
        std::shuffle(requests.begin(), requests.end(), std::mt19937(1));
    }
    struct request_t {
        int idx, kase;
    };
    dt_fmt_ctx_t fmt_ctx{};
    dt_fmt_parse_ctx_t parse_ctx{};
    std::vector<request_t> requests;
};
using request_t = session_t::request_t;

// run(request) for every request; is_right(request, its result) is asked before the clock starts.
template <typename F, typename R>
void measure_(benchmark::State &state, const session_t &session, F run, R is_right) {
    for (const request_t &r : session.requests) {
        if (!is_right(r, run(r))) return state.SkipWithError("wrong answer");
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const request_t &r : session.requests) benchmark::DoNotOptimize(run(r));
    }
    state.counters["per_op"] =
        benchmark::Counter(static_cast<double>(session.requests.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <typename F>
void measure_fetch_(benchmark::State &state, session_t &session, F fetch) {
    measure_(state, session, fetch, [&](const request_t &r, const std::string &got) {
        return got == nls_date_lang_get_std_month(&session.parse_ctx, r.idx, r.kase);
    });
}

void fetch_by_library_(benchmark::State &state, const case_t &c) {
    session_t session(c);
    measure_fetch_(state, session, [&](const request_t &r) {
        return nls_date_lang_get_std_month(&session.parse_ctx, r.idx, r.kase);
    });
}

void fetch_from_table_(benchmark::State &state, const case_t &c) {
    session_t session(c);
    std::string table[12][NLS_DATE_LANG_CASES];
    for (const request_t &r : session.requests) {
        table[r.idx][r.kase] = nls_date_lang_get_std_month(&session.parse_ctx, r.idx, r.kase);
    }
    measure_fetch_(state, session, [&](const request_t &r) {
        const std::string &name = table[r.idx][r.kase];
        std::memcpy(session.parse_ctx.tmp_buf, name.c_str(), name.size() + 1);
        return session.parse_ctx.tmp_buf;
    });
}

void fetch_by_iconv_(benchmark::State &state, const case_t &c) {
    session_t session(c);
    measure_fetch_(state, session, [&](const request_t &r) {
        nls_date_lang_val_t name = std_month_tab_[int{c.lang} * NLS_DATE_LANG_CASES + r.kase][r.idx];
        char *in = reinterpret_cast<char *>(name.val);
        char *out = session.parse_ctx.tmp_buf;
        auto in_left = static_cast<size_t>(name.len);
        size_t out_left = DT_FMT_TMP_BUF_SIZE - 1;
        const iconv_t converter = iconv_open(c.iconv_name, "UCS-2BE");
        iconv(converter, &in, &in_left, &out, &out_left);
        iconv_close(converter);
        *out = '\0';
        return session.parse_ctx.tmp_buf;
    });
}

// Full names, initial capitals.
void find_day_(benchmark::State &state, const case_t &c) {
    session_t session(c);
    std::string days[7];
    for (int day = 0; day < 7; ++day) {
        days[day] = nls_date_lang_get_std_day(&session.parse_ctx, day, DT_FMT_CASE_INIT);
    }
    const auto find = [&](const request_t &r) {
        const std::string &name = days[r.idx % 7];
        return dt_fmt_get_day_idx_of_week(name.data(), static_cast<int>(name.size()), c.lang, c.charset);
    };
    measure_(state, session, find, [](const request_t &r, int day) { return day == r.idx % 7; });
}

const bool _registered = [] {
    for (const case_t &c : _cases) {
        const std::string on =
            std::string("/") + nls_date_lang_name_tab_[c.lang] + "_" + _charset_info[c.charset].name + "/";
        const auto add = [&](const std::string &operation, const char *library, auto *run) {
            benchmark::RegisterBenchmark((operation + on + library).c_str(),
                                         [run, &c](benchmark::State &state) { run(state, c); });
        };
        add("fetch_month", "dvtypes", fetch_by_library_);
        add("fetch_month", "table", fetch_from_table_);
        add("fetch_month", "iconv_per_call", fetch_by_iconv_);
        add("find_day", "dvtypes", find_day_);
    }
    return true;
}();

}  // namespace
