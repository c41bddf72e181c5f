// The stored form of NUMBER: its order in SQLite, and BLOBs that somebody else wrote.

#include <algorithm>

#include "decimal_reference.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

// Texts of different values with their order, and a table t(id, v) of them, id being the place in numeric
// order.
int fill_with_ordered_values_(sqlite_session &session) {
    std::mt19937_64 random(20240229);
    std::vector<std::pair<big_t, std::string>> values = {{0, "0"}};
    for (int i = 0; i < 4000; ++i) {
        const std::string text =
            i % 2 != 0 ? random_decimal(random, -130, 125) : random_decimal(random, -2, 2);
        values.emplace_back(big_from_text(text), text);
    }
    std::sort(values.begin(), values.end());
    const auto same_value = [](const auto &x, const auto &y) { return x.first == y.first; };
    values.erase(std::unique(values.begin(), values.end(), same_value), values.end());

    session.run("CREATE TABLE t(id INTEGER, v NUMBER)");
    for (size_t i = 0; i < values.size(); ++i) {
        session.run("INSERT INTO t VALUES (" + std::to_string(i) + ", to_number('" + values[i].second +
                    "'))");
    }
    return static_cast<int>(values.size());
}

blob_t random_blob_(std::mt19937_64 &random, size_t length) {
    blob_t blob(length);
    for (uint8_t &byte : blob) {
        const auto bits = random();
        // Half of the bytes are valid digits or terminators, so that many BLOBs come close to a NUMBER.
        byte = (bits >> 8) % 2 != 0 ? static_cast<uint8_t>(bits)
                                    : static_cast<uint8_t>(bits % 12 != 0 ? 0x60 + bits % 0x50 : 0xF0);
    }
    if (!blob.empty() && random() % 8 != 0) blob[0] = 1;
    return blob;
}

// A BLOB either is the one stored form of a value, which its text gives again, or it is refused.
bool expect_value_or_refusal_(sqlite_session &session, const blob_t &blob) {
    const std::string text = session.value("SELECT dv_text(?)", blob);
    if (text.starts_with("error: ")) {
        EXPECT_TRUE(text.find("argument 1 is a BLOB that holds no value: ") != std::string::npos)
            << hex(blob) << text;
        return false;
    }
    EXPECT_LE(text.size(), 46U) << hex(blob);
    EXPECT_EQ(session.value("SELECT to_number('" + text + "') = ?", blob), "1") << hex(blob) << " " << text;
    return true;
}

}  // namespace

TEST(SqlStoredForm, OrderIsNumericOrder) {
    sqlite_session session;
    const int count = fill_with_ordered_values_(session);
    const std::string last = std::to_string(count - 1);
    ASSERT_GT(count, 3500);

    const std::string out_of_order =
        "SELECT count(*) FROM (SELECT id, lag(id, 1, -1) OVER (ORDER BY v) AS before FROM t) WHERE id <> "
        "before + 1";
    EXPECT_EQ(session.value(out_of_order), "0");
    EXPECT_EQ(session.value("SELECT count(*) FROM t a JOIN t b ON b.id = a.id + 1 WHERE NOT a.v < b.v"), "0");
    EXPECT_EQ(session.value("SELECT id FROM t WHERE v = (SELECT min(v) FROM t)"), "0");
    EXPECT_EQ(session.value("SELECT id FROM t WHERE v = (SELECT max(v) FROM t)"), last);

    session.run("CREATE INDEX by_value ON t(v)");
    const std::string range = "FROM t WHERE v BETWEEN to_number('-1E-5') AND to_number('12.5')";
    EXPECT_TRUE(session.rows("EXPLAIN QUERY PLAN SELECT id " + range)[0][3].find("by_value") !=
                std::string::npos);
    EXPECT_EQ(session.value("SELECT count(*) " + range),
              session.value("SELECT 1 + (SELECT max(id) FROM t WHERE dv_cmp(v, 12.5) <= 0)"
                            " - (SELECT min(id) FROM t WHERE dv_cmp(v, to_number('-1E-5')) >= 0)"));
    EXPECT_EQ(session.value("SELECT count(*) FROM t WHERE dv_cmp(v, 0) <> "
                            "CASE WHEN id < (SELECT id FROM t WHERE v = to_number(0)) THEN -1"
                            " WHEN v = to_number(0) THEN 0 ELSE 1 END"),
              "0");
}

TEST(SqlStoredForm, RandomBlobIsTheFormOfAValueOrRefused) {
    sqlite_session session;
    std::mt19937_64 random(7);
    int accepted = 0;
    for (size_t length = 0; length <= 30; ++length) {
        for (int i = 0; i < 300; ++i) {
            accepted += expect_value_or_refusal_(session, random_blob_(random, length)) ? 1 : 0;
        }
    }
    EXPECT_GT(accepted, 50);  // else the generator misses what it is for
}

TEST(SqlStoredForm, ChangedByteGivesAnotherValueOrARefusal) {
    sqlite_session session;
    std::mt19937_64 random(11);
    int accepted = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::string stored =
            session.value("SELECT to_number('" + random_decimal(random, -130, 125) + "')");
        blob_t blob(stored.begin(), stored.end());
        ASSERT_TRUE(expect_value_or_refusal_(session, blob)) << hex(blob);
        const size_t place = random() % blob.size();
        blob[place] = static_cast<uint8_t>(blob[place] ^ (1u << (random() % 8)));
        accepted += expect_value_or_refusal_(session, blob) ? 1 : 0;
    }
    EXPECT_GT(accepted, 300);
}

TEST(SqlStoredForm, NoFunctionCrashesOnABlob) {
    sqlite_session session;
    const char *calls[] = {"to_number(?)",
                           "to_char(?)",
                           "dv_add(?, ?)",
                           "dv_sub(1, ?)",
                           "dv_mul(?, 2)",
                           "dv_div(?, 3)",
                           "dv_mod(?, 7)",
                           "dv_rem(7, ?)",
                           "dv_neg(?)",
                           "dv_abs(?)",
                           "dv_round(?)",
                           "dv_round(?, 2)",
                           "dv_round(1, ?)",
                           "dv_cmp(?, ?)",
                           "dv_cast_number(?, 5)",
                           "dv_cast_number(?, 5, 2)",
                           "dv_sum(?)",
                           "dv_avg(?)",
                           "dump(?)"};
    std::mt19937_64 random(13);
    for (const char *call : calls) {
        for (size_t i = 0; i < 400; ++i) {
            const blob_t blob = random_blob_(random, i % 31);
            const std::string result = session.value(std::string("SELECT dump(") + call + ")", blob);
            EXPECT_TRUE(result.starts_with("type=") || result.starts_with("error: "))
                << call << hex(blob) << result;
        }
    }
}

TEST(SqlStoredForm, RefusalSaysWhatIsWrong) {
    constexpr struct {
        const char *blob, *fault;
    } cases[] = {
        {"x''", "it is empty"},
        {"x'63c181'", "its first byte is no type code"},
        {"x'01'", "a NUMBER needs its exponent"},
        {"x'01c1'", "a NUMBER needs a digit"},
        {"x'013ef0'", "a NUMBER needs a digit"},
        {"x'01c1e4'", "a NUMBER digit is out of range"},
        {"x'013e1cf0'", "a NUMBER digit is out of range"},
        {"x'01fff0'", "a NUMBER digit is out of range"},  // the marker of an infinity
        {"x'018010'", "a NUMBER digit is out of range"},  // the marker of a tiny value
        {"x'01c18081'", "a NUMBER neither begins nor ends with a zero digit"},
        {"x'01c18180'", "a NUMBER neither begins nor ends with a zero digit"},
        {"x'013e7f7f'", "a negative NUMBER needs its terminator"},
        {"x'01c1948181818181818181818181818181818181818a'", "a NUMBER has at most 38 digits"},
        {"x'01c18181818181818181818181818181818181818182'", "a NUMBER has at most 38 digits"},
        {"x'01c181818181818181818181818181818181818181818a'", "it is too long for a NUMBER"},
        {"x'01c18181818181818181818181818181818181818181818a'", "it is too long for a NUMBER"},
    };
    sqlite_session session;
    for (const auto &c : cases) {
        EXPECT_EQ(session.value(std::string("SELECT dv_neg(") + c.blob + ")"),
                  std::string("error: dv_neg: argument 1 is a BLOB that holds no value: ") + c.fault)
            << c.blob;
    }
}
