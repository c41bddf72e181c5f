// A host's own base library takes the place of the default one: the library must not bind its imports inside.

#include <gtest/gtest.h>

#include "shell_output.h"

namespace {

TEST(Preload, RaisesGoToTheHostsFunction) {
    const std::string library = DV_PRELOAD_LIBRARY;
    if (library.empty())
        GTEST_SKIP() << "needs shared libraries, and no sanitizer's runtime before the preloaded one";
    const std::string emulator = DV_TEST_EMULATOR;
    const std::string program = std::string(" \"") + DV_PRELOAD_PROGRAM + "\"";
    const std::string preload = (emulator.empty() ? "" : " -E ") + ("LD_PRELOAD=\"" + library + "\"");
    EXPECT_EQ(dv::test::shell_output(emulator + program), "default -5070 number_div\n0");
    EXPECT_EQ(dv::test::shell_output(emulator + preload + program), "preloaded -5070 number_div\n0");
}

}  // namespace
