// The stored form of NUMBER: its order in SQLite, and BLOBs that somebody else wrote.

#include <map>

#include "decimal_reference.h"
#include "sqlite_session.h"

using namespace dv::test;

TEST(SqlStoredForm, OrderIsNumericOrder) {
    sqlite_session session;
    std::mt19937_64 random(20240229);
    std::map<big_t, std::string> texts = {{0, "0"}};
    for (int i = 0; i < 4000; ++i) {
        const std::string text = random_decimal(random, -(i % 126), i % 126);
        texts.emplace(big_from_text(text), text);
    }
    session.rows("CREATE TABLE t(id INTEGER PRIMARY KEY, v NUMBER)");
    for (const auto &[value, text] : texts)
        session.rows("INSERT INTO t(v) VALUES (to_number('" + text + "'))");
    const std::string places = "SELECT id, row_number() OVER (ORDER BY v) AS place FROM t";
    const std::string pairs =
        "SELECT a.v < b.v AND dv_cmp(a.v, b.v) = -1 AS rises FROM t a JOIN t b ON b.id = a.id + 1";
    EXPECT_EQ(session.value("SELECT count(*) FROM (" + places + ") WHERE id <> place"), "0");
    EXPECT_EQ(session.value("SELECT count(*) FROM (" + pairs + ") WHERE NOT rises"), "0");
    session.rows("CREATE INDEX by_value ON t(v)");
    EXPECT_EQ(session.value("SELECT count(*) FROM (" + places + ") WHERE id <> place"), "0");
}

namespace {

// The literal of a stored value, most often with a digit that was changed or bytes that were lost or put in.
std::string hostile_blob_(sqlite_session &session, std::mt19937_64 &random) {
    std::string blob = session.value("SELECT quote(to_number('" + random_decimal(random, -130, 125) + "'))");
    const size_t place = 2 + random() % (blob.size() - 3) / 2 * 2;
    const auto fault = random() % 6;
    if (fault <= 1) blob[place + fault] = "0123456789ABCDEF"[random() % 16];
    if (fault == 2) blob.erase(place, std::min(2 + random() % 20 * 2, blob.size() - 1 - place));
    if (fault == 3) blob.insert(place, 2 + random() % 20 * 2, '9');
    return blob;
}

}  // namespace

// A BLOB either is the one stored form of a value, which its text gives again, or it is refused.
TEST(SqlStoredForm, HostileBlobIsTheFormOfAValueOrRefused) {
    sqlite_session session;
    std::mt19937_64 random(7);
    int refused = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::string blob = hostile_blob_(session, random);
        const std::string text = session.value("SELECT dv_text(" + blob + ")");
        const bool is_refused = text.starts_with("error: dv_text: argument 1 is a BLOB that");
        const std::string again = session.value("SELECT quote(to_number('" + text + "'))");
        EXPECT_TRUE(is_refused || again == blob) << blob << " " << text << " " << again;
        for (const char *call : {"SELECT dump(dv_neg(", "SELECT dump(dv_round(", "SELECT dump(dv_sum("}) {
            const std::string result = session.value(call + blob + "))");
            EXPECT_TRUE(result.starts_with(is_refused ? "error: dv_" : "type=1 ")) << call << blob << result;
        }
        refused += is_refused ? 1 : 0;
    }
    EXPECT_TRUE(refused > 2000 && refused < 8000) << refused;
}
