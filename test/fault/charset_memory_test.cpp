// No memory while a character set is used for the first time. The C library's converters are opened here.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <iconv.h>

#include <cerrno>

#include "raise.h"

using namespace dv::test;

namespace {

bool _has_memory = true;

}  // namespace

extern "C" [[gnu::visibility("default")]] iconv_t iconv_open(const char *to, const char *from) {
    static const auto real =
        reinterpret_cast<iconv_t (*)(const char *, const char *)>(dlsym(RTLD_NEXT, "iconv_open"));
    if (_has_memory) return real(to, from);
    errno = ENOMEM;
    return reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): as POSIX has it
}

// An error of its own each time; then the set is as usable as any other.
TEST(CharsetMemory, MayBeMissingAtTheFirstUse) {
    constexpr uint8_t units[] = {0x00, 0xC4, 0x04, 0x14, 0x03, 0x91};  // each set has one of them
    for (int set = 0; set < DVSTR_CHARSET_MAX; ++set) {
        if (set == DVSTR_CHARSET_ASCII || set == DVSTR_CHARSET_UTF8) continue;
        const charset_info_t &cs = _charset_info[set];
        uint8_t again[sizeof units] = {};
        char text[16] = "\xC4\xC4", lower[16];
        int size = 2, is_usable = 0;
        for (const bool has_memory : {false, false, true}) {
            _has_memory = has_memory;
            EXPECT_EQ(raise_of([&] { is_usable = dv_charset_is_usable(set); }),
                      has_memory ? 0 : DV_ERR_NO_MEMORY);
            if (has_memory && is_usable == 0) break;
            const int want = has_memory ? 0 : DV_ERR_NO_MEMORY;
            EXPECT_EQ(raise_of([&] {
                          const int written = cs.from_ucs2(&cs, units, sizeof units, text, sizeof text);
                          size = written;
                      }),
                      want)
                << cs.name;
            EXPECT_EQ(raise_of([&] { (void)cs.to_ucs2(&cs, text, size, again, sizeof again); }), want)
                << cs.name;
            EXPECT_EQ(
                raise_of([&] { (void)cs.to_case(&cs, DVSTR_CASE_LOWER, text, size, lower, sizeof lower); }),
                want)
                << cs.name;
        }
        int same = 0;
        for (size_t i = 0; i < sizeof units; i += 2) {
            const bool is_same = again[i] == units[i] && again[i + 1] == units[i + 1];
            EXPECT_TRUE(is_usable == 0 || is_same || again[i + 1] == '?') << cs.name;
            same += is_same;
        }
        EXPECT_TRUE(is_usable == 0 || same > 0) << cs.name;
    }
}
