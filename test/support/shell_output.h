// What a shell command writes, for tests of programs.

#ifndef DV_TEST_SHELL_OUTPUT_H
#define DV_TEST_SHELL_OUTPUT_H

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace dv::test {

// Its standard output and error, and behind them its status: "text\n0".
inline std::string shell_output(const std::string &command) {
    FILE *const pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
    if (pipe == nullptr) return "cannot run " + command;
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) output += static_cast<char>(c);
    return output + std::to_string(WEXITSTATUS(pclose(pipe)));
}

}  // namespace dv::test

#endif  // DV_TEST_SHELL_OUTPUT_H
