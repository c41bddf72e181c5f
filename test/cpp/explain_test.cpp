// explain.hpp: what failed, with its values and its place.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>

namespace {

using dv::date, dv::number, dv::timestamp, dv::timestamp_ltz, dv::timestamp_tz;
using std::string_view;

constexpr size_t nowhere = dv::explanation::nowhere;

struct text_case {
    dv::explanation got;
    int code;
    size_t place;
    const char *sentence;
};

TEST(CppExplain, TextsAreShownWithTheirPlace) {
    const dv::number_reader euros("999,990.00");
    const dv::reader<date> german("DD.MM.YYYY");
    const auto of_number = [](string_view text) { return dv::explain<number>(text); };
    const std::string form = "Invalid number: the text does not have the form of a number.";
    const text_case cases[] = {
        {of_number("12.5"), 0, nowhere, ""},
        {of_number("1.2.3"), -5074, 3, " The text is \"1.2.3\", wrong at \".3\"."},
        {of_number(" 12 3"), -5074, 4, " The text is \" 12 3\", wrong at \"3\"."},
        {of_number("12e"), -5074, 3, " The text is \"12e\", which ends too soon."},
        {of_number("-"), -5074, 1, " The text is \"-\", which ends too soon."},
        {of_number("x"), -5074, 0, " The text is \"x\", wrong at \"x\"."},
        {of_number(""), -5074, 0, " The text is empty."},
        {of_number("1E126"), -5068, nowhere, nullptr},
        {dv::explain<number>("1,2x4.50", euros), -5074, 3, " The text is \"1,2x4.50\", wrong at \"x4.50\"."},
        {dv::explain<number>("1,234.50", euros), 0, nowhere, ""},
        {dv::explain<date>("2026-02-30"), -5114, 8, nullptr},
        {dv::explain<date>("2026-13-13"), -5114, nowhere, nullptr},
        {dv::explain<date>("2026-02-x"), -5113, 8, nullptr},
        {dv::explain<date>("30.02.2026", german), -5114, 0, nullptr},
        {dv::explain<date>("28.02.2026", german), 0, nowhere, ""},
    };
    for (const text_case &c : cases) {
        SCOPED_TRACE(c.got.what());
        EXPECT_EQ(c.got.code(), c.code);
        EXPECT_EQ(c.got.place(), c.place);
        if (c.sentence != nullptr) {
            EXPECT_EQ(c.got.what(), (c.code == 0 ? "" : form) + c.sentence);
        }
        EXPECT_EQ(string_view(c.got.what()).find('{'), nowhere);
    }
    EXPECT_STREQ(dv::explain<date>("2026-02-30").what(),
                 "The value 30 of the field \"day\" is out of range: 1 to 28 is accepted. The text is "
                 "\"2026-02-30\", wrong at \"30\".");
}

// Of every text that a number has with one byte changed, the place is not behind that byte; and what stands
// in front of it is the beginning of some number.
TEST(CppExplain, PlacesInNumbersAreNotBehindTheFault) {
    const std::string texts[] = {"12", " -12.50 ", "+.5E-10", "123456789012345678901234567890.25E+12"};
    for (const std::string &text : texts) {
        ASSERT_TRUE(dv::try_parse<number>(text)) << text;
        for (size_t i = 0; i < text.size(); ++i) {
            std::string changed = text;
            changed[i] = 'x';
            const auto why = dv::explain<number>(changed);
            ASSERT_EQ(why.code(), -5074) << changed;
            EXPECT_EQ(why.place(), i) << changed;
        }
    }
    std::string hostile(1000, '\x80');
    for (const string_view text : {string_view(hostile), string_view("\0", 1),
                                   string_view("1\0"
                                               "2",
                                               3)}) {
        EXPECT_LE(dv::explain<number>(text).place(), text.size());
        EXPECT_LT(string_view(dv::explain<number>(text).what()).size(), 500);
    }
    EXPECT_EQ(dv::explain<date>(std::string(1000, '1')).code(),
              dv::try_parse<date>(std::string(1000, '1')).code());
}

TEST(CppExplain, LocalTimesAreToldFromOffsets) {
    const std::string gap =
        " In Europe/Paris clocks were set forward from 2026-03-29 02:00:00 to 2026-03-29 03:00:00.";
    const dv::zone paris("Europe/Paris");
    const timestamp skipped(2026, 3, 29, 2, 30);
    EXPECT_EQ(dv::explain<timestamp_tz>(skipped, paris).what(), dv_error_text(-5110) + gap);
    EXPECT_EQ(dv::explain<timestamp_ltz>(skipped, paris).what(), dv_error_text(-5110) + gap);
    EXPECT_EQ(dv::explain<timestamp_tz>(timestamp(2026, 3, 29, 3), paris).code(), 0);
    EXPECT_EQ(dv::explain<timestamp_tz>("2026-03-29 02:30 Europe/Paris").what(),
              std::string(dv_error_text(-5110)) + " The text is \"2026-03-29 02:30 Europe/Paris\"." + gap);
    const std::string offsets[][2] = {
        {"2026-07-01 02:30 Asia/Seoul +05:00",
         "The UTC offset +05:00 is not in force in Asia/Seoul at that local time, but +09:00."},
        {"2026-10-25 02:30 europe/paris -03:30",
         "The UTC offset -03:30 is not in force in Europe/Paris at that local time, but +01:00 or +02:00."},
    };
    for (const auto &[text, sentence] : offsets) {
        EXPECT_EQ(dv::explain<timestamp_tz>(text).what(), sentence) << text;
        EXPECT_EQ(dv::explain<timestamp_tz>(text).code(), -5110) << text;
    }
}

TEST(CppExplain, OperationsAreDoneOnceMore) {
    EXPECT_EQ(dv::explain([] { (void)(number(1) / 0); }).code(), -5070);
    EXPECT_EQ(dv::explain([] { (void)(number(1) / 2); }).code(), 0);
    EXPECT_STREQ(dv::explain([] { (void)(number(1) / 2); }).what(), "");
    EXPECT_STREQ(dv::explain<date>(2026, 13, 1).what(), dv::explain([] { (void)date(2026, 13, 1); }).what());
    EXPECT_STREQ(dv::error(-5114).what(), dv::make_error_code(-5114).message().c_str());
    EXPECT_STREQ(dv::error(-5113).what(), "Invalid ...: \"...\" (...).");
}

template <typename... Arguments>
concept can_explain_row = requires(const Arguments &...given) {
    dv::explain_row(0, given...);
};

TEST(CppExplain, RowsTellTheirErrorAndWriteNothing) {
    dv::texts texts{"29.02.2024", "30.02.2024", "x"};
    const dv::reader<date> german("DD.MM.YYYY");
    std::vector<date> days(3);
    const auto faults = dv::try_run(dv_date_column_from_str, texts, german, nullptr, dv::column(days));
    const std::vector<date> read = days;
    for (int64_t row = 0; row < 3; ++row) {
        const dv::row_error why =
            dv::explain_row(row, dv_date_column_from_str, texts, german, nullptr, dv::column(days));
        EXPECT_EQ(why.code(), faults[row]);
        EXPECT_EQ(why.row(), row);
        const std::string told = dv::explain<date>(texts[static_cast<size_t>(row)], german).record().message;
        EXPECT_EQ(why.what(), told);
    }
    EXPECT_EQ(days, read);

    const std::vector<number> x = {1, 7, 1}, y = {1, 0, 2};
    std::vector<number> quotients = {5, 6, 7};
    const auto why =
        dv::explain_row(1, number_column_div, dv::column(x), dv::column(y), dv::column(quotients));
    EXPECT_EQ(why.code(), -5070);
    EXPECT_EQ(quotients, (std::vector<number>{5, 6, 7}));
    dv::texts written = dv::texts::room(3, 2);
    EXPECT_EQ(dv::explain_row(1, number_column_to_text, dv::column(x), written).code(), 0);

    EXPECT_THROW(dv::explain_row(3, number_column_to_text, dv::column(x), written), std::out_of_range);

    using numbers = dv::column<const number>;
    static_assert(can_explain_row<decltype(number_column_add) *, numbers, numbers, dv::column<number>>);
    static_assert(!can_explain_row<decltype(number_column_compare) *, numbers, numbers, int, uint8_t *>);
}

}  // namespace
