// What the values say, for programs and for people.
#pragma once

#include <optional>
#include <string>

#include "properties.h"

namespace vlrprops {

// Whether the value says that its fact was not found.
bool is_absent(const Property& property, const std::wstring& value);

// The number that the value states: a count, bytes (megabytes become bytes), MHz or seconds. Nothing when
// it states none.
std::optional<double> number(Kind kind, const std::wstring& value);

// The value with its unit behind it.
std::wstring with_unit(Kind kind, const std::wstring& value);

// The value in units that are easy to read: KiB to EiB, GHz, a date in UTC.
std::wstring readable(Kind kind, const std::wstring& value);

}  // namespace vlrprops
