// Text on its way out.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vlrprops {

// The text in UTF-8. What the library hands out always has such a form.
std::string utf8(const std::wstring& text);

// The text on one line: control characters, which could break the line or steer a terminal, are written
// as in JSON, for example \u000a.
std::wstring one_line(const std::wstring& text);

// The text in pieces of at most `width` columns of a terminal, broken behind blanks, commas and slashes
// where there are some. Joined, the pieces give the text.
std::vector<std::wstring> wrapped(const std::wstring& text, size_t width);

}  // namespace vlrprops
