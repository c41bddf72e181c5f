// What the frozen cases raise is what the public headers say that it raises.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "project_file.h"
#include "public_headers.h"

using namespace dv::test;

namespace {

// Raised while a case makes its model or setting ready, before the call.
bool prepares_(const std::string &raiser) {
    constexpr const char *functions[] = {"dv_nls_parse", "dt_fmt_ctx_set", "parse_dt_fmt_",
                                         "check_duplicated_token_", "parse_fsec_prec_"};
    return std::count(std::begin(functions), std::end(functions), raiser) == 1;
}

}  // namespace

TEST(DocumentedCodes, AreAllThatTheVectorsRaise) {
    const std::regex raising(R"(^(?:~ )?(\w+) .*= .*!(-\d+) (\w+))");
    size_t checked = 0;
    for (const auto &file : std::filesystem::directory_iterator(project_file("vectors"))) {
        std::ifstream lines(file.path());
        for (std::string line; std::getline(lines, line);) {
            std::smatch raised;
            if (!std::regex_search(line, raised, raising) || !documented_functions().contains(raised[1]))
                continue;
            const std::set<int> &codes = documented_codes(raised[1]);
            const bool is_documented = codes.contains(std::stoi(raised[2]));
            EXPECT_TRUE(is_documented || (prepares_(raised[3]) && raised[3] != raised[1])) << line;
            ++checked;
        }
    }
    EXPECT_GT(checked, 2000u);
    // What the test reads is right.
    EXPECT_EQ(documented_codes("number_add"), (std::set<int>{-5068, -5069}));
}
