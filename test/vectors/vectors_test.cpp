// Replays the vector files: one test a file. vectors/README.md has their format.
//
//   vectors_test [GoogleTest's options]     compares every case with its line
//   vectors_test --write FOLDER             writes the files anew into a folder, with what the library gives

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "failing_allocator.h"
#include "project_file.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

vector_operations::run_t find_operation_(std::string_view name) {
    static const auto all = [] {
        vector_operations operations;
        for (const auto add :
             {add_number_operations, add_number_text_operations, add_datetime_operations,
              add_datetime_model_operations, add_datetime_element_operations, add_zone_operations,
              add_iso_operations, add_key_operations, add_catalogue_operations})
            add(operations);
        return operations;
    }();
    return all.find(name);
}

// Where " =" ends the inputs: outside of texts.
size_t equals_sign_(std::string_view line) {
    bool is_quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '"')
            is_quoted = !is_quoted;
        else if (line[i] == '=' && !is_quoted && i > 0 && line[i - 1] == ' ')
            return i;
    }
    return line.size();
}

// A line as the library makes it: comments stay, a case keeps everything up to "=".
std::string made_anew_(std::string_view line) {
    if (line.empty() || line.front() == '#') return std::string(line);
    const size_t sign = equals_sign_(line);
    std::string_view inputs = line.substr(0, sign);
    if (inputs.starts_with("~ ")) inputs.remove_prefix(2);
    const std::string_view name = inputs.substr(0, inputs.find(' '));
    const vector_operations::run_t operation = find_operation_(name);
    vector_call call(inputs.substr(name.size()));
    if (operation == nullptr) {
        call.fail("no such operation");
    } else {
        operation(call);
        if (call.has_more() && !call.has_raised()) call.fail("an input too many");
    }
    std::string made(line.substr(0, sign));
    if (!made.ends_with(' ')) made += ' ';
    const std::string result = call.result();
    return made + (result.empty() ? "=" : "= " + result);
}

class vector_file_test : public testing::Test {
  public:
    explicit vector_file_test(std::filesystem::path file) : file_(std::move(file)) {}
    void TestBody() override {
        failing_allocator memory;  // which counts
        std::ifstream lines(file_);
        int number = 0, failures = 0;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            const std::string made = made_anew_(line);
            if (made == line) continue;
            const size_t sign = equals_sign_(line);
            ADD_FAILURE_AT(file_.c_str(), number)
                << line.substr(0, sign) << "\n  expected " << line.substr(sign) << "\n       got "
                << made.substr(std::min(sign, made.size()));
            if (++failures == 20) break;
        }
        EXPECT_GT(number, 0);
        EXPECT_EQ(memory.lost(), 0) << "of " << memory.given;
        EXPECT_EQ(failures, 0) << "scripts/vectors --update writes what the library gives now";
    }

  private:
    std::filesystem::path file_;
};

std::vector<std::filesystem::path> vector_files_() {
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(project_file("vectors"))) {
        if (entry.path().extension() == ".txt") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void write_(const std::filesystem::path &from, const std::filesystem::path &folder) {
    std::ifstream lines(from);
    std::ofstream made(folder / from.filename());
    for (std::string line; std::getline(lines, line);) made << made_anew_(line) << '\n';
}

}  // namespace

// What reads the clock reads this one: 2024-02-29 13:14:15.123456.
extern "C" void dv_getlocaltime(int *year, int *month, int *day, int *hour, int *minute, int *second,
                                int *usec) {
    *year = 2024;
    *month = 2;
    *day = 29;
    *hour = 13;
    *minute = 14;
    *second = 15;
    *usec = 123456;
}

int main(int argc, char **argv) {
    unsetenv("TZ");
    const std::vector<std::filesystem::path> files = vector_files_();
    if (argc == 3 && std::string_view(argv[1]) == "--write") {
        for (const auto &file : files) write_(file, argv[2]);
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    for (const auto &file : files) {
        testing::RegisterTest("Vectors", file.stem().c_str(), nullptr, nullptr, file.c_str(), 1,
                              [=]() -> testing::Test * { return new vector_file_test(file); });
    }
    return RUN_ALL_TESTS();
}
