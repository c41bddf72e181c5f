// Counts since 1970-01-01, row by row without a call, for days after the reform of 1582.

namespace dv::impl::DV_LEVEL {

inline bool is_plain_(const dv_timestamp_t &ts) {
    const dv_date_t &date = date_part(ts);
    const int year = date_year(date);
    const bool has_year = date.year >= DATE_YEAR_EXCESS && date.year < DATE_YEAR_EXCESS + YEARS_PER_CENTURY &&
                          year > GREGORIAN_YEAR && year <= DV_YEAR_MAX;
    return has_year && date.day >= 1 && date.day <= month_length(year, date.month) &&
           date.hour < HOURS_PER_DAY && date.minute < MINUTES_PER_HOUR && date.second < SEC_PER_MINUTE &&
           time_nanoseconds(time_part(ts)) < NSEC_PER_SEC;
}

template <bool has_fraction>
uint64_t to_epoch(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows) {
    uint64_t left = rows;
    for (uint64_t rest = rows; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        dv_timestamp_t ts{};
        memcpy(&ts, block.from + i * block.from_stride, has_fraction ? sizeof ts : sizeof(dv_date_t));
        if (!is_plain_(ts)) continue;
        const dv_date_t &date = date_part(ts);
        const int day = gregorian_day_number(date_year(date), date.month, date.day) - JDN_EPOCH;
        if (static_cast<uint32_t>(day) + scale.days_limit > 2 * scale.days_limit) continue;
        const int64_t second = int64_t{day} * SEC_PER_DAY + date_second_of_day(date);
        const uint64_t nanoseconds = time_nanoseconds(time_part(ts));
        const int64_t count =
            second * scale.per_second +
            static_cast<int64_t>(nanoseconds * scale.to_units.factor >> scale.to_units.shift);
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
        int64_t day = count / per_day, of_day = count % per_day;
        if (of_day < 0) --day, of_day += per_day;
        const int64_t number = day + JDN_EPOCH;
        if (number < DV_JULIAN_DAY_GREGORIAN || number > DV_JULIAN_DAY_MAX) continue;
        const auto second = static_cast<int>(of_day / scale.per_second);
        const auto fraction = static_cast<uint32_t>(of_day % scale.per_second);
        dv_timestamp_t ts;
        date_set_packed_day(date_part(ts), gregorian_day(static_cast<uint32_t>(number)));
        date_set_clock(date_part(ts), second / SEC_PER_HOUR, second / SEC_PER_MINUTE % MINUTES_PER_HOUR,
                       second % SEC_PER_MINUTE);
        time_set_nanoseconds(time_part(ts), fraction * scale.nanoseconds);
        memcpy(block.to + i * block.to_stride, &ts, has_fraction ? sizeof ts : sizeof(dv_date_t));
        left &= ~(uint64_t{1} << i);
    }
    return left;
}

}  // namespace dv::impl::DV_LEVEL
