// A file loaded with values converted many at once, and one by one: the same database, byte for byte.

#include "loader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "number_support.h"

using namespace dv::import;
using namespace dv::test;

namespace {

constexpr char _columns[] =
    "id INTEGER PRIMARY KEY, day DATE 'DD.MM.YYYY' NOT NULL, price NUMBER(8,2) 'FM999,990.00', "
    "amount NUMBER(9,3) 'FM9G999D9' ',.' UNIQUE, plain NUMBER, "
    "seen 'TIMESTAMP(1) WITH TIME ZONE', at TIMESTAMP, span INTERVAL DAY TO SECOND, -, note TEXT";

class Loader : public testing::Test {
  protected:
    Loader() {
        std::string pattern = testing::TempDir() + "loaderXXXXXX";
        folder_ = mkdtemp(pattern.data());
    }
    ~Loader() override {
        sqlite3_reset_auto_extension();  // other connections of this program load the extension themselves
        std::filesystem::remove_all(folder_);
    }

    std::string contents_(const std::string &name) const {
        std::ostringstream text;
        text << std::ifstream(folder_ + "/" + name, std::ios::binary).rdbuf();
        return text.str();
    }

    // A line; one in `bad` of its fields is wrong, and so is the line now and then.
    std::string line_(int id, unsigned bad) {
        const auto draw = [&](unsigned below) { return static_cast<unsigned>(random_() % below); };
        const auto number = [&](unsigned below) { return std::to_string(draw(below)); };
        const auto field = [&](const std::string &good, const char *wrong) {
            return ";" + (draw(bad) == 0 ? wrong : draw(20) == 0 ? "" : good);
        };
        const std::string time = "20" + std::to_string(10 + draw(20)) + "-0" + std::to_string(1 + draw(9)) +
                                 "-1" + number(10) + " 1" + number(10) + ":3" + number(10) + ":59." +
                                 number(1000);
        const std::string amount = "1." + std::to_string(id).substr(1) + "," + std::to_string(id)[0];
        std::string line = draw(bad) == 0 ? "7" : std::to_string(id);
        line +=
            ";" +
            (draw(bad) == 0 ? "" : std::to_string(1 + draw(28)) + ".02." + std::to_string(1 + draw(3000)));
        line += field(number(1000) + ".5", "1.2.3") + field(amount, "9.9.9");
        line += field(number(1000) + "E" + number(120), "1E130");
        line += field(time + " Europe/Paris", "2024-03-31 02:30 Europe/Paris") + field(time, "2024-02-30");
        line += field(number(90) + " 00:00:00", "x") + ";skipped" + field("note", "\"a;b\"");
        return line + (draw(bad * 4) == 0 ? ";more\n" : "\n");
    }

    // Loads the lines into a database of a name, with its rejects beside it; how many were loaded and
    // refused.
    std::pair<long, long> load_(const std::string &lines, const std::string &name, bool is_bulk,
                                const char *columns = _columns) const {
        options what;
        what.file = "in.csv";
        what.table = "t";
        what.database = folder_ + "/" + name + ".db";
        what.columns = parse_columns(columns);
        what.errors = "refused";
        what.rejects = folder_ + "/" + name + ".csv";
        what.delimiter = ';';
        what.is_bulk = is_bulk;
        loader to(what);
        csv_reader records(what.delimiter, [&](const csv_record &record) { to.take(record); });
        records.feed(lines);
        records.finish();
        to.commit();
        return {to.loaded(), to.refused()};
    }

    std::string folder_;
    std::minstd_rand random_{21};
};

// Files without a fault, with some, and with many.
TEST_F(Loader, GivesTheSameDatabaseManyAtOnceAndOneByOne) {
    for (const unsigned bad : {1'000'000U, 2'000U, 50U, 4U}) {
        std::string lines;
        for (int i = 0; i < 1500; ++i) lines += line_(1000 + i, bad);
        const auto once = load_(lines, "once" + std::to_string(bad), /*is_bulk=*/true);
        const auto each = load_(lines, "each" + std::to_string(bad), /*is_bulk=*/false);
        EXPECT_EQ(once, each) << bad;
        EXPECT_GT(once.first, 0) << bad;
        EXPECT_EQ(once.second > 0, bad < 1'000'000) << bad;
        for (const char *ending : {".db", ".csv"}) {
            const std::string of_once = contents_("once" + std::to_string(bad) + ending);
            EXPECT_TRUE(of_once == contents_("each" + std::to_string(bad) + ending)) << bad << ending;
        }
    }
}

// Years BC are left to the functions, all or nearly all of them.
TEST_F(Loader, LeavesToTheFunctionsWhatItDoesNotKnow) {
    std::string lines;
    for (int i = 0; i < 700; ++i)
        lines +=
            std::to_string(i) + ";15.03.00" + std::to_string(10 + i % 90) + (i % 7 < 2 ? " AD\n" : " BC\n");
    lines += "700;15.13.0044 BC\n";
    constexpr char columns[] = "id INTEGER, day DATE 'DD.MM.YYYY AD'";
    const std::pair<long, long> counts(700, 1);
    EXPECT_EQ(load_(lines, "once", /*is_bulk=*/true, columns), counts);
    EXPECT_EQ(load_(lines, "each", /*is_bulk=*/false, columns), counts);
    EXPECT_TRUE(contents_("once.db") == contents_("each.db"));
}

}  // namespace
