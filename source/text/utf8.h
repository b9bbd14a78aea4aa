// UTF-8 and wide text, one into the other, without iconv.
//
// Opening a converter of iconv costs many times what a short text does, an open one is bound to one thread
// at a time, and C libraries disagree about faulty text. These functions give what glibc's iconv gives up
// to the first code above U+10FFFF, on every host and for every input; fuzz/text compares the two.
//
// A code has one to four bytes (RFC 3629). Conversion stops at the end of the input or before the first
// fault: a surrogate, a code above U+10FFFF, a byte out of place or an overlong form.
#pragma once

#include <cstddef>

namespace velora_com::qel::utf8 {

// The bytes that callers have to provide for each wide character: the most that UTF-8 had in its first form.
// None becomes more than four.
constexpr size_t max_bytes_per_character = 6;

// Bytes that encode() writes at most for this text, exact when it has no fault.
size_t encoded_size(const wchar_t* text, size_t length) noexcept;

// Convert `length` characters or bytes, without a terminator, and return the end of what was written.
// `out` has room for encoded_size() bytes, or for one character for each byte.
char* encode(const wchar_t* text, size_t length, char* out) noexcept;
wchar_t* decode(const char* text, size_t length, wchar_t* out) noexcept;

}  // namespace velora_com::qel::utf8
