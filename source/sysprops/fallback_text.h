// Text results at the library's boundary.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace velora_com::qel::sysprops {

// The text that `body` returns. When it throws, a copy of `fallback`, or the empty text when there is
// no memory for that either.
template <typename Body>
std::wstring text_or(const std::wstring& fallback, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (const std::exception&) {
    }
    try {
        return fallback;
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace velora_com::qel::sysprops
