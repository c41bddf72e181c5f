#include <gtest/gtest.h>

#include "twin_total.h"

namespace dv::test {
namespace {

using integer_t = boost::multiprecision::cpp_int;

// Terms in long hand: integers in units of 10^-168.
class twin_terms {
  public:
    void add(const number_t &x, int sign) {
        const decimal_t value = decode(x);
        const integer_t term =
            integer_t(value.digits) * pow(integer_t(10), static_cast<unsigned>(value.exponent + 168));
        count_ += sign;
        sum_ += sign * term;
        squares_ += sign * term * term;
    }
    int count() const { return count_; }

    // The first 38 digits and what half up makes of the next one.
    std::string variance(int is_sample) const {
        return rounded_(numerator_() * pow(integer_t(10), 800) / divisor_(is_sample), 336 + 800);
    }
    std::string deviation(int is_sample) const {
        return rounded_(sqrt(integer_t(numerator_() * pow(integer_t(10), 800) / divisor_(is_sample))),
                        168 + 400);
    }

  private:
    integer_t numerator_() const { return count_ * squares_ - sum_ * sum_; }
    integer_t divisor_(int is_sample) const { return integer_t(count_) * (count_ - is_sample); }
    static std::string rounded_(const integer_t &cut, int places) {
        const std::string digits = cut.str();
        if (digits.size() <= 38) return digits + "E-" + std::to_string(places);
        const integer_t kept = integer_t(digits.substr(0, 38)) + (digits[38] >= '5' ? 1 : 0);
        return kept.str() + "E" + std::to_string(static_cast<int>(digits.size()) - 38 - places);
    }

    integer_t sum_ = 0, squares_ = 0;
    int count_ = 0;
};

// The totals of terms and of their squares.
struct totals {
    number_total_t sum{}, squares{};
    std::unique_ptr<uint64_t[]> sum_memory, squares_memory;
    twin_terms twin;

    void add(const number_t &x) {
        with_memory(sum, sum_memory, [&] { return number_total_add(&sum, &x); });
        with_memory(squares, squares_memory, [&] { return number_total_add_product(&squares, &x, &x); });
        twin.add(x, 1);
    }
    void sub(const number_t &x) {
        with_memory(sum, sum_memory, [&] { return number_total_sub(&sum, &x); });
        with_memory(squares, squares_memory, [&] { return number_total_sub_product(&squares, &x, &x); });
        twin.add(x, -1);
    }
};

void expect_both_(const totals &of, int is_sample) {
    const number_t none{};
    const auto sample = static_cast<uint8_t>(is_sample);
    const auto expected = [](const std::string &text) { return theirs([&] { return twin_read(text); }); };
    ASSERT_EQ(ours(none, [&](number_t *x) { number_total_variance(&of.sum, &of.squares, sample, x); }),
              expected(of.twin.variance(is_sample)));
    ASSERT_EQ(ours(none, [&](number_t *x) { number_total_deviation(&of.sum, &of.squares, sample, x); }),
              expected(of.twin.deviation(is_sample)));
}

TEST(TotalVariance, IsThatInLongHandRoundedOnce) {
    number_source source(61);
    for (long round = scaled(2'000); round > 0; --round) {
        totals of;
        const int kind = source.pick(0, 2);  // 1: values that differ in the last places alone
        const number_t base = source.with_digits(30, 10);
        number_t last = base;
        for (int i = source.pick(2, 12); i > 0; --i) {
            number_t x =
                kind == 0 ? source.any() : source.with_digits(source.pick(1, 16), source.pick(-3, 9));
            if (kind == 1) {
                x = base;
                const number_t little = source.with_digits(2, -19);
                number_add(&x, &little);
            }
            of.add(x);
            last = x;
        }
        if (source.pick(0, 3) == 0 && of.twin.count() > 2) of.sub(last);
        ASSERT_EQ(number_total_has_squares(&of.sum, &of.squares), 1);
        ASSERT_NO_FATAL_FAILURE(expect_both_(of, source.pick(0, 1)));
    }
}

TEST(TotalVariance, HasRootsThatEndAndRootsJustBesideThem) {
    // Of two terms 0 and 2d the variance of the population is d^2; of a sample 2d^2.
    for (const char *d :
         {"1", "10", "3", "0.5", "99999999999999999999999999999999999999", "1E-60", "1.5E60",
          "1234567890123456789012345678901234567.5", "0.99999999999999999999999999999999999995"}) {
        totals of;
        number_t twice = num(d);
        number_add(&twice, &twice);
        of.add(num("0"));
        of.add(twice);
        ASSERT_NO_FATAL_FAILURE(expect_both_(of, 0)) << d;
        ASSERT_NO_FATAL_FAILURE(expect_both_(of, 1)) << d;
    }
}

TEST(TotalVariance, OfTooFewTermsIsNullAndOfEqualOnesZero) {
    const auto variance = [](const totals &of, uint8_t is_sample) {
        number_t x = num("7"), root = num("7");
        number_total_variance(&of.sum, &of.squares, is_sample, &x);
        number_total_deviation(&of.sum, &of.squares, is_sample, &root);
        EXPECT_EQ(x, root);
        return x;
    };
    totals of;
    EXPECT_EQ(variance(of, 0).size, 0);
    of.add(num("-8.3"));
    EXPECT_EQ(variance(of, 0), num("0"));
    EXPECT_EQ(variance(of, 1).size, 0);
    of.add(num("-8.3"));
    EXPECT_EQ(variance(of, 1), num("0"));
}

TEST(TotalVariance, RefusesTotalsOfOtherTerms) {
    const auto expect_refused = [](const totals &of, const char *what) {
        number_t x{};
        EXPECT_EQ(number_total_has_squares(&of.sum, &of.squares), 0) << what;
        EXPECT_EQ(raise_of([&] { number_total_variance(&of.sum, &of.squares, 0, &x); }), -5121) << what;
        EXPECT_EQ(raise_of([&] { number_total_deviation(&of.sum, &of.squares, 1, &x); }), -5121) << what;
    };
    const number_t one = num("1"), three = num("3");
    totals counts;
    number_total_add(&counts.sum, &one);
    expect_refused(counts, "counts");
    totals squares;
    number_total_add(&squares.sum, &three);
    number_total_add(&squares.squares, &one);
    expect_refused(squares, "squares below the square");
    totals below;
    below.sub(one);
    expect_refused(below, "a count below 0");
    // The largest total there is, whose square no integer holds, and one of a place that no NUMBER has.
    for (const char *head : {"\1\0\x7F\x58\0\0\0\0\0\0\0\1", "\1\0\x7F\xAB\0\0\0\0\0\0\0\1"}) {
        totals far;
        uint64_t memory[2][DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
        number_total_attach(&far.sum, sizeof memory[0], memory[0]);
        number_total_attach(&far.squares, sizeof memory[1], memory[1]);
        std::string bytes(head, 12);
        bytes.append(head[3] == '\x58' ? 250 : 1, '\x11');
        const auto *const from = reinterpret_cast<const uint8_t *>(bytes.data());
        ASSERT_EQ(number_total_unpack(&far.sum, static_cast<int64_t>(bytes.size()), from), 0);
        ASSERT_EQ(number_total_unpack(&far.squares, static_cast<int64_t>(bytes.size()), from), 0);
        expect_refused(far, "no sum of numbers");
    }
}

TEST(TotalProducts, AreExactAndTakenOutAgain) {
    number_source source(62);
    for (long round = scaled(3'000); round > 0; --round) {
        number_total_t total{};
        std::unique_ptr<uint64_t[]> memory;
        twin_total twin;
        number_t x{}, y{};
        for (int i = source.pick(1, 10); i > 0; --i) {
            const bool is_short = source.pick(0, 1) != 0;
            x = is_short ? source.with_digits(source.pick(1, 15), source.pick(-2, 12)) : source.any();
            y = is_short ? source.with_digits(source.pick(1, 15), source.pick(-2, 12)) : source.any();
            with_memory(total, memory, [&] { return number_total_add_product(&total, &x, &y); });
            twin.add_product(x, y);
        }
        ASSERT_EQ(packed(total), twin.packed()) << describe(x) << describe(y);
        const number_t z = source.any();
        const std::string before = packed(total);
        with_memory(total, memory, [&] { return number_total_add_product(&total, &z, &y); });
        with_memory(total, memory, [&] { return number_total_sub_product(&total, &z, &y); });
        ASSERT_EQ(packed(total), before) << describe(z);
    }
    number_total_t total{};
    const number_t one = num("1");
    EXPECT_EQ(number_total_add_product(&total, &one, _number_null), 0);
    EXPECT_EQ(number_total_sub_product(&total, _number_null, &one), 0);
    EXPECT_EQ(total.count, 0);
}

}  // namespace
}  // namespace dv::test
