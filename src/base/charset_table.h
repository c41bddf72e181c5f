// The characters of one set that libc's iconv knows, as tables in both directions, read on demand.

#ifndef DV_BASE_CHARSET_TABLE_H
#define DV_BASE_CHARSET_TABLE_H

#include <array>
#include <atomic>
#include <cstdint>

#include "dvtypes/base.h"

namespace dv::impl {

using charset_row_flags_t = std::array<std::atomic<bool>, 0x100>;

// All zero at first: rows of 256 entries are filled in when they are first asked for, and never change again.
// Unit 0 in a table says: no character. ASCII has its own bytes in every set.
struct charset_table_t {
    // The bytes of a unit from 0x80: their number << 24 | the bytes, the last one lowest; 0: none.
    uint32_t bytes_of(int unit) {
        const auto row = static_cast<size_t>(unit >> 8);
        if (!has_units_[row].load(std::memory_order_acquire)) fill_units(row);
        return bytes_[static_cast<size_t>(unit)];
    }

    // Makes the entries of sequences that begin with this byte ready.
    void prepare_lead(uint8_t lead) {
        if (!has_lead_[lead].load(std::memory_order_acquire)) fill_lead(lead);
    }
    int longest(uint8_t lead) const { return longest_[lead]; }  // bytes of the longest character
    int single(uint8_t byte) const { return single_[byte]; }
    int pair(uint8_t lead, uint8_t second) const { return pair_[static_cast<size_t>(lead << 8 | second)]; }

    // For a lead byte whose longest character has three bytes.
    int triple(uint8_t lead, uint8_t second, uint8_t third);

    // Whether iconv knows the set. Raises DV_ERR_NO_MEMORY.
    bool is_usable();

  private:
    dvstr_charset_e set_() const;

    // Raise the errors of a set that cannot be read, see below.
    [[gnu::cold]] void fill_units(size_t row);
    [[gnu::cold]] void fill_lead(uint8_t lead);

    charset_row_flags_t has_units_, has_lead_;
    std::array<uint32_t, 0x10000> bytes_;
    std::array<uint16_t, 0x10000> pair_;  // by first byte << 8 | second byte
    std::array<uint16_t, 0x100> single_;  // from 0x80
    std::array<uint8_t, 0x100> longest_;
};

// The table of a set other than ASCII and UTF-8. Its entries are safe from any thread. A character outside
// ASCII raises DV_ERR_CHARSET_UNUSABLE when iconv lacks the set's data, DV_ERR_NO_MEMORY when it lacks memory
// just now.
charset_table_t *charset_table(dvstr_charset_e set);

}  // namespace dv::impl

#endif  // DV_BASE_CHARSET_TABLE_H
