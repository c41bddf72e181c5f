// A host's own base library takes the place of the default one: the library must not bind its imports inside.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

std::string output_of_(const std::string &command) {
    std::string output;
    FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "cannot run " + command;
    char chunk[256];
    while (std::fgets(chunk, sizeof chunk, pipe) != nullptr) output += chunk;
    pclose(pipe);
    return output;
}

TEST(Preload, RaisesGoToTheHostsFunction) {
    const std::string library = DV_PRELOAD_LIBRARY;
    if (library.empty())
        GTEST_SKIP() << "needs shared libraries, and no sanitizer's runtime before the preloaded one";
    const std::string emulator = DV_TEST_EMULATOR;
    const std::string program = std::string(" \"") + DV_PRELOAD_PROGRAM + "\"";
    const std::string preload = (emulator.empty() ? "" : " -E ") + ("LD_PRELOAD=\"" + library + "\"");
    EXPECT_EQ(output_of_(emulator + program), "default -5070 number_div\n");
    EXPECT_EQ(output_of_(emulator + preload + program), "preloaded -5070 number_div\n");
}

}  // namespace
