// Makes the system refuse one call after another, to show that a function undoes what it has begun.
// In a program made with FAULTS the calls listed at the end of fault_injection.cpp, made by the library or the
// test, pass through here; memory comes through malloc and operator new alike. Only the thread that asks for a
// failure meets it. Make no assertions between the construction and the disarming of a FailNth: they allocate.
#pragma once

#include <sys/time.h>

#include "support/test.h"

namespace fault_injection {

struct Armed {
    int calls_left;  // the call that brings it from 1 to 0 fails; 0 is disarmed
    const char *only, *fired;
    const std::function<void()>* instead;
};
extern thread_local Armed armed;

// While armed, the `nth` call from now, counted from 1 over all listed calls or over those named `only`,
// fails with the error that is usual for it. With `instead` it does not fail: that is done right before it.
class FailNth {
public:
    explicit FailNth(int nth, const char* only = nullptr,
                     const std::function<void()>* instead = nullptr) noexcept {
        armed = {nth, only, nullptr, instead};
    }
    ~FailNth() { disarm(); }
    FailNth(const FailNth&) = delete;
    FailNth& operator=(const FailNth&) = delete;

    void disarm() noexcept { armed.calls_left = 0; }
    // The call that failed, or null while none has.
    const char* fired() const noexcept { return armed.fired; }
};

// What a function results in when the `nth` call, or the `nth` of those named `only`, fails in it.
template <typename Function>
auto failing(int nth, const char* only, Function function) {
    const FailNth failure(nth, only);
    return function();
}

// How many allocations, conditions, mutexes and thread attributes the calling thread has taken and not given
// back, and descriptors the process. Other threads' doings, such as the end of a detached thread, do not count,
// nor does memory that the C library allocates for its caller; giving that to free() would count below zero.
int64_t resources_in_use() noexcept;

// While set, gettimeofday tells the calling thread this time.
extern thread_local std::optional<timeval> clock_time;

struct Walk {
    int calls;      // how many calls could fail
    int tolerated;  // after how many failures `create` succeeded all the same
};

// Runs `create` with its first listed call failing, then its second and so on, until it runs through.
// `create` tells whether it made its object; what it made is given back by `release`. Expects that a
// failed `create` holds nothing that it did not hold before.
template <typename Create, typename Release>
Walk walk_failures(Create create, Release release) {
    // Once without failures: the C library keeps what it allocates on first use.
    if (!create()) {
        ADD_FAILURE() << "fails without injected failures";
        return {};
    }
    release();
    Walk walk{};
    for (;; ++walk.calls) {
        const int64_t before = resources_in_use();
        FailNth failure(walk.calls + 1);
        const bool created = create();
        failure.disarm();
        const int64_t after = resources_in_use();
        if (created) {
            release();
        }
        if (failure.fired() == nullptr) {
            EXPECT_TRUE(created);
            return walk;
        }
        walk.tolerated += created ? 1 : 0;
        if (!created) {
            EXPECT_EQ(after, before) << failure.fired() << ", call " << walk.calls + 1;
        }
    }
}

}  // namespace fault_injection
