// Looking at a word for a moment before the thread goes to sleep for its change: a change that comes soon
// costs neither side a switch of threads.
#pragma once

#include <sched.h>

#include "support/cpu_pause.h"

namespace velora_com::qel::support {

// Whether another processor can change the word meanwhile. The system is asked once; one that does not
// tell has one processor.
bool has_several_processors() noexcept;

// Looks until `changed` gives true, or for some microseconds, the time that a sleep and a wake-up would
// take. Returns whether it did. Not a cancellation point. The pauses are as long as an answer from another
// processor takes; more of them only hold up a thread that waits for this one's processor, as a yield does not.
template <typename Changed>
bool watch(Changed changed) noexcept {
    constexpr int pauses = 20;
    constexpr int yields = 20;
    if (!has_several_processors()) {
        return false;
    }
    for (int turn = 0; turn < pauses + yields; ++turn) {
        if (changed()) {
            return true;
        }
        if (turn < pauses) {
            cpu_pause();
        } else {
            sched_yield();
        }
    }
    return false;
}

}  // namespace velora_com::qel::support
