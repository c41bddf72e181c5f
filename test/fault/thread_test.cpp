// Many threads at once on what they share: compiled models, character sets and regions that nobody has used
// yet, the default zone, number models. Each gets what one thread alone gets.

#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

#include "../datetime_fmt/model_text.h"
#include "dvtypes/number_fmt.h"
#include "dvtypes/timestamp_tz.h"

using namespace dv::test;

namespace {

constexpr int _threads = 8;
constexpr const char *_regions[] = {
    "Asia/Seoul",      "America/New_York", "Europe/Kiev", "Australia/Lord_Howe",
    "Africa/Monrovia", "Pacific/Apia",     "Etc/UTC",     "Asia/Kathmandu"};

// Every character of some rows, there and back, in each set.
std::string converted_() {
    std::string all;
    for (const charset_info_t &cs : _charset_info) {
        for (int row = 0x20; row < 0x60; row += 8) {
            std::array<uint8_t, 512> units, again;
            for (size_t i = 0; i < 256; ++i) {
                units[2 * i] = static_cast<uint8_t>(row);
                units[2 * i + 1] = static_cast<uint8_t>(i);
            }
            std::array<char, 1024> text, upper;
            raise_of([&] {
                const int size = cs.from_ucs2(&cs, units.data(), 512, text.data(), 1024);
                const int back = cs.to_ucs2(&cs, text.data(), size, again.data(), 512);
                const int cased = cs.to_case(&cs, DVSTR_CASE_UPPER, text.data(), size, upper.data(), 1024);
                all.append(upper.data(), static_cast<size_t>(cased));
                all.append(reinterpret_cast<const char *>(again.data()), static_cast<size_t>(back));
            });
        }
    }
    return all;
}

struct models_t {
    compiled_model reading, writing;
};

// Local times of regions through text, and what is local there in the default zone.
std::string read_and_written_(const models_t &models) {
    std::string all;
    timezone_t zone{};
    raise_of([&] { timezone_get_system_default(&zone); });
    for (const char *region : _regions) {
        for (int month = 1; month <= 12; ++month) {
            const std::string given = "2024-" + std::to_string(month) + "-15 12:30:00.5 " + region;
            dv_ts_tz_t ts_tz{};
            std::array<char, 128> text{};
            const int code = raise_of([&] {
                dv_ts_tz_from_str(&ts_tz, given.data(), static_cast<int>(given.size()), &models.reading.ctx,
                                  9, &zone);
                dv_ts_tz_to_str(&ts_tz, text.data(), static_cast<int>(text.size()), &models.writing.ctx, 9);
            });
            all.append(std::to_string(code)).append(text.data()).append(" ");
        }
    }
    return all;
}

// Quotients under models, written and read.
std::string numbers_() {
    constexpr const char *number_models[] = {"FM999,990.00", "9.99EEEE",  "FMXXXX",
                                             "FMRN",         "L9G990D00", "TM9"};
    std::string all;
    for (int n = 0; n < 400; ++n) {
        const number_t divisor = num(std::to_string(n % 7 + 1));
        number_t x = num(std::to_string(n * n) + ".125"), back{};
        number_div(&x, &divisor);
        for (const char *model : number_models) {
            char text[NUMBER_FMT_TEXT_SIZE] = {};
            const auto length = static_cast<int>(strlen(model));
            const int code = raise_of([&] {
                number_to_str_fmt(&x, sizeof text, text, length, model);
                number_from_str_fmt(&back, static_cast<int>(strlen(text)), text, length, model);
            });
            all.append(text).append(std::to_string(code)).append(describe(back)).append(" ");
        }
    }
    return all;
}

}  // namespace

TEST(Threads, ShareModelsAndWhatIsUsedForTheFirstTime) {
    setenv("TZ", "Asia/Seoul", 1);
    tzset();  // under a lock of libc's own, which ThreadSanitizer does not see
    models_t models{compiled_model("YYYY-MM-DD HH24:MI:SS.FF TZR", /*is_reading=*/true),
                    compiled_model("FMDay, ddth Month SYYYY HH24:MI:SS.FF TZR TZD")};
    set_language(models.writing, "AMERICAN");
    std::array<std::string, _threads> got;
    std::barrier start(_threads);
    {
        std::array<std::jthread, _threads> threads;
        for (size_t i = 0; i < _threads; ++i) {
            threads[i] = std::jthread([&, i] {
                start.arrive_and_wait();
                got[i] = i % 2 == 0 ? converted_() + numbers_() + read_and_written_(models)
                                    : read_and_written_(models).insert(0, numbers_()).insert(0, converted_());
            });
        }
    }
    const std::string want = converted_() + numbers_() + read_and_written_(models);
    EXPECT_NE(want.find("0Monday, 15th January 2024"), want.npos) << read_and_written_(models);
    for (const std::string &one : got) EXPECT_TRUE(one == want);
}
