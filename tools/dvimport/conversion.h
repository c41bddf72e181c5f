// The values of a column in many records, converted at once.

#ifndef DV_IMPORT_CONVERSION_H
#define DV_IMPORT_CONVERSION_H

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "column.h"
#include "sql_catalogue.h"
#include "sqlite_stored.h"

namespace dv::import {

// Does what the SQL functions of a column do, by the catalogue's bodies over columns. Texts are added, and
// converted together. What comes out is what SQLite stores for the functions' result; a text that they might
// refuse, or for which nothing came out, is theirs to answer.
class conversion {
  public:
    // NULL: one of the functions has no such body, or the constants are none that it takes.
    static std::unique_ptr<conversion> of(const column &what);

    void clear();
    void add(std::string_view text);  // an empty one is SQL NULL
    void convert();

    // The stored form of the value of the i-th text; empty: SQL NULL, or the functions are to be asked.
    std::span<const uint8_t> stored(size_t i) const { return {stored_[i].bytes, stored_[i].size}; }
    bool is_known(size_t i) const { return stored_[i].size > 0 || stored_[i].is_null; }

  private:
    // One of the calls, with what its row keeps.
    struct step {
        step() = default;
        ~step();
        step(const step &) = delete;
        step &operator=(const step &) = delete;

        const impl::sql_function *row = nullptr;
        impl::sql_call call;
        std::vector<uint64_t> kept;
    };
    struct stored_value {
        uint8_t size, bytes[impl::SQLITE_STORED_SIZE_MAX];
        bool is_null;
    };

    bool prepare_(step &of, const call &what, impl::sql_kind kind);
    void run_(const dv_column_t &texts);

    std::vector<std::unique_ptr<step>> steps_;
    std::string texts_;
    std::vector<int32_t> offsets_{0};
    std::vector<stored_value> stored_;
    std::vector<impl::sql_value> values_;
    std::vector<uint8_t> is_text_, is_value_;  // bitmaps: texts to convert, values there are
};

}  // namespace dv::import

#endif  // DV_IMPORT_CONVERSION_H
