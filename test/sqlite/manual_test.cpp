// The examples of the manuals: every line "SELECT ...;  -- result".

#include <fstream>

#include "project_file.h"
#include "sqlite_session.h"

using namespace dv::test;

class SqlManual : public testing::TestWithParam<const char *> {};

TEST_P(SqlManual, ExamplesGiveWhatTheySay) {
    std::ifstream manual(project_file(std::string("docs/") + GetParam()));
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

INSTANTIATE_TEST_SUITE_P(Documents, SqlManual, testing::Values("sql.md", "datetime-models.md"));
