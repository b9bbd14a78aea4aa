// Properties without a field in a record: asked for one by one, never part of the report.
#pragma once

#include <string>

namespace velora_com::qel::sysprops {

// The words of each, in the collector of its category. They may throw std::bad_alloc.
std::wstring boot_time_words();

}  // namespace velora_com::qel::sysprops
