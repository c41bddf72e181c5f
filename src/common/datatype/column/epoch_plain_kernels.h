// Counts since 1970-01-01, row by row without a call, for days after the reform of 1582.

namespace dv::impl::plain {
namespace {

inline bool is_plain_(const dv_date_t &date) {
    const int year = date_year(date);
    const bool has_year = date.year >= DATE_YEAR_EXCESS && date.year < DATE_YEAR_EXCESS + YEARS_PER_CENTURY &&
                          year > GREGORIAN_YEAR && year <= DV_YEAR_MAX;
    return has_year && date.day >= 1 && date.day <= month_length(year, date.month) &&
           date.hour < HOURS_PER_DAY && date.minute < MINUTES_PER_HOUR && date.second < SEC_PER_MINUTE;
}

template <bool has_fraction>
uint64_t to_epoch(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows) {
    uint64_t left = rows;
    for (uint64_t todo = rows; todo != 0; todo &= todo - 1) {
        const int i = std::countr_zero(todo);
        const char *const from = block.from + i * block.from_stride;
        __builtin_prefetch(from + FETCH_AHEAD);
        const auto &date = *reinterpret_cast<const dv_date_t *>(from);
        const uint64_t nanoseconds =
            has_fraction ? time_nanoseconds(time_part(*reinterpret_cast<const dv_timestamp_t *>(from))) : 0;
        if (!is_plain_(date) || nanoseconds >= NSEC_PER_SEC) continue;
        const int day = gregorian_day_number(date_year(date), date.month, date.day) - JDN_EPOCH;
        if (static_cast<uint32_t>(day) + scale.days_limit > 2 * scale.days_limit) continue;
        const int64_t second = int64_t{day} * SEC_PER_DAY + date_second_of_day(date);
        const uint64_t fraction = nanoseconds * scale.to_units.factor >> scale.to_units.shift;
        const int64_t count = second * scale.per_second + static_cast<int64_t>(fraction);
        memcpy(block.to + i * block.to_stride, &count, sizeof count);
        left &= ~(uint64_t{1} << i);
    }
    return left;
}

template <bool has_fraction>
uint64_t from_epoch(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows) {
    const auto per_day = static_cast<int64_t>(scale.per_day);
    uint64_t left = rows;
    for (uint64_t todo = rows; todo != 0; todo &= todo - 1) {
        const int i = std::countr_zero(todo);
        int64_t count;
        memcpy(&count, block.from + i * block.from_stride, sizeof count);
        int64_t days = count / per_day, of_day = count % per_day;
        if (of_day < 0) --days, of_day += per_day;
        if (days < DV_JULIAN_DAY_GREGORIAN - JDN_EPOCH || days > DV_JULIAN_DAY_MAX - JDN_EPOCH) continue;
        const auto second = static_cast<int>(static_cast<uint64_t>(of_day) / scale.per_second);
        const auto fraction = static_cast<uint32_t>(of_day - second * int64_t{scale.per_second});
        char *const to = block.to + i * block.to_stride;
        __builtin_prefetch(to + FETCH_AHEAD);
        auto &date = *reinterpret_cast<dv_date_t *>(to);
        date_set_packed_day(date, gregorian_day(static_cast<uint32_t>(days + JDN_EPOCH)));
        date_set_clock(date, second / SEC_PER_HOUR, second / SEC_PER_MINUTE % MINUTES_PER_HOUR,
                       second % SEC_PER_MINUTE);
        if (has_fraction) {
            time_set_nanoseconds(time_part(*reinterpret_cast<dv_timestamp_t *>(to)),
                                 fraction * scale.nanoseconds);
        }
        left &= ~(uint64_t{1} << i);
    }
    return left;
}

constexpr epoch_kernels_t kernels = {to_epoch<false>, from_epoch<false>, to_epoch<true>, from_epoch<true>};

}  // namespace
}  // namespace dv::impl::plain
