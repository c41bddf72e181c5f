// UTC to local time and back, row by row without a call. Of one zone a period is kept that two times in turn
// belonged to.

namespace dv::impl::plain {
namespace {

// The period of a time; NULL where the rows cannot tell.
template <bool is_utc>
const zone_period_t *find_period_(const timezone_t &zone, uint64_t word, const zone_year_t *&row) {
    const size_t number =
        zone_row_number < is_utc ? &zone_year_rows_t::utc : &zone_year_rows_t::local > (zone, word);
    if (number == 0) return nullptr;
    row = ZONE_YEAR_ROWS + number;
    const uint64_t in_year = word_in_year(word);
    const size_t period = zone_period_number(*row, in_year);
    return is_utc || in_year >= row->plain[period] ? &row->periods[period] : nullptr;
}

template <bool is_utc>
uint64_t convert(const zone_block_t &block, uint64_t rows) {
    shared_period_t shared = *block.shared;  // never one of several zones
    const zone_period_t *last = nullptr;
    uint64_t left = rows;
    for (uint64_t todo = rows; todo != 0; todo &= todo - 1) {
        const int i = std::countr_zero(todo);
        const auto *const from = reinterpret_cast<const uint8_t *>(block.from + i * block.from_stride);
        __builtin_prefetch(from + FETCH_AHEAD);
        const uint64_t word = load_be64(from);
        if (!has_clock(word)) continue;
        int32_t shift = shared.shift;
        if (word - shared.first >= shared.size) {
            timezone_t zone;
            memcpy(&zone, block.zones + i * block.zone_stride, sizeof zone);
            const zone_year_t *row;
            const zone_period_t *const period = find_period_<is_utc>(zone, word, row);
            if (period == nullptr) continue;
            if (period == last && block.zone_stride == 0) shared = period_of<is_utc>(word, *row);
            last = period;
            shift = period->shift;
        }
        const uint64_t shifted = shifted_clock(word, shift);
        if (!has_certain_day(shifted, static_cast<uint8_t>(word >> WORD_MONTH_AT))) continue;
        uint32_t fraction;
        memcpy(&fraction, from + sizeof word, sizeof fraction);
        auto *const to = reinterpret_cast<uint8_t *>(block.to + i * block.to_stride);
        __builtin_prefetch(to + FETCH_AHEAD);
        store_be64(to, shifted);
        memcpy(to + sizeof shifted, &fraction, sizeof fraction);
        left &= ~(uint64_t{1} << i);
    }
    *block.shared = shared;
    return left;
}

constexpr zone_kernels_t kernels = {convert</*is_utc=*/true>, convert</*is_utc=*/false>};

}  // namespace
}  // namespace dv::impl::plain
