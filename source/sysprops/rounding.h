// How the collectors coarsen what is free, so that the report changes in steps and not with every page.
#pragma once

#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

// `free` rounded down in twentieths of `total`.
template <typename T>
T coarsened(T free, T total) {
    return get_closest_floor<T>(free, total, T{}, 20);
}

}  // namespace velora_com::qel::sysprops
