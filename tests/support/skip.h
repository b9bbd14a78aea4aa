// Leaving a test out for lack of something. Under CI, which provides everything, that is a failure.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#define SKIP_FOR_LACK_OF(what)                  \
    if (std::getenv("CI") != nullptr) {         \
        FAIL() << "for lack of " << what;       \
    } else {                                    \
        GTEST_SKIP() << "for lack of " << what; \
    }
