// Datetimes as ISO 8601 texts, without a model.

#include "dvtypes/iso.h"

#include <gtest/gtest.h>

#include <regex>

#include "../timestamp/zoned_support.h"

using namespace dv::test;

namespace {

template <auto ToIso, typename Record>
std::string iso_(const Record &record) {
    char text[DV_ISO_TS_TZ_SIZE];
    const int length = ToIso(&record, text, sizeof text);
    EXPECT_EQ(static_cast<size_t>(length), strlen(text));
    return text;
}

template <typename Record>
std::vector<uint8_t> bytes_(const Record &record) {
    const auto *bytes = reinterpret_cast<const uint8_t *>(&record);
    return {bytes, bytes + sizeof record};
}

template <auto FromIso, typename Record>
int read_(std::string_view text, Record &record) {
    const guarded block(text.size(), text.data());
    return raise_of([&] { FromIso(&record, block.text(), static_cast<int>(text.size())); });
}

template <auto FromIso, auto ToIso, typename Record>
void expect_round_trip_(const Record &record) {
    const std::string text = iso_<ToIso>(record);
    Record read;
    memset(&read, 0xEE, sizeof read);
    EXPECT_EQ((read_<FromIso>(text, read)), 0) << text;
    EXPECT_EQ(bytes_(read), bytes_(record)) << text;
}

// What a text that a reader may be given is made of.
std::string random_text_(number_source &source) {
    constexpr const char *pieces[] = {"2024-02-29",  "1999-12-31",
                                      "-0044-03-15", "20240229",
                                      "+2024-1-05",  "24-02-29",
                                      "2024-13-01",  "0000-01-01",
                                      "T",           "t",
                                      " ",           "  ",
                                      "13",          "13:05",
                                      "13:5",        "13:05:07",
                                      "130507",      "1305",
                                      "24:00",       "13:60",
                                      ":",           ".",
                                      ".5",          ".123456789",
                                      ".1234567890", "Z",
                                      "z",           "+09",
                                      "+09:00",      "-0530",
                                      "+9",          "-12:59",
                                      "+14:01",      "+00:30",
                                      "-00:30",      "UTC",
                                      "Asia/Seoul",  "asia/seoul KST",
                                      "x",           "\0"};
    std::string text;
    const char *const first = pieces[source.pick(0, 4)];
    text = source.pick(0, 9) == 0 ? "" : first;
    for (int i = source.pick(0, 4); i > 0; --i)
        text += pieces[source.pick(0, static_cast<int>(std::size(pieces)) - 1)];
    if (!text.empty() && source.pick(0, 7) == 0)
        text.erase(static_cast<size_t>(source.pick(0, static_cast<int>(text.size()) - 1)), 1);
    return text;
}

// The same grammar, and the values it stands for, by another hand.
struct matched_t {
    bool accepted;
    int year, month, day, hour, minute, second, nanosecond;
    std::string zone;
};
matched_t match_(const std::string &text) {
    static const std::regex extended(
        "([+-]?[0-9]{4})-([0-9]{2})-([0-9]{2})(?:[Tt "
        "]([0-9]{2})(?::([0-9]{2})(?::([0-9]{2})(?:[.]([0-9]{1,9}))?)?)?)?(.*)");
    static const std::regex compact(
        "([+-]?[0-9]{4})([0-9]{2})([0-9]{2})(?:[Tt "
        "]([0-9]{2})(?:([0-9]{2})(?:([0-9]{2})(?:[.]([0-9]{1,9}))?)?)?)?(.*)");
    std::smatch parts;
    matched_t found{};
    if (!std::regex_match(text, parts, extended) && !std::regex_match(text, parts, compact)) return found;
    const auto number = [&](size_t i) { return parts[i].matched ? std::stoi(parts[i]) : 0; };
    found = {true, number(1), number(2), number(3), number(4), number(5), number(6), 0, parts[8]};
    if (parts[7].matched) found.nanosecond = std::stoi((parts[7].str() + "00000000").substr(0, 9));
    return found;
}

TEST(IsoText, ReadsBackWhatItWrites) {
    number_source source(20240229);
    for (long round = 0; round < scaled(20'000); ++round) {
        const dv_timestamp_t ts = random_timestamp(source);
        dv_date_t date = date_of(ts);
        if (raise_of([&] { dv_date_is_valid(&date); }) != 0) continue;  // 29 February before year 1
        expect_round_trip_<dv_timestamp_from_iso, dv_timestamp_to_iso>(ts);
        expect_round_trip_<dv_date_from_iso, dv_date_to_iso>(date);
        dv_time_t time;
        dv_time_from_timestamp(&time, &ts);
        expect_round_trip_<dv_time_from_iso, dv_time_to_iso>(time);
    }
}

TEST(IsoText, IsTheTextUnderTheModel) {
    number_source source(20240229);
    const compiled_model model = writing("SYYYY-MM-DD HH24:MI:SS.FF9", DV_TYPE_TIMESTAMP);
    for (long round = 0; round < scaled(20'000); ++round) {
        const dv_timestamp_t ts = random_timestamp(source);
        char text[64];
        dv_timestamp_to_str(&ts, text, sizeof text, &model.ctx, 9);
        EXPECT_EQ(iso_<dv_timestamp_to_iso>(ts), text + (text[0] == ' ' ? 1 : 0));
    }
}

// Around every change of every region, where local times exist twice or not at all.
TEST(IsoText, KeepsInstantAndZoneAroundAllTransitions) {
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const tz_region_t &region = region_tab_[id];
        for (int i = 0; i < region.info_cnt; ++i) {
            const tz_info_t &info = region.infos[i];
            // Records have no place for seconds of an offset, nor for offsets from +00:01 to +00:59.
            if (region.info_cnt == 1 || info.utc_sec != 0 || (info.utc_hour == 0 && info.utc_min > 0))
                continue;
            dv_ts_ltz_t instant{};
            dv_timestamp_from_date(&instant.utc, &info.normal);
            const timezone_t zone = zone_of(region.canon_name);
            dv_ts_tz_t ts_tz;
            dv_ts_tz_from_ts_ltz(&ts_tz, &instant, &zone);
            const std::string text = iso_<dv_ts_tz_to_iso>(ts_tz);
            dv_ts_tz_t read{};
            ASSERT_EQ((read_<dv_ts_tz_from_iso>(text, read)), 0) << text;
            EXPECT_EQ(bytes_(read), bytes_(ts_tz)) << text;
        }
    }
}

// Minutes of a UTC offset, as the texts of ISO 8601 write them: "+09:00", "+0900".
std::string offset_(int minutes, const char *separator) {
    char text[16];
    snprintf(text, sizeof text, "%c%02d%s%02d", minutes < 0 ? '-' : '+', std::abs(minutes) / 60, separator,
             std::abs(minutes) % 60);
    return text;
}

TEST(IsoText, ReadsEveryOffsetBehindEitherForm) {
    constexpr int noon = 12 * 60, day = 24 * 60;
    for (int offset = -(12 * 60 + 59); offset <= 14 * 60; ++offset) {
        for (const char *local :
             {"2025-03-28T12:00:00", "2025-03-28 12:00", "20250328t12", "20250328 1200"}) {
            for (const std::string &zone :
                 {offset_(offset, ":"), offset_(offset, ""), " " + offset_(offset, "")}) {
                dv_ts_tz_t read{};
                const int code = read_<dv_ts_tz_from_iso>(local + zone, read);
                if (offset > 0 && offset < 60) {  // no record holds it
                    ASSERT_EQ(code, -5099) << local << zone;
                    continue;
                }
                ASSERT_EQ(code, 0) << local << zone;
                const dv_date_t utc = date_of(read.utc);
                const int minute = (utc.day - 28) * day + utc.hour * 60 + utc.minute;
                ASSERT_EQ(minute, noon - offset) << local << zone;
                ASSERT_TRUE(iso_<dv_ts_tz_to_iso>(read).ends_with(" " + offset_(offset, ":"))) << zone;
                expect_round_trip_<dv_ts_tz_from_iso, dv_ts_tz_to_iso>(read);
            }
        }
    }
}

TEST(IsoText, AgreesWithAGrammarOfAnotherHand) {
    number_source source(20240229);
    for (long round = 0; round < scaled(20'000); ++round) {
        const std::string text = random_text_(source);
        const matched_t want = match_(text);
        dv_timestamp_t made{}, read{};
        const bool is_whole = want.accepted && want.zone.empty();
        const int made_code = is_whole ? raise_of([&] {
            dv_timestamp_from_unit_values(&made, want.year, want.month, want.day, want.hour, want.minute,
                                          want.second, want.nanosecond);
        })
                                       : -5113;
        EXPECT_EQ((read_<dv_timestamp_from_iso>(text, read)) == 0, made_code == 0) << text;
        if (made_code == 0) {
            EXPECT_EQ(bytes_(read), bytes_(made)) << text;
        }
    }
}

TEST(IsoText, IsNotWrittenWhereItDoesNotFit) {
    dv_timestamp_t longest{};
    dv_timestamp_from_unit_values(&longest, -9999, 12, 31, 23, 59, 59, 999'999'999);
    for (int size = -1; size <= DV_ISO_TIMESTAMP_SIZE; ++size) {
        const guarded block(static_cast<size_t>(std::max(size, 0)), nullptr);
        const int code = raise_of([&] { dv_timestamp_to_iso(&longest, block.text(), size); });
        EXPECT_EQ(code, size < DV_ISO_TIMESTAMP_SIZE ? -3005 : 0) << size;
    }
}

}  // namespace
