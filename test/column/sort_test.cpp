#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <ostream>

#include "column_support.h"
#include "dvtypes/column_key.h"

namespace dv::test {
namespace {

enum class arrangement_t { shuffled, sorted, reversed };

// Groups of keys that agree in their first bits, and some others, which agree with none.
struct ties_t {
    size_t width;        // of a key
    size_t groups;       // how many
    size_t size;         // of each group
    size_t agreed_bits;  // of its keys; those behind are random
    uint8_t mask;        // which bits of the bytes behind are
    size_t others;
    arrangement_t arrangement;

    friend std::ostream &operator<<(std::ostream &out, const ties_t &x) {
        return out << x.groups << " groups of " << x.size << " keys of " << x.width << " bytes that agree in "
                   << x.agreed_bits << " bits, mask " << int{x.mask} << ", and " << x.others
                   << " others, arrangement " << static_cast<int>(x.arrangement);
    }
};

std::string random_key_(size_t width, number_source &source) {
    std::string key(width, '\0');
    for (char &byte : key) byte = static_cast<char>(source.bits());
    return key;
}

void change_behind_(std::string &key, size_t agreed_bits, uint8_t mask, number_source &source) {
    for (size_t i = agreed_bits / 8; i < key.size(); ++i) {
        const int own = i == agreed_bits / 8 ? 0xFF >> agreed_bits % 8 : 0xFF;
        const auto bits = static_cast<int>(source.bits()) & own & mask;
        key[i] = static_cast<char>((static_cast<uint8_t>(key[i]) & ~(own & mask)) | bits);
    }
}

std::vector<std::string> keys_of_(const ties_t &ties, number_source &source) {
    std::vector<std::string> keys;
    for (size_t group = 0; group < ties.groups; ++group) {
        std::string key = random_key_(ties.width, source);
        for (size_t i = 0; i < ties.size; ++i) {
            change_behind_(key, ties.agreed_bits, ties.mask, source);
            keys.push_back(key);
        }
    }
    for (size_t i = 0; i < ties.others; ++i) keys.push_back(random_key_(ties.width, source));
    std::ranges::shuffle(keys, std::mt19937_64(source.bits()));
    if (ties.arrangement != arrangement_t::shuffled) std::ranges::sort(keys);
    if (ties.arrangement == arrangement_t::reversed) std::ranges::reverse(keys);
    return keys;
}

std::vector<int64_t> sorted_by_memcmp_(const std::vector<std::string> &keys) {
    std::vector<int64_t> rows(keys.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::ranges::stable_sort(
        rows, {}, [&](int64_t row) -> const std::string & { return keys[static_cast<size_t>(row)]; });
    return rows;
}

std::vector<int64_t> sorted_by_library_(const std::vector<std::string> &keys, size_t width) {
    std::string bytes;
    for (const std::string &key : keys) bytes += key;
    std::vector<int64_t> rows(keys.size());
    const guarded scratch(dv_sort_scratch_size(static_cast<int64_t>(keys.size()), width));
    dv_sort_keys(bytes.data(), width, static_cast<int64_t>(keys.size()), rows.data(), scratch.text());
    EXPECT_TRUE(scratch.intact());
    return rows;
}

template <typename T, size_t N>
T one_of_(const T (&values)[N], number_source &source) {
    return values[source.bits() % N];
}

ties_t random_ties_(number_source &source) {
    constexpr size_t sizes[] = {1, 2, 63, 64, 65, 255, 256, 257, 1000, 20'000};
    constexpr size_t widths[] = {1, 5, 8, 9, 12, 16, 23, 40};
    constexpr size_t others[] = {0, 0, 1, 2, 300, 5000};
    constexpr uint8_t masks[] = {0xFF, 0xFF, 0x0F, 0x81, 0x01, 0x00};
    ties_t ties{};
    ties.width = one_of_(widths, source);
    ties.size = one_of_(sizes, source);
    ties.groups = 1 + source.bits() % std::clamp<size_t>(4000 / ties.size, 1, 100);
    // Often where the first word of a key ends that numbers of rows stand behind.
    ties.agreed_bits = source.pick(0, 1) == 0 ? source.bits() % (8 * ties.width + 1)
                                              : std::min<size_t>(35 + source.bits() % 30, 8 * ties.width);
    ties.mask = one_of_(masks, source);
    ties.others = one_of_(others, source);
    ties.arrangement = static_cast<arrangement_t>(source.pick(0, 2));
    return ties;
}

}  // namespace

// Which of the bits of a key decide, and whether those in front of them are used up, is different in each.
TEST(ColumnSort, OrdersTiesOfTheFirstBitsByTheRest) {
    number_source source(20261122);
    for (long i = 0; i < scaled(300); ++i) {
        const ties_t ties = random_ties_(source);
        const auto keys = keys_of_(ties, source);
        ASSERT_EQ(sorted_by_library_(keys, ties.width), sorted_by_memcmp_(keys)) << ties;
    }
}

}  // namespace dv::test
