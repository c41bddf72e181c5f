// Records of CSV texts, whatever the pieces in which they come.

#include "csv_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>

using dv::import::csv_reader;
using dv::import::csv_record;

namespace {

// "2:[a][b]N" for each record: its line, its fields, N behind those that are NULL.
std::string read_(const std::string &text, size_t piece) {
    std::string read;
    csv_reader reader(',', [&](const csv_record &record) {
        read += std::to_string(record.line) + ":";
        for (const auto &field : record.fields)
            read.append("[").append(field.text).append(field.is_null ? "]N" : "]");
        read += "\n";
    });
    try {
        for (size_t at = 0; at < text.size(); at += piece)
            reader.feed(std::string_view(text).substr(at, piece));
        reader.finish();
    } catch (const std::runtime_error &error) {
        read += error.what();
    }
    return read;
}

TEST(CsvReader, TakesEveryShapeOfRecord) {
    constexpr std::pair<const char *, const char *> cases[] = {
        {"", ""},
        {"a", "1:[a]\n"},
        {"a,b\nc,d\n", "1:[a][b]\n2:[c][d]\n"},
        {"a\r\nb\rc\n", "1:[a]\n2:[b]\n3:[c]\n"},
        {",\"\",", "1:[]N[][]N\n"},
        {"\n\r\n\na", "4:[a]\n"},
        {"\"a\r\nb\nc\",d\ne", "1:[a\r\nb\nc][d]\n4:[e]\n"},
        {"\"say \"\"a\"\", b\"", "1:[say \"a\", b]\n"},
        {" a , b ", "1:[ a ][ b ]\n"},
        {"a\"b\",c", "1:[a\"b\"][c]\n"},
        {"a\nb,\"c\nd", "1:[a]\nline 2: the quote of a field does not end"},
    };
    for (const auto &[text, want] : cases) {
        for (const size_t piece : {1U, 2U, 3U, 1000U})
            EXPECT_EQ(read_(text, piece), want) << text << " by " << piece;
    }
}

// A field as RFC 4180 writes it.
std::string written_(const std::string &field) {
    if (field.find_first_of(",\"\n") == field.npos) return field;
    std::string quoted = "\"";
    for (const char c : field) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string random_field_(std::mt19937 &random) {
    std::string field;
    for (auto n = random() % 6; n > 0; --n) field += "ab,\"\n "[random() % 6];
    return field;
}

// Line ends in fields are counted, and the pieces in which a text comes do not matter.
TEST(CsvReader, ReadsBackWhatIsWritten) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const char *const end = random() % 2 == 0 ? "\n" : "\r\n";
        std::string text, want;
        auto line = 1L;
        for (int record = 0; record < 5; ++record) {
            want += std::to_string(line++) + ":";
            const std::string fields[] = {random_field_(random), random_field_(random),
                                          random_field_(random)};
            for (const std::string &field : fields) {
                text += (&field == fields ? "" : ",") + written_(field);
                want += "[" + field + (field.empty() ? "]N" : "]");
                line += std::ranges::count(field, '\n');
            }
            text += end;
            want += "\n";
        }
        ASSERT_EQ(read_(text, 1 + random() % 9), want) << text;
    }
}

}  // namespace
