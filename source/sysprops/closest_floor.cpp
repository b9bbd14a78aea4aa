#include <algorithm>

#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

template <typename T>
T get_closest_floor(const T& value, const T& upper, const T& lower, const uint32_t& steps) {
    if (steps == 0) {
        return std::min(value, lower);
    }
    const T step = (upper - lower) / static_cast<T>(steps);
    T best = lower;
    T point = lower;
    for (uint32_t taken = 0; taken < steps; ++taken) {
        point += step;
        if (!(value > point)) {
            break;
        }
        best = point;
    }
    return best == T{} ? value : best;
}

template VLRCOMN_API uint64_t get_closest_floor<uint64_t>(const uint64_t&, const uint64_t&,
                                                          const uint64_t&, const uint32_t&);
template VLRCOMN_API double get_closest_floor<double>(const double&, const double&, const double&,
                                                      const uint32_t&);

}  // namespace velora_com::qel::sysprops
