// Loads payments from standard input, exactly, from C++: a line has the time on a zone's clocks, the zone and
// an amount. Prints the sum of each month in UTC; a line that cannot be read is reported and left out,
// without an exception.
//
//   printf '%s\n' '29.02.2024 23:30;Asia/Seoul;1,234.50' '30.02.2024 00:00;UTC;1' | load_cpp
//   line 2: -5114 in "30.02.2024 00:00"
//   2024-02  1234.50

#include <array>
#include <dvtypes/dvtypes.hpp>
#include <iostream>
#include <map>
#include <ranges>

namespace {

const dv::reader<dv::timestamp> read_time("DD.MM.YYYY HH24:MI");
const dv::number_reader read_amount("999,999,990.99");
const dv::number_writer write_amount("FM999999990.00");
const dv::writer<dv::date> write_month("YYYY-MM");

class months {
  public:
    // False when a field cannot be read; it is then reported.
    bool add(int line, std::string_view time_text, std::string_view zone_text, std::string_view amount_text) {
        const auto time = dv::try_parse<dv::timestamp>(time_text, read_time);
        if (!time) return refuse(line, time_text, time.code());
        const auto zone = dv::try_parse<dv::zone>(zone_text);
        if (!zone) return refuse(line, zone_text, zone.code());
        const auto amount = dv::try_parse<dv::number>(amount_text, read_amount);
        if (!amount) return refuse(line, amount_text, amount.code());

        const auto instant = dv::try_make<dv::timestamp_tz>(*time, *zone);
        if (!instant) return refuse(line, time_text, instant.code());  // the zone's clocks never showed it
        sums_[trunc(instant->utc().date(), "MM")] += *amount;
        return true;
    }

    void print() const {
        for (const auto &[month, sum] : sums_)
            std::cout << write_month(month) << "  " << write_amount(sum) << '\n';
    }

  private:
    static bool refuse(int line, std::string_view text, int code) {
        std::cout << "line " << line << ": " << code << " in \"" << text << "\"\n";
        return false;
    }

    std::map<dv::date, dv::number> sums_;
};

// The three fields of a line; what is missing is empty.
std::array<std::string_view, 3> split(std::string_view line) {
    std::array<std::string_view, 3> fields;
    for (auto &field : fields) {
        const size_t end = std::min(line.find(';'), line.size());
        field = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return fields;
}

}  // namespace

int main() try {
    months sums;
    bool is_all_read = true;
    std::string line;
    for (int number = 1; std::getline(std::cin, line); ++number) {
        const auto [time, zone, amount] = split(line);
        is_all_read &= sums.add(number, time, zone, amount);
    }
    sums.print();
    return is_all_read ? 0 : 1;
} catch (const dv::error &error) {  // such as a sum beyond the range of NUMBER
    std::cerr << error.what() << '\n';
    return 2;
}
