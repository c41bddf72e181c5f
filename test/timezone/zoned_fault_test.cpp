// Bytes of zones and timestamps that came from elsewhere.

#include <gtest/gtest.h>

#include "datetime_support.h"
#include "dvtypes/timestamp_tz.h"
#include "dvtypes/timezone_id.h"
#include "raise.h"

using namespace dv::test;

namespace {

dv_timestamp_t timestamp_(int year, int month, int day, int hour, int minute) {
    dv_timestamp_t ts{};
    dv_timestamp_from_unit_values(&ts, year, month, day, hour, minute, 0, 0);
    return ts;
}

// A fixed offset is sound when it is what its own text reads as; a region, when its number is one
// of the 580.
TEST(ZoneFault, IsFoundInAllButRegionsAndTheOffsetsThatCanBeRead) {
    for (int hour = 0; hour < 256; ++hour) {
        for (int minute = 0; minute < 256; ++minute) {
            const timezone_t zone = {
                static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), 0, {581 >> 8, 581 & 255}};
            char text[16];
            timezone_get_zone_name(&zone, text, sizeof text);
            timezone_t read{};
            const bool is_read =
                raise_of([&] { timezone_parse(&read, text, static_cast<int>(strlen(text))); }) == 0;
            const bool is_same = memcmp(&read, &zone, sizeof zone) == 0;
            // "+00:30" is refused, and stands for the offset of half an hour to the west
            const bool is_west = hour == 100 && minute > 0 && minute < 60;
            EXPECT_EQ(timezone_get_fault(&zone) == nullptr, (is_read && is_same) || is_west) << text;
        }
    }
    for (int number = 0; number < 0x10000; ++number) {
        if (number == TZ_ID_OFFSET) continue;
        const timezone_t zone = {
            109, 30, 0, {static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)}};
        EXPECT_EQ(timezone_get_fault(&zone) == nullptr, number < 580) << number;
    }
    timezone_t seconds = {100, 0, 1, {0, 0}};
    EXPECT_NE(timezone_get_fault(&seconds), nullptr);
    EXPECT_NE(timezone_get_fault(&null_dv_ts_tz.tz), nullptr);
}

// Every minute of the days at which local times leave the calendar, or days that no year BC has, at every
// offset.
TEST(ZonedFault, IsALocalTimeThatCannotBeMade) {
    const int days[][3] = {{-9999, 1, 1},  {-4713, 1, 1}, {-13, 3, 1},   {-12, 2, 28},
                           {-5, 2, 28},    {-5, 3, 1},    {-1, 3, 1},    {1, 1, 1},
                           {1582, 10, 15}, {1582, 10, 4}, {9999, 12, 31}};
    long without = 0, with = 0;
    for (const auto &[year, month, day] : days) {
        for (int minute = 0; minute < 24 * 60; minute += 7) {
            for (int offset = 88; offset <= 114; ++offset) {
                const auto part = static_cast<uint8_t>(offset == 114 ? 0 : minute % 60);
                dv_ts_tz_t x = {timestamp_(year, month, day, minute / 60, minute % 60),
                                {static_cast<uint8_t>(offset), part, 0, {581 >> 8, 581 & 255}}};
                const int code = raise_of([&] {
                    dv_date_t local;
                    dv_date_from_ts_tz(&local, &x);
                    dv_date_is_valid(&local);
                });
                ASSERT_EQ(dv_ts_tz_get_fault(&x) == nullptr, code == 0)
                    << testing::PrintToString(x) << " " << code;
                (code == 0 ? with : without) += 1;
            }
        }
    }
    EXPECT_GT(without, 1000);
    EXPECT_GT(with, 1000);
}

TEST(TimestampFault, IsThatOfItsDateItsFractionOrItsZone) {
    const dv_ts_tz_t sound = {timestamp_(2024, 2, 29, 13, 5),
                              {109, 0, 0, {TZ_ID_ASIA_SEOUL >> 8, TZ_ID_ASIA_SEOUL & 255}}};
    EXPECT_EQ(dv_ts_tz_get_fault(&sound), nullptr);
    const struct {
        size_t at;
        uint8_t byte;
        const char *fault;
    } cases[] = {
        {2, 13, "its month is out of range"},
        {3, 30, "its month does not have its day"},
        {4, 24, "its time of day is out of range"},
        {7, 1, "the eighth byte of a timestamp is not 0"},
        {8, 0x3C, "its fraction of a second is out of range"},
        {15, 0x7F, "it has no such time zone"},
        {12, 116, "its UTC offset is out of range"},
    };
    for (const auto &c : cases) {
        uint8_t bytes[sizeof sound];
        memcpy(bytes, &sound, sizeof sound);
        bytes[c.at] = c.byte;
        dv_ts_tz_t x;
        memcpy(&x, bytes, sizeof x);
        EXPECT_STREQ(dv_ts_tz_get_fault(&x), c.fault);
        const dv_ts_ltz_t instant = {x.utc};
        EXPECT_STREQ(dv_timestamp_get_fault(&x.utc), c.at < 12 ? c.fault : nullptr);
        EXPECT_STREQ(dv_ts_ltz_get_fault(&instant), c.at < 12 ? c.fault : nullptr);
    }
    EXPECT_NE(dv_ts_tz_get_fault(&null_dv_ts_tz), nullptr);
}

}  // namespace
