// The library's boundary: what the C++ library throws, which in practice is std::bad_alloc, ends here
// and becomes the function's stated failure.
#pragma once

#include <exception>
#include <utility>

namespace velora_com::qel::support {

// Runs `body` and returns its result, or `failure` when it throws; an empty result when there is no memory
// for a copy of that either. A cancelled thread's forced unwinding is no std::exception and passes through.
template <typename Result, typename Body>
Result or_failure(const Result& failure, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (const std::exception&) {
    }
    try {
        return failure;
    } catch (const std::exception&) {
        return Result();
    }
}

// Runs `body`, which has no result; what it has done before it throws stays.
template <typename Body>
void contained(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const std::exception&) {
    }
}

}  // namespace velora_com::qel::support
