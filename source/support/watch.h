// Looking at a word for a moment before the thread goes to sleep for its change: a change that comes soon
// costs neither side a switch of threads.
#pragma once

#include "support/cpu_pause.h"

namespace velora_com::qel::support {

// Whether another processor can change the word meanwhile. The system is asked once; one that does not
// tell has one processor.
bool has_several_processors() noexcept;

// Lets other threads run, among them perhaps the one that is waited for. False when there is no use in doing
// so again: the turn went to somebody who kept it, which a sleeper who is woken need not wait for. The next
// thousand calls then yield to nobody.
bool yield_for_a_moment() noexcept;

// As long as an answer from another processor takes. More looks only hold up a thread that waits for this one's
// processor, as a yield does not.
constexpr int watch_looks = 5;

// A look takes the word's line of memory away from a processor that works on it, hence few of them.
inline void pause_between_looks() noexcept {
    cpu_pause(4);
}

// Whether looks have found lately, in time, what they waited for. They do not where more threads want to run than
// there are processors: they then only keep the awaited thread from running. Now and then they are due all the
// same, to see whether that has changed.
bool looks_pay() noexcept;
bool looks_are_due() noexcept;
void note_looks(bool paid) noexcept;

// Looks until `changed` gives true, or for some microseconds, the time that a sleep and a wake-up would
// take. Returns whether it did. Not a cancellation point.
template <typename Changed>
bool watch(Changed changed) noexcept {
    constexpr int yields = 20;
    if (!has_several_processors()) {
        return false;
    }
    const int looks = looks_pay() || looks_are_due() ? watch_looks : 0;
    for (int turn = 0; turn < looks; ++turn) {
        if (changed()) {
            note_looks(true);
            return true;
        }
        pause_between_looks();
    }
    note_looks(false);
    for (int turn = 0; turn < yields && !changed(); ++turn) {
        if (!yield_for_a_moment()) {
            break;
        }
    }
    return changed();
}

}  // namespace velora_com::qel::support
