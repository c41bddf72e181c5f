// TZif: two blocks of the same form, each a header with counts and then the tables that it counts. The first
// block, with 32-bit times, is skipped; the second has 64-bit times; the rule for the time after them follows
// between newlines.

#include "tzif.h"

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tzgen {

namespace {

// A cursor over the file's bytes that ends with an exception at the file's end.
class reader_t {
  public:
    explicit reader_t(std::string bytes) : bytes_(std::move(bytes)) {}

    std::string_view take(size_t count) {
        if (count > bytes_.size() - at_) throw std::runtime_error("the compiled zone is cut off");
        at_ += count;
        return std::string_view(bytes_).substr(at_ - count, count);
    }
    // A big-endian integer in two's complement.
    int64_t integer(size_t size) {
        uint64_t value = 0;
        for (const char c : take(size)) value = value << 8 | static_cast<unsigned char>(c);
        const auto unused = static_cast<int>(64 - 8 * size);
        return static_cast<int64_t>(value << unused) >> unused;
    }
    size_t index() { return static_cast<unsigned char>(take(1)[0]); }
    std::string line() {
        const size_t end = bytes_.find('\n', at_);
        if (end == std::string::npos) throw std::runtime_error("the compiled zone's rule has no end");
        std::string text(take(end - at_));
        take(1);
        return text;
    }

  private:
    std::string bytes_;
    size_t at_ = 0;
};

struct counts_t {
    size_t ut, standard, leap, time, type, abbrev_bytes;

    size_t block_size(size_t time_size) const {
        return time * (time_size + 1) + type * 6 + abbrev_bytes + leap * (time_size + 4) + standard + ut;
    }
};

counts_t read_header_(reader_t &file) {
    if (file.take(4) != "TZif") throw std::runtime_error("not a compiled zone");
    if (file.take(1)[0] < '2') throw std::runtime_error("a compiled zone without 64-bit times");
    file.take(15);
    std::array<size_t, 6> n{};
    for (size_t &count : n) count = static_cast<size_t>(file.integer(4));
    return {n[0], n[1], n[2], n[3], n[4], n[5]};
}

std::vector<local_time_t> read_types_(reader_t &file, const counts_t &counts) {
    std::vector<local_time_t> types;
    std::vector<size_t> abbrev_at;
    for (size_t i = 0; i < counts.type; ++i) {
        const auto offset = static_cast<int>(file.integer(4));
        const bool is_dst = file.index() != 0;
        types.push_back({offset, is_dst, ""});
        abbrev_at.push_back(file.index());
    }
    const std::string abbrevs(file.take(counts.abbrev_bytes));
    for (size_t i = 0; i < types.size(); ++i) types[i].abbrev = abbrevs.substr(abbrev_at[i]).c_str();
    return types;
}

std::string read_file_(const std::filesystem::path &path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read");
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

tzif_t read_tzif(const std::filesystem::path &path) {
    reader_t file(read_file_(path));
    file.take(read_header_(file).block_size(/*time_size=*/4));

    const counts_t counts = read_header_(file);
    if (counts.type == 0) throw std::runtime_error("a zone without local time");
    if (counts.leap != 0) throw std::runtime_error("a zone with leap seconds");
    std::vector<instant_t> begins;
    std::vector<size_t> type_of;
    for (size_t i = 0; i < counts.time; ++i) begins.push_back(file.integer(8));
    for (size_t i = 0; i < counts.time; ++i) type_of.push_back(file.index());
    const std::vector<local_time_t> types = read_types_(file, counts);
    file.take(counts.standard + counts.ut);

    tzif_t result{{{BEGIN_OF_TIME, types[0]}}, ""};
    for (size_t i = 0; i < counts.time; ++i) result.periods.push_back({begins[i], types.at(type_of[i])});
    file.take(1);
    result.rule = file.line();
    return result;
}

}  // namespace tzgen
