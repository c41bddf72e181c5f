// What is UTF-8, against the C library's converter, which also takes what lies beyond U+10FFFF.

#include "utf8.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

using namespace dv::import;

namespace {

class converter {
  public:
    ~converter() { iconv_close(to_); }

    bool takes(std::string text) const {
        char out[64];
        char *from = text.data(), *to = out;
        size_t left = text.size(), room = sizeof out;
        iconv(to_, nullptr, nullptr, nullptr, nullptr);
        return iconv(to_, &from, &left, &to, &room) != static_cast<size_t>(-1);
    }

  private:
    iconv_t to_ = iconv_open("UCS-4LE", "UTF-8");
};

// Every pair of bytes, with ends that continue, that do not, and that are missing.
TEST(Utf8, IsWhatTheConverterTakes) {
    const converter reference;
    constexpr int beyond = 0xF490;
    for (int pair = 0; pair < 0x10000; ++pair) {
        const std::string begin = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        for (const char *end : {"", "a", "\x80", "\xBF", "\x80\x80", "\xBF\xBF", "\xBF\xC0", "\x80\x7F"}) {
            const std::string text = begin + end;
            ASSERT_EQ(is_utf8(text), pair < beyond && reference.takes(text))
                << std::hex << pair << " " << testing::PrintToString(end);
            ASSERT_EQ(is_utf8("12345678" + text + "1234567"), is_utf8(text)) << std::hex << pair;
        }
    }
}

}  // namespace
