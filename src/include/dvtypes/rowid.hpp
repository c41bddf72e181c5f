// dvtypes/rowid.hpp: row identifiers as C++ values. Header only; C++20.
//
// ```cpp
// const dv::rowid row(1, 2, 3, 4);                                 // segment, file, block, row
// std::cout << row << ' ' << dv::rowid("AAAAABAACAAAAADAAE").row() << '\n';    // AAAAABAACAAAAADAAE 4
// ```
//
// Ordered by segment, file, block and row.

#ifndef DVTYPES_ROWID_HPP
#define DVTYPES_ROWID_HPP

#include <array>

#include "dvtypes/erowid.h"
#include "dvtypes/value.hpp"

namespace dv {

// A row identifier. The text has 18 characters.
class rowid : public parts::keyed_value<rowid, rowid_t> {
  public:
    struct raising {
        // Also raises -5080 for another length.
        static void read(rowid_t &x, const detail::text_argument &text) {
            erowid_t digits;
            if (text.length != int{sizeof digits}) detail::raise(-5080);
            std::memcpy(&digits, text.data, sizeof digits);
            erowid_get_rowid(&digits, &x);
        }
    };

    // All numbers 0.
    constexpr rowid() noexcept : keyed_value(rowid_t{}) {}
    // Any numbers.
    constexpr rowid(uint32_t segment, uint16_t file, uint32_t block, uint16_t row) noexcept
        : keyed_value({segment, block, file, row}) {}
    // 18 characters, as to_string writes them; throws -5080.
    explicit rowid(std::string_view text) : rowid() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of any record.
    constexpr explicit rowid(const rowid_t &record) noexcept : keyed_value(record) {}

    // The four numbers.
    constexpr uint32_t segment() const noexcept { return record_.sgmt; }
    constexpr uint16_t file() const noexcept { return record_.file; }
    constexpr uint32_t block() const noexcept { return record_.block; }
    constexpr uint16_t row() const noexcept { return record_.row; }

    // 18 characters: 6 of the segment, 3 of the file, 6 of the block, 3 of the row.
    std::string to_string() const {
        erowid_t digits;
        erowid_new(&digits, record_.sgmt, record_.file, record_.block, record_.row);
        return {digits.text, sizeof digits.text};
    }

    // The four numbers, big-endian: what SQL stores.
    constexpr std::array<uint8_t, 12> key() const noexcept {
        std::array<uint8_t, 12> bytes{};
        size_t end = 0;
        const auto put = [&](uint32_t number, int size) {
            while (size-- > 0) bytes[end++] = static_cast<uint8_t>(number >> 8 * size);
        };
        put(record_.sgmt, 4);
        put(record_.file, 2);
        put(record_.block, 4);
        put(record_.row, 2);
        return bytes;
    }
};

}  // namespace dv

#endif  // DVTYPES_ROWID_HPP
