// The scalar functions of NUMBER in SQL: results, NULL, kinds of arguments, errors.

#include <fstream>

#include "decimal_reference.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

struct call_case {
    const char *call;
    const char *want;  // the text of the value, or the end of the error message
};

}  // namespace

TEST(SqlNumberFunctions, AgreeWithBigIntegers) {
    sqlite_session session;
    std::mt19937_64 random(3);
    for (int i = 0; i < 2000; ++i) {
        const std::string x = random_decimal(random, -3, 12);
        const std::string y = random_decimal(random, -3, 12);
        const big_t bx = big_from_text(x);
        const big_t by = big_from_text(y);
        std::string operands = " FROM (SELECT to_number('";
        operands.append(x).append("') AS x, to_number('").append(y).append("') AS y)");
        const auto result = [&](const char *call) {
            return big_from_text(
                session.value(std::string("SELECT dv_text(").append(call).append(")").append(operands)));
        };
        EXPECT_EQ(result("dv_mul(x, y)"), rounded_to_38(bx * by / power_of_ten(BIG_SCALE)))
            << x << " * " << y;
        EXPECT_EQ(result("dv_cmp(x, y)"), bx.compare(by) * power_of_ten(BIG_SCALE)) << x << " " << y;
        // Within a unit of the 38th digit: the library drops the far tail of the smaller operand first.
        const big_t sum = bx + by;
        EXPECT_LE(abs(result("dv_add(x, y)") - sum) * power_of_ten(37), abs(bx) + abs(by)) << x << " + " << y;
    }
}

TEST(SqlNumberFunctions, RoundingAtAnyPlaceNeedsNoRange) {
    constexpr call_case cases[] = {
        {"dv_round(1234.5678, 2)", "1234.57"},
        {"dv_round(1234.5678, -2)", "1200"},
        {"dv_round(1234.5678, 9223372036854775807)", "1234.5678"},
        {"dv_round(1234.5678, -9223372036854775807 - 1)", "0"},
        {"dv_round(9, -124)", "0"},
        {"dv_round(9, -126)", "0"},
        {"dv_round(to_number('4.99E125'), -126)", "0"},
        {"dv_round(to_number('-9.99E125'), -127)", "0"},
        {"dv_round(to_number('6E124'), -125)", "1E+125"},
        {"dv_round(to_number('1.5E-130'), 130)", "2E-130"},
        {"dv_round(to_number('1.5E-130'), 131)", "1.5E-130"},
    };
    sqlite_session session;
    for (const call_case &c : cases) {
        EXPECT_EQ(session.value(std::string("SELECT dv_text(") + c.call + ")"), c.want) << c.call;
    }
}

TEST(SqlNumberFunctions, NullGivesNull) {
    constexpr const char *calls[] = {"to_number(NULL)",
                                     "to_char(NULL)",
                                     "dv_text(NULL)",
                                     "dv_neg(NULL)",
                                     "dv_abs(NULL)",
                                     "dv_round(NULL)",
                                     "dv_round(NULL, 1)",
                                     "dv_round(1, NULL)",
                                     "dv_cast_number(NULL, 5)",
                                     "dv_cast_number(1, NULL)",
                                     "dv_cast_number(NULL, 5, 2)",
                                     "dv_cast_number(1, NULL, 2)",
                                     "dv_cast_number(1, 5, NULL)"};
    constexpr const char *binary[] = {"dv_add", "dv_sub", "dv_mul", "dv_div", "dv_mod", "dv_rem", "dv_cmp"};
    sqlite_session session;
    for (const char *call : calls) EXPECT_EQ(session.value(std::string("SELECT ") + call), "NULL") << call;
    for (const char *function : binary) {
        for (const char *arguments : {"(NULL, 1)", "(0, NULL)", "(NULL, NULL)", "(NULL, x'')"}) {
            EXPECT_EQ(session.value(std::string("SELECT ") + function + arguments), "NULL")
                << function << arguments;
        }
    }
}

TEST(SqlNumberFunctions, ErrorsOfTheLibraryCarryFunctionCodeAndMessage) {
    constexpr call_case cases[] = {
        {"dv_div(1, 0)", "(dv-5070)"},
        {"dv_rem(1, 0)", "(dv-5070)"},
        {"to_number('12x')", "(dv-5074)"},
        {"to_number('')", "(dv-5074)"},
        {"to_number(' ')", "(dv-5074)"},
        {"to_number('1' || char(0) || '2')", "(dv-5074)"},
        {"to_number(9e999)", "(dv-5074)"},
        {"to_number('1E126')", "(dv-5068)"},
        {"to_number(1e200)", "(dv-5068)"},
        {"to_number('1E-131')", "(dv-5069)"},
        {"dv_mul(to_number('1E100'), to_number('1E100'))", "(dv-5068)"},
        {"dv_round(to_number('5E125'), -126)", "(dv-5068)"},
        {"dv_round(to_number('-6E125'), -126)", "(dv-5068)"},
        {"dv_cast_number(1234.5, 5, 2)", "(dv-5111)"},
        {"dv_sum(9e999)", "(dv-5074)"},
    };
    sqlite_session session;
    for (const call_case &c : cases) {
        const std::string text = session.value(std::string("SELECT ") + c.call);
        const std::string call = c.call;
        const std::string start = "error: " + call.substr(0, call.find('(')) + ": ";
        EXPECT_TRUE(text.starts_with(start) && text.ends_with(c.want)) << call << " gives " << text;
        EXPECT_GT(text.size(), start.size() + strlen(c.want) + 10) << "no message: " << text;
    }
    EXPECT_TRUE(session.value("SELECT dv_cast_number(1234.5, 5, 2)").find("1234.5") != std::string::npos);
}

TEST(SqlNumberFunctions, ArgumentOfAnotherKindIsAnError) {
    constexpr call_case cases[] = {
        {"dv_add('12', 1)", "dv_add: argument 1 is TEXT where NUMBER is expected; to_number() reads text"},
        {"dv_add(1, '12')", "dv_add: argument 2 is TEXT where NUMBER is expected; to_number() reads text"},
        {"dv_round(1.5, '1')", "dv_round: argument 2 is TEXT where INTEGER is expected"},
        {"dv_round(1.5, 1.0)", "dv_round: argument 2 is REAL where INTEGER is expected"},
        {"dv_round(1.5, to_number(1))", "dv_round: argument 2 is NUMBER where INTEGER is expected"},
        {"dv_sum('1')", "dv_sum: argument 1 is TEXT where NUMBER is expected; to_number() reads text"},
        {"dv_cast_number(1, 0)", "dv_cast_number: the precision lies in 1..38"},
        {"dv_cast_number(1, 39, 2)", "dv_cast_number: the precision lies in 1..38"},
        {"dv_cast_number(1, 5, -128)", "dv_cast_number: the scale lies in -127..127"},
        {"dv_add(1)", "wrong number of arguments to function dv_add()"},
    };
    sqlite_session session;
    for (const call_case &c : cases) {
        EXPECT_EQ(session.value(std::string("SELECT ") + c.call), std::string("error: ") + c.want) << c.call;
    }
}

TEST(SqlGeneralFunctions, DumpTakesAnyLengthUpToTheConnectionsLimit) {
    sqlite_session session;
    EXPECT_EQ(session.value("SELECT length(dump(zeroblob(1000000)))"), std::to_string(3 * 1000000 + 30));
    session.limit_length(100'000);
    EXPECT_EQ(session.value("SELECT dump(zeroblob(50000))"), "error: string or blob too big");
}

// Every line "SELECT ...;  -- result" of the manual.
TEST(SqlManual, ExamplesGiveWhatTheySay) {
    const std::string here = __FILE__;
    std::ifstream manual(here.substr(0, here.rfind("/test/")) + "/docs/sql.md");
    ASSERT_TRUE(manual.is_open());
    sqlite_session session;
    int examples = 0;
    for (std::string line; std::getline(manual, line);) {
        const size_t comment = line.find(";  -- ");
        if (!line.starts_with("SELECT ") || comment == std::string::npos) continue;
        EXPECT_EQ(session.value(line.substr(0, comment)), line.substr(comment + 6)) << line;
        ++examples;
    }
    EXPECT_GE(examples, 20);
}
