// Zones in text: every abbreviation of every region's history is read back beside its region. zones_2011_test
// has these tests too, over older tables, where abbreviations differ in letter case only or have signs and
// digits.

#include <gtest/gtest.h>

#include <set>

#include "ascii.h"
#include "dvtypes/timestamp_tz.h"
#include "model_text.h"

using namespace dv::test;

namespace {

timezone_t region_(int id) {
    return {100, 0, 0, {static_cast<uint8_t>(id / 256), static_cast<uint8_t>(id % 256)}};
}

// An instant well inside the period that an entry of a history stands for: behind its first second or before
// its last; any for the one entry of a region whose clocks never changed.
dv_date_t inside_(const tz_region_t &region, int i) {
    if (region.info_cnt == 1) return make_date(2011, 7, 1);
    dv_date_t utc = region.infos[i].normal;
    dv_date_add_field(&utc, DT_FMT_UNIT_HOUR, i % 2 == 0 ? 5 : -5);
    return utc;
}

std::string read_back_(const compiled_model &model, const std::string &text, const compiled_model &writer) {
    timezone_t session;
    timezone_init(&session);
    session.zone_id[0] = TZ_ID_OFFSET >> 8;
    session.zone_id[1] = TZ_ID_OFFSET & 0xFF;
    dv_ts_tz_t value{};
    return text_or_error([&](char *to, int size) {
        dv_ts_tz_from_str(&value, text.data(), static_cast<int>(text.size()), &model.ctx, 9, &session);
        dv_ts_tz_to_str(&value, to, size, &writer.ctx, 9);
    });
}

}  // namespace

TEST(ZoneRead, ReadsBackEveryAbbreviationOfEveryRegion) {
    const compiled_model behind = reading("YYYY-MM-DD HH24:MI:SS TZR TZD", DV_TYPE_TS_TZ);
    const compiled_model before = reading("TZD TZR YYYY-MM-DD HH24:MI:SS", DV_TYPE_TS_TZ);
    const compiled_model writer = writing("YYYY-MM-DD HH24:MI:SS TZR", DV_TYPE_TS_TZ);
    size_t texts = 0;
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const tz_region_t &region = region_tab_[id];
        std::set<std::string> seen;
        for (int i = 0; i < region.info_cnt; ++i) {
            const dv_date_t utc = inside_(region, i);
            const timezone_t zone = region_(id);
            char abbreviation[64];
            timezone_get_zone_abbr(&zone, &utc, abbreviation, sizeof abbreviation);
            if (*abbreviation == '\0' || !seen.insert(abbreviation).second) continue;
            dv_ts_tz_t value{};
            std::memcpy(&value, &utc, sizeof utc);
            value.tz = zone;
            timezone_adjust(&value.tz, &utc);
            const std::string text =
                text_or_error([&](char *to, int size) { dv_ts_tz_to_str(&value, to, size, &writer.ctx, 9); });
            const size_t clock_end = text.find(' ', 12);
            std::string lower = abbreviation;
            for (char &c : lower) c = dv::impl::to_lower(c);
            const std::string first =
                abbreviation + text.substr(clock_end).append(" ").append(text, 0, clock_end);
            EXPECT_EQ(read_back_(behind, std::string(text).append(" ").append(lower), writer), text) << lower;
            EXPECT_EQ(read_back_(behind, std::string(text).append(" ").append(abbreviation), writer), text)
                << abbreviation;
            EXPECT_EQ(read_back_(before, first, writer), text) << abbreviation;
            ++texts;
        }
    }
    EXPECT_GT(texts, size_t{TZ_ID_MAX});
    RecordProperty("texts", static_cast<int>(texts));
}
