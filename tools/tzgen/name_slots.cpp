#include "name_slots.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "timezone/zone_name_hash.h"

namespace tzgen {

namespace {

using namespace dv::impl;

// Bucket by bucket, the largest first while most slots are free.
class placing_t {
  public:
    explicit placing_t(name_slots_t &made) : made_(made), taken_(size_t{1} << ZONE_NAME_SLOT_BITS) {
        made_.slots.assign(taken_.size(), 0);
        made_.shifts.assign(size_t{1} << ZONE_NAME_BUCKET_BITS, 0);
    }

    void place(const std::vector<zone_t> &zones) {
        std::vector<bucket_t> buckets(made_.shifts.size());
        for (size_t id = 0; id < zones.size(); ++id) {
            const uint64_t hash = hash_(zones[id].name);
            buckets[zone_name_bucket(hash)].push_back({hash, static_cast<uint16_t>(id)});
        }
        std::stable_sort(buckets.begin(), buckets.end(),
                         [](const bucket_t &a, const bucket_t &b) { return a.size() > b.size(); });
        for (const bucket_t &bucket : buckets) place_(bucket);
    }

  private:
    struct name_t {
        uint64_t hash;
        uint16_t id;
    };
    using bucket_t = std::vector<name_t>;

    static uint64_t hash_(const std::string &name) {
        if (name.size() > ZONE_NAME_LENGTH_MAX) throw std::runtime_error("name too long: " + name);
        return zone_name_hash(name.size() < ZONE_NAME_MIN ? short_zone_name_words(name.data(), name.size())
                                                          : zone_name_words(name.data(), name.size()));
    }

    // Whether the names of a bucket have free slots of their own under a shift.
    bool fits_(const bucket_t &bucket, uint16_t shift) const {
        std::set<size_t> slots;
        for (const name_t &name : bucket) slots.insert(zone_name_slot(name.hash, shift));
        return slots.size() == bucket.size() &&
               std::none_of(slots.begin(), slots.end(), [&](size_t slot) { return taken_[slot]; });
    }

    void place_(const bucket_t &bucket) {
        if (bucket.empty()) return;
        uint16_t shift = 0;
        while (!fits_(bucket, shift)) {
            if (++shift == taken_.size()) throw std::runtime_error("no slots: names need another hash");
        }
        for (const name_t &name : bucket) take_(zone_name_slot(name.hash, shift), name.id);
        made_.shifts[zone_name_bucket(bucket.front().hash)] = shift;
    }

    void take_(size_t slot, uint16_t id) {
        taken_[slot] = true;
        made_.slots[slot] = id;
    }

    name_slots_t &made_;
    std::vector<bool> taken_;
};

}  // namespace

name_slots_t make_name_slots(const std::vector<zone_t> &zones) {
    name_slots_t made;
    placing_t(made).place(zones);
    return made;
}

}  // namespace tzgen
