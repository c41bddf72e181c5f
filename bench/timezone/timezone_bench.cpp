// UTC to local time, local time to UTC, and zones by name: operation/case/library.
//
// A library is a struct of static functions over its own values:
//
//   zone, instant, local      a zone, UTC, and a local time, which has fields
//   find_zone(name, zone)     name_of(zone)
//   make_instant(time_t)      seconds(instant)
//   make_local(fields)        fields(local)
//   to_local(zone, instant)   to_utc(zone, local)     giving the other, or in place where is_in_place
//
// Operands are instants of 2000 to 2024 and of 1900 to 1969, shuffled, and the former in ascending
// order; names are those of all regions that every peer knows; from a fixed seed. Local times have one
// meaning, and offsets whole minutes, as those of records have. Before the clock starts every answer is
// compared with glibc's; the program ends with 1 when one is wrong. What works in place first copies the
// whole array, since a copy per call would measure store forwarding. The cases timestamp_ convert from one
// record into another.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/datetime.h"
#include "dvtypes/timestamp_tz.h"
#include "dvtypes/timezone.h"
#include "gauged.h"
#include "operand_count.h"
#ifdef DV_HAVE_ABSEIL
#include <absl/time/time.h>
#endif
#ifdef DV_HAVE_CCTZ
#include <cctz/time_zone.h>
#endif
#ifdef DV_HAVE_DATE
#include <date/tz.h>
#endif

namespace {

constexpr size_t _operand_count = dv::bench::operand_count;

bool _any_wrong = false;

struct fields_t {
    int year, month, day, hour, minute, second;
    bool operator==(const fields_t &) const = default;
};

fields_t fields_of_(time_t at) {
    struct tm t;
    gmtime_r(&at, &t);
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}

// ---- libraries ----

struct dvtypes_t {
    static constexpr const char *name = "dvtypes";
    static constexpr bool is_in_place = true;
    using zone = timezone_t;
    using instant = dv_date_t;
    using local = dv_date_t;
    static void find_zone(const std::string &text, zone &tz) {
        timezone_parse(&tz, text.data(), static_cast<int>(text.size()));
    }
    static std::string name_of(const zone &tz) {
        char text[TZ_NAME_TEXT_SIZE];
        timezone_get_zone_name(&tz, text, sizeof text);
        return text;
    }
    static dv_date_t make_instant(time_t at) { return make_local(fields_of_(at)); }
    static dv_date_t make_local(const fields_t &f) {
        dv_date_t date;
        dv_date_from_unit_values(&date, f.year, f.month, f.day, f.hour, f.minute, f.second);
        return date;
    }
    static fields_t fields(const dv_date_t &d) {
        return {dv_date_get_field(&d, DT_FMT_UNIT_YEAR), d.month, d.day, d.hour, d.minute, d.second};
    }
    static time_t seconds(const dv_date_t &utc) {
        return (dv_date_to_julian_day(&utc) - time_t{2440588}) * 86400 + utc.hour * 3600 + utc.minute * 60 +
               utc.second;
    }
    static void to_local(const zone &tz, dv_date_t &date) { timezone_localize(&tz, &date, nullptr); }
    static void to_utc(zone &tz, dv_date_t &date) { timezone_normalize(&tz, &date, nullptr); }
};

// TIMESTAMP WITH LOCAL TIME ZONE.
struct dvtypes_timestamp_t : dvtypes_t {
    static constexpr bool is_in_place = false;
    using instant = dv_ts_ltz_t;
    using local = dv_timestamp_t;
    static instant make_instant(time_t at) { return {make_local(fields_of_(at))}; }
    static local make_local(const fields_t &f) {
        dv_timestamp_t ts;
        dv_timestamp_from_unit_values(&ts, f.year, f.month, f.day, f.hour, f.minute, f.second, 123'456'789);
        return ts;
    }
    static fields_t fields(const local &ts) { return dvtypes_t::fields(date_of_(ts)); }
    static time_t seconds(const instant &utc) { return dvtypes_t::seconds(date_of_(utc.utc)); }
    static local to_local(const zone &tz, const instant &utc) {
        local ts;
        dv_timestamp_from_ts_ltz(&ts, &utc, &tz);
        return ts;
    }
    static instant to_utc(const zone &tz, const local &ts) {
        instant utc;
        dv_ts_ltz_from_timestamp(&utc, &ts, &tz);
        return utc;
    }

  private:
    static dv_date_t date_of_(const dv_timestamp_t &ts) {
        dv_date_t date;
        dv_date_from_timestamp(&date, &ts);
        return date;
    }
};

#ifdef DV_HAVE_ABSEIL
struct abseil_t {
    static constexpr const char *name = "abseil";
    static constexpr bool is_in_place = false;
    using zone = absl::TimeZone;
    using instant = absl::Time;
    using local = absl::CivilSecond;
    static void find_zone(const std::string &text, zone &tz) { absl::LoadTimeZone(text, &tz); }
    static std::string name_of(const zone &tz) { return tz.name(); }
    static instant make_instant(time_t at) { return absl::FromUnixSeconds(at); }
    static local make_local(const fields_t &f) {
        return local(f.year, f.month, f.day, f.hour, f.minute, f.second);
    }
    static fields_t fields(const local &t) {
        return {static_cast<int>(t.year()), t.month(), t.day(), t.hour(), t.minute(), t.second()};
    }
    static time_t seconds(const instant &t) { return absl::ToUnixSeconds(t); }
    static local to_local(const zone &tz, const instant &t) { return tz.At(t).cs; }
    static instant to_utc(const zone &tz, const local &t) { return tz.At(t).post; }
};
#endif

#ifdef DV_HAVE_CCTZ
struct cctz_t {
    static constexpr const char *name = "cctz";
    static constexpr bool is_in_place = false;
    using zone = cctz::time_zone;
    using instant = cctz::time_point<cctz::seconds>;
    using local = cctz::civil_second;
    static void find_zone(const std::string &text, zone &tz) { cctz::load_time_zone(text, &tz); }
    static std::string name_of(const zone &tz) { return tz.name(); }
    static instant make_instant(time_t at) { return instant{cctz::seconds{at}}; }
    static local make_local(const fields_t &f) {
        return local(f.year, f.month, f.day, f.hour, f.minute, f.second);
    }
    static fields_t fields(const local &t) {
        return {static_cast<int>(t.year()), t.month(), t.day(), t.hour(), t.minute(), t.second()};
    }
    static time_t seconds(const instant &t) { return t.time_since_epoch().count(); }
    static local to_local(const zone &tz, const instant &t) { return tz.lookup(t).cs; }
    static instant to_utc(const zone &tz, const local &t) { return tz.lookup(t).post; }
};
#endif

// Libraries after std::chrono: their local times are counts, so fields are made of them, and they of fields.
template <typename Traits>
struct chrono_like_t : Traits {
    static constexpr bool is_in_place = false;
    using zone = const typename Traits::time_zone *;
    using instant = std::chrono::sys_seconds;
    using local = fields_t;
    static void find_zone(const std::string &text, zone &tz) { tz = Traits::locate(text); }
    static std::string name_of(zone tz) { return std::string(tz->name()); }
    static instant make_instant(time_t at) { return instant{std::chrono::seconds{at}}; }
    static local make_local(const fields_t &f) { return f; }
    static fields_t fields(const local &t) { return t; }
    static time_t seconds(const instant &t) { return t.time_since_epoch().count(); }
    static local to_local(zone tz, const instant &t) {
        const auto local_seconds = tz->to_local(t).time_since_epoch();
        const std::chrono::sys_days day{std::chrono::floor<std::chrono::days>(local_seconds)};
        const std::chrono::year_month_day ymd{day};
        const std::chrono::hh_mm_ss time{local_seconds - day.time_since_epoch()};
        return {int{ymd.year()},
                static_cast<int>(unsigned{ymd.month()}),
                static_cast<int>(unsigned{ymd.day()}),
                static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count())};
    }
    static instant to_utc(zone tz, const local &f) {
        using namespace std::chrono;
        const sys_days day = year{f.year} / f.month / f.day;
        const auto since = day.time_since_epoch() + hours{f.hour} + minutes{f.minute} + seconds_t{f.second};
        return instant{Traits::latest(*tz, since).time_since_epoch()};
    }

  private:
    using seconds_t = std::chrono::seconds;
};

#ifdef DV_HAVE_DATE
struct date_traits_t {
    static constexpr const char *name = "date";
    using time_zone = date::time_zone;
    static const time_zone *locate(const std::string &text) { return date::locate_zone(text); }
    static auto latest(const time_zone &tz, std::chrono::seconds local) {
        return tz.to_sys(date::local_seconds{local}, date::choose::latest);
    }
};
#endif

#if __cpp_lib_chrono >= 201907L
struct std_traits_t {
    static constexpr const char *name = "std_chrono";
    using time_zone = std::chrono::time_zone;
    static const time_zone *locate(const std::string &text) { return std::chrono::locate_zone(text); }
    static auto latest(const time_zone &tz, std::chrono::seconds local) {
        return tz.to_sys(std::chrono::local_seconds{local}, std::chrono::choose::latest);
    }
};
#endif

// ---- operands ----

enum class times_e { RECENT, OLD, IN_ORDER };

std::string times_name_(times_e times) {
    if (times == times_e::OLD) return "1900_1969";
    return times == times_e::RECENT ? "2000_2024" : "2000_2024_in_order";
}

// The regions that the installed tz database has under their own names.
const std::vector<std::string> &known_names_() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> known;
        for (const tz_region_t &region : region_tab_) {
            const std::string name = region.canon_name;
            if (std::filesystem::exists("/usr/share/zoneinfo/" + name)) known.push_back(name);
        }
        return known;
    }();
    return names;
}

struct operand_t {
    time_t utc;
    fields_t local;  // by glibc
};

long offset_(time_t at) {
    struct tm t;
    localtime_r(&at, &t);
    return t.tm_gmtoff;
}

// Instants whose local time has one meaning and an offset in whole minutes.
bool is_plain_(time_t at) {
    constexpr time_t hours = 3 * 3600;
    const long offset = offset_(at);
    return offset % 60 == 0 && offset_(at - hours) == offset && offset_(at + hours) == offset;
}

std::vector<operand_t> drawn_operands_(const char *zone, times_e times) {
    constexpr time_t of_1900 = -2208988800, of_1970 = 0, of_2000 = 946684800, of_2025 = 1735689600;
    const bool is_old = times == times_e::OLD;
    std::uniform_int_distribution<time_t> draw(is_old ? of_1900 : of_2000, (is_old ? of_1970 : of_2025) - 1);
    std::mt19937_64 random(1);
    setenv("TZ", zone, /*overwrite=*/1);
    tzset();
    std::vector<operand_t> operands;
    while (operands.size() < _operand_count) {
        const time_t at = draw(random);
        if (is_plain_(at)) operands.push_back({at, fields_of_(at + offset_(at))});
    }
    const auto by_utc = [](const operand_t &a, const operand_t &b) { return a.utc < b.utc; };
    if (times == times_e::IN_ORDER) std::sort(operands.begin(), operands.end(), by_utc);
    return operands;
}

// ---- cases ----

void report_wrong_(benchmark::State &state, size_t operand) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: operand " + std::to_string(operand)).c_str());
}

// pass() gives every answer once.
void run_(benchmark::State &state, auto pass, auto is_right) {
    pass();
    for (size_t i = 0; i < _operand_count; ++i) {
        if (!is_right(i)) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        pass();
        benchmark::ClobberMemory();
    }
    state.counters["per_op"] = benchmark::Counter(
        _operand_count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <typename L>
void to_local_(benchmark::State &state, const char *zone_name, times_e times) {
    const std::vector<operand_t> operands = drawn_operands_(zone_name, times);
    typename L::zone zone;
    L::find_zone(zone_name, zone);
    std::vector<typename L::instant> in;
    in.reserve(operands.size());
    for (const operand_t &o : operands) in.push_back(L::make_instant(o.utc));
    std::vector<typename L::local> out(in.size());
    const auto pass = [&] {
        if constexpr (L::is_in_place) {
            std::copy(in.begin(), in.end(), out.begin());
            for (auto &date : out) L::to_local(zone, date);
        } else {
            for (size_t i = 0; i < in.size(); ++i) out[i] = L::to_local(zone, in[i]);
        }
    };
    run_(state, pass, [&](size_t i) { return L::fields(out[i]) == operands[i].local; });
}

template <typename L>
void to_utc_(benchmark::State &state, const char *zone_name, times_e times) {
    const std::vector<operand_t> operands = drawn_operands_(zone_name, times);
    typename L::zone zone;
    L::find_zone(zone_name, zone);
    std::vector<typename L::local> in;
    in.reserve(operands.size());
    for (const operand_t &o : operands) in.push_back(L::make_local(o.local));
    std::vector<typename L::instant> out(in.size());
    const auto pass = [&] {
        if constexpr (L::is_in_place) {
            std::copy(in.begin(), in.end(), out.begin());
            for (auto &date : out) L::to_utc(zone, date);
        } else {
            for (size_t i = 0; i < in.size(); ++i) out[i] = L::to_utc(zone, in[i]);
        }
    };
    run_(state, pass, [&](size_t i) { return L::seconds(out[i]) == operands[i].utc; });
}

template <typename L>
void zone_by_name_(benchmark::State &state) {
    std::vector<std::string> names(_operand_count);
    std::mt19937 random(2);
    for (std::string &name : names) name = known_names_()[random() % known_names_().size()];
    std::vector<typename L::zone> out(names.size());
    const auto pass = [&] {
        for (size_t i = 0; i < names.size(); ++i) L::find_zone(names[i], out[i]);
    };
    run_(state, pass, [&](size_t i) { return L::name_of(out[i]) == names[i]; });
}

template <typename L>
void register_conversions_(const char *prefix) {
    const auto name = [&](const char *operation, const char *zone, times_e times) {
        std::string text = prefix;
        text.append(operation).append(strrchr(zone, '/')).append("_").append(times_name_(times));
        return text.append("/").append(L::name);
    };
    for (const char *zone : {"America/New_York", "Asia/Seoul"}) {
        for (const times_e times : {times_e::RECENT, times_e::OLD, times_e::IN_ORDER}) {
            benchmark::RegisterBenchmark(name("to_local", zone, times).c_str(), to_local_<L>, zone, times);
            benchmark::RegisterBenchmark(name("to_utc", zone, times).c_str(), to_utc_<L>, zone, times);
        }
    }
}

template <typename L>
void register_library_() {
    register_conversions_<L>("");
    benchmark::RegisterBenchmark((std::string("zone_by_name/all_names/") + L::name).c_str(),
                                 zone_by_name_<L>);
}

}  // namespace

int main(int argc, char **argv) {
    register_library_<dvtypes_t>();
    register_conversions_<dvtypes_timestamp_t>("timestamp_");
#ifdef DV_HAVE_ABSEIL
    register_library_<abseil_t>();
#endif
#ifdef DV_HAVE_CCTZ
    register_library_<cctz_t>();
#endif
#ifdef DV_HAVE_DATE
    register_library_<chrono_like_t<date_traits_t>>();
#endif
#if __cpp_lib_chrono >= 201907L
    register_library_<chrono_like_t<std_traits_t>>();
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
