// dvimport as a program: what it loads, refuses and says.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "../sqlite/sqlite_session.h"
#include "shell_output.h"

using namespace dv::test;

namespace {

// A folder of its own, gone behind each test.
class Dvimport : public testing::Test {
  protected:
    Dvimport() {
        std::string pattern = testing::TempDir() + "dvimportXXXXXX";
        folder_ = mkdtemp(pattern.data());
    }
    ~Dvimport() override { std::filesystem::remove_all(folder_); }

    std::string path_(const std::string &name) const { return folder_ + "/" + name; }
    void write_(const std::string &text) const { std::ofstream(path_("in.csv"), std::ios::binary) << text; }

    // What it says, without the folder and the time, and its exit code.
    std::string import_(const std::string &arguments, const std::string &before = "") const {
        std::string said = shell_output(before + DV_IMPORT " " + arguments);
        for (size_t at = 0; (at = said.find(folder_ + "/")) != said.npos;) said.erase(at, folder_.size() + 1);
        const size_t end = said.find(" s\n");
        const size_t time = said.rfind(", ", end);
        if (end != said.npos) said.erase(time, end + 2 - time);
        return said;
    }

    // All rows of a query, a line each.
    std::string rows_(const std::string &sql) const {
        sqlite_session session(path_("in.db").c_str());
        EXPECT_EQ(session.load(), SQLITE_OK);
        std::string text;
        for (const row_t &row : session.rows(sql)) {
            for (size_t i = 0; i < row.size(); ++i) text.append(i == 0 ? "" : "|").append(row[i]);
            text += "\n";
        }
        return text;
    }

    std::string folder_;
};

TEST_F(Dvimport, LoadsTypedColumnsAndNamesEveryFieldThatIsRefused) {
    write_(
        "\xEF\xBB\xBF"
        "day;price;seen;skipped;span;note\r\n"
        "29.02.2024;1,234.5;2024-02-29 13:05:00.04 Asia/Seoul;x;+01 00:00:00;\"a;b\"\r\n"
        ";\"\";;;;\"\"\r\n"
        "30.02.2024;1,2;2024-02-29 Asia/Soul;;1;c\r\n"
        "01.03.2024;99,999,999.995;2024-02-29;;;d\r\n"
        "1;2\r\n"
        "01.03.2024;-0.005;2024-03-01Z;;;e");
    EXPECT_EQ(import_(path_("in.csv") +
                      " sale --skip 1 --delimiter ';' --errors refused --columns \"day DATE "
                      "'DD.MM.YYYY', price NUMBER(10,2) 'FM99,999,990.000', seen 'TIMESTAMP(1) WITH "
                      "TIME ZONE', -, span INTERVAL DAY TO SECOND, note TEXT\""),
              "sale: 3 rows loaded, 3 refused, see refused\n1");
    EXPECT_EQ(
        rows_("SELECT dv_text(day), dv_text(price), dv_text(seen), dv_text(span), quote(note) FROM sale"),
        "2024-02-29 00:00:00|1234.5|2024-02-29 13:05:00.000000000 Asia/Seoul KST|+01 "
        "00:00:00.000000000|'a;b'\n"
        "NULL|NULL|NULL|NULL|''\n"
        "2024-03-01 00:00:00|-.01|2024-03-01 00:00:00.000000000 +00:00|NULL|'e'\n");
    EXPECT_EQ(rows_("SELECT name || ' ' || type FROM pragma_table_info('sale')"),
              "day DATE\nprice NUMBER(10,2)\nseen TIMESTAMP(1) WITH TIME ZONE\nspan INTERVAL DAY TO "
              "SECOND\nnote TEXT\n");
    EXPECT_EQ(rows_("SELECT line, \"column\", text, code FROM refused"),
              "4|day|30.02.2024|-5114\n4|price|1,2|-5074\n4|seen|2024-02-29 Asia/Soul|-5104\n4|span|1|-5009\n"
              "5|price|99,999,999.995|-5111\n6|NULL|NULL|NULL\n");
    EXPECT_EQ(rows_("SELECT message FROM refused WHERE line = 6"), "2 fields where 6 are expected\n");
}

// Languages and punctuation behind models, constraints behind types and models. What is refused comes out
// with the lines of the headline, so that the same command takes it.
TEST_F(Dvimport, RejectsAreLoadedByTheSameCommandOnceTheyAreCorrected) {
    const std::string head = "id;\"day\nof month\";amount;note;rest\n\n",
                      bad =
                          "3;31 мар 2024;1.000,5;\"a;\"\"b\"\"\n\";\n4;1 мая 2024;1.5;;\"\"\n1;1 апр "
                          "2024;1;\xFC;\n6;7\n";
    const std::string columns =
        " bill --skip 3 --delimiter ';' --database " + path_("in.db") +
        " --columns \"id INTEGER primary key, day 'DATE' 'DD MONTH YYYY' 'RUSSIAN' NOT NULL, amount "
        "NUMBER(8,2) 'FM9G999D9' ',.' not null unique, note TEXT UNIQUE, -\"";
    write_(head + "1;31 МАРТ 2024;\"1.000,5\";x;\n" + bad + "5;1 апр 2024;-,5;;y\n");
    EXPECT_EQ(import_(path_("in.csv") + columns + " --errors refused --rejects " + path_("bad.csv")),
              "bill: 2 rows loaded, 4 refused, see refused\n1");
    EXPECT_EQ(rows_("SELECT line, \"column\", code FROM refused"),
              "5|NULL|2067\n7|day|-5113\n7|amount|-5074\n8|note|NULL\n9|NULL|NULL\n");
    EXPECT_EQ(rows_("SELECT message FROM refused WHERE line = 8"),
              "the text is not UTF-8; iconv(1) converts files\n");
    EXPECT_EQ(shell_output("cat " + path_("bad.csv")), head + bad + "0");
    EXPECT_EQ(rows_("SELECT sql FROM sqlite_schema WHERE name = 'bill'"),
              "CREATE TABLE \"bill\"(\"id\" INTEGER PRIMARY KEY, \"day\" DATE NOT NULL, \"amount\" "
              "NUMBER(8,2) NOT NULL UNIQUE, \"note\" TEXT UNIQUE)\n");

    shell_output("sed -i 's/1.000,5/1.000,6/; s/мая/май/; s/1.5/1,5/; /^1;/d; s/^6;7/6;1 май 2024;7,;;/' " +
                 path_("bad.csv"));
    EXPECT_EQ(import_(path_("bad.csv") + columns), "bill: 3 rows loaded, 0 refused\n0");
    EXPECT_EQ(rows_("SELECT id, to_char(day, 'MM-DD'), dv_text(amount), quote(note) FROM bill"),
              "1|03-31|1000.5|'x'\n3|03-31|1000.6|'a;\"b\"\n'\n4|05-01|1.5|NULL\n5|04-01|-.5|NULL\n6|05-01|7|"
              "NULL\n");
}

TEST_F(Dvimport, AddsToATableAndKeepsItsConstraints) {
    write_("1,a\n2,b\n2,c\n0,d\n");
    {
        sqlite_session session(path_("in.db").c_str());
        session.rows("CREATE TABLE t(name TEXT, id INTEGER PRIMARY KEY CHECK (id > 0), more DEFAULT 'kept')");
    }
    EXPECT_EQ(import_(path_("in.csv") + " t --columns 'id INTEGER, name TEXT'"),
              "in.csv:3: UNIQUE constraint failed: t.id\nin.csv:4: CHECK constraint failed: id > 0\n"
              "t: 2 rows loaded, 2 refused\n1");
    EXPECT_EQ(rows_("SELECT * FROM t"), "a|1|kept\nb|2|kept\n");
    EXPECT_EQ(import_("- t --columns 'id INTEGER, name TEXT' --database " + path_("in.db"), "echo 3,e | "),
              "t: 1 rows loaded, 0 refused\n0");
    EXPECT_EQ(rows_("SELECT count(*) FROM t"), "3\n");
}

TEST_F(Dvimport, RefusesWhatRefersToNothing) {
    write_("1,,a\n2,1,b\n3,4,a\n4,2,a\n");
    {
        sqlite_session session(path_("in.db").c_str());
        session.rows("CREATE TABLE p(c TEXT PRIMARY KEY)");
        session.rows("INSERT INTO p VALUES ('a')");
        session.rows("CREATE TABLE k(id INTEGER PRIMARY KEY, up INTEGER REFERENCES k, c TEXT REFERENCES p)");
    }
    EXPECT_EQ(import_(path_("in.csv") + " k --columns 'id INTEGER, up INTEGER, c TEXT'"),
              "in.csv:2: FOREIGN KEY constraint failed\nin.csv:3: FOREIGN KEY constraint failed\n"
              "in.csv:4: FOREIGN KEY constraint failed\nk: 1 rows loaded, 3 refused\n1");
    EXPECT_EQ(rows_("SELECT id FROM k"), "1\n");
}

// Many records go in one statement; a table that would keep or undo more than its own record does not.
TEST_F(Dvimport, LoadsEachRecordOnceWhateverTheTableDoesToOneOfThem) {
    std::string lines;
    for (int i = 0; i < 600; ++i) lines += std::to_string(i == 200 ? 100 : i) + "\n";
    write_(lines);
    {
        sqlite_session session(path_("in.db").c_str());
        session.rows("CREATE TABLE failing(id INTEGER UNIQUE ON CONFLICT FAIL)");
        session.rows("CREATE TABLE undoing(id INTEGER UNIQUE ON CONFLICT ROLLBACK)");
        session.rows("CREATE TABLE by_FAIL(id INTEGER)");
        session.rows("CREATE TABLE by_ROLLBACK(id INTEGER)");
        session.rows(
            "CREATE TRIGGER a BEFORE INSERT ON by_FAIL WHEN NEW.id = 300 BEGIN SELECT RAISE(FAIL, 'no'); "
            "END");
        session.rows(
            "CREATE TRIGGER b BEFORE INSERT ON by_ROLLBACK WHEN NEW.id = 300 "
            "BEGIN SELECT RAISE(ROLLBACK, 'no'); END");
    }
    for (const std::string table : {"failing", "undoing", "by_FAIL"}) {
        EXPECT_TRUE(import_(path_("in.csv") + " " + table + " --columns 'id INTEGER'")
                        .ends_with(table + ": 599 rows loaded, 1 refused\n1"));
        EXPECT_EQ(rows_("SELECT count(*) FROM " + table), "599\n");
    }
    EXPECT_EQ(import_(path_("in.csv") + " by_ROLLBACK --columns 'id INTEGER'"),
              "dvimport: in.db: the table rolled the transaction back; nothing was loaded\n2");
    EXPECT_EQ(rows_("SELECT count(*) FROM by_ROLLBACK"), "0\n");
}

TEST_F(Dvimport, LeavesNothingHalfLoaded) {
    write_("1,a\n2,\"b\n");
    EXPECT_EQ(import_(path_("in.csv") + " t --columns 'id NUMBER, name TEXT'"),
              "dvimport: line 2: the quote of a field does not end; nothing was loaded\n2");
    shell_output("{ yes 1,a | head -n 200000; sleep 0.6; } | timeout -s KILL 0.4 " DV_IMPORT
                 " - t --columns 'id NUMBER, name TEXT' --database " +
                 path_("in.db"));
    EXPECT_EQ(rows_("SELECT count(*) FROM sqlite_schema"), "0\n");
}

TEST_F(Dvimport, SaysWhatIsWrongWithItsArguments) {
    write_("1\n");
    const std::string see = "\nSee dvimport --help.\n2", nothing = "; nothing was loaded\n2";
    const std::pair<std::string, std::string> cases[] = {
        {"", "dvimport: a file and a table are expected" + see},
        {"in.csv t", "dvimport: --columns is missing" + see},
        {"- t --columns 'a TEXT'", "dvimport: --database is missing" + see},
        {"in.csv t --columns 'a TEXT' --skip x", "dvimport: --skip is a number of lines" + see},
        {"in.csv t --columns 'a TEXT' --delimiter ab",
         "dvimport: --delimiter is one character, or tab" + see},
        {"gone.csv t --columns 'a TEXT'", "dvimport: gone.csv: No such file or directory" + nothing},
        {"in.csv t --columns 'a NUMBER(50)'",
         "dvimport: --columns: NUMBER(50) has a precision out of range" + nothing},
        {"in.csv t --columns 'a NUMBER(5,2'",
         "dvimport: --columns: NUMBER(5,2 has a parenthesis without its other one" + nothing},
        {"in.csv t --columns 'a NUMBR(5,2)'",
         "dvimport: --columns: NUMBR(5,2) is no type: NUMBER, DATE, TIME, TIMESTAMP and INTERVAL are, and "
         "SQLite's such as INTEGER and TEXT" +
             nothing},
        {"in.csv t --columns \"a TEXT 'DD'\"",
         "dvimport: --columns: a model goes with a type that has one, not with \"TEXT\"" + nothing},
        {"in.csv t --columns \"a DATE 'DD\"",
         "dvimport: --columns: the quote does not end before \"DD\"" + nothing},
        {"in.csv t --columns \"a DATE 'DD' b\"",
         "dvimport: --columns: PRIMARY KEY, NOT NULL, UNIQUE or a comma is expected at \"b\"" + nothing},
        {"in.csv t --columns \"a DATE 'DD' not null unique CHECK (a > 0), b\"",
         "dvimport: --columns: PRIMARY KEY, NOT NULL, UNIQUE or a comma is expected at \"CHECK (a > 0), b\"" +
             nothing},
        {"in.csv t --columns \"a DATE 'DD.MM.YYYYY'\"",
         "dvimport: --columns: a: to_date: The field \"YEAR\" is given twice in the format model. The model "
         "is \"DD.MM.YYYYY\", wrong at \"Y\". (dv-5112)" +
             nothing},
        {"in.csv t --columns \"a NUMBER '9G9' ','\"",
         "dvimport: --columns: a: to_number: argument 3, \",\", is not a decimal point and a group "
         "separator, such as \",.\"" +
             nothing},
        {"in.csv t --rejects ../$(basename $PWD)/in.csv --columns 'a TEXT'",
         "dvimport: --rejects is the file that is read" + see},
        {"in.csv t --rejects gone/x --columns 'a TEXT'",
         "dvimport: gone/x: No such file or directory" + nothing},
        {"in.csv t --columns 'a TEXT,'", "dvimport: --columns: a name is expected at the end" + nothing},
        {"in.csv t --columns 'a TEXT; b'", "dvimport: --columns: \"TEXT; b\" is no type" + nothing},
        {"in.csv sqlite_x --columns 'a TEXT'",
         "dvimport: in.db: object name reserved for internal use: sqlite_x" + nothing},
    };
    const std::string in_folder = "cd " + folder_ + " && ";
    for (const auto &[arguments, said] : cases) EXPECT_EQ(import_(arguments, in_folder), said) << arguments;
    EXPECT_FALSE(std::filesystem::exists(path_("gone.db")));
}

}  // namespace
