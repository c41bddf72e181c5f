// Dates and times as text: against the C library, and at the end of the buffer.

#include <gtest/gtest.h>

#include <ctime>

#include "model_text.h"

using namespace dv::test;

namespace {

constexpr int _epoch = 2440588;  // day number of 1970-01-01

std::string by_c_library_(const char *format, const dv_date_t &date) {
    const int64_t days = dv_date_to_julian_day(&date) - _epoch;
    const time_t time = ((days * 24 + date.hour) * 60 + date.minute) * 60 + date.second;
    struct tm utc;
    gmtime_r(&time, &utc);
    char text[128];
    strftime(text, sizeof text, format, &utc);
    return text;
}

}  // namespace

// Years of four digits behind the reform; the fields of the C locale are those of American models.
TEST(ModelWrite, AgreesWithTheCLibrary) {
    compiled_model names = writing("FMMonth Mon Day Dy");
    set_language(names, "AMERICAN");
    compiled_model numbers = writing("YYYY-MM-DD DDD HH24:MI:SS HH AM IYYY IW");
    set_language(numbers, "AMERICAN");
    number_source source(1);
    for (int day = 2299605; day <= DV_JULIAN_DAY_MAX; day += source.pick(1, 40)) {  // from 1584
        dv_date_t date = random_date(source);
        dv_date_from_julian_day(&date, day);
        ASSERT_EQ(written(numbers, date), by_c_library_("%Y-%m-%d %j %H:%M:%S %I %p %G %V", date))
            << describe(date);
        ASSERT_EQ(written(names, date), by_c_library_("%B %b %A %a", date)) << describe(date);
    }
}

// Every length of every buffer gets the beginning of the text, and nothing behind it.
TEST(ModelWrite, StopsAtTheEndOfTheBuffer) {
    const dv_date_t date = make_date(2024, 2, 4, 13, 5, 9);
    for (const char *model :
         {"FMDay, DD Month YYYY HH:MI AM", "YEAR DDSPTH", "SSSSSTH \"literal\" -", "DD", "RM"}) {
        compiled_model compiled = writing(model);
        set_language(compiled, "RUSSIAN");
        const std::string whole = written(compiled, date);
        for (int size = 1; size <= static_cast<int>(whole.size()) + 1; ++size) {
            const guarded buffer(static_cast<size_t>(size));
            const long status = dv_date_to_str(&date, buffer.text(), size, &compiled.ctx);
            const auto room = static_cast<size_t>(size);
            EXPECT_TRUE(buffer.intact()) << model << ' ' << size;
            EXPECT_EQ(status, room < whole.size() ? CONV_STATUS_CUT : CONV_STATUS_WHOLE)
                << model << ' ' << size;
            EXPECT_EQ(std::string(buffer.text(), std::min(room, whole.size())), whole.substr(0, room))
                << model;
            EXPECT_TRUE(room <= whole.size() || buffer.text()[whole.size()] == '\0') << model;
        }
        char none[1];
        EXPECT_EQ(raise_of([&] { dv_date_to_str(&date, none, 0, &compiled.ctx); }), -5007);
    }
}
