#include "locks/spin_word.h"

#include <unistd.h>

#include <climits>
#include <iterator>

#include "support/cpu_pause.h"
#include "support/owners.h"
#include "vlrcomn/se_lock.h"

namespace velora_com::qel::locks {
namespace {

// Who holds a word mostly gives it back within nanoseconds, and soon takes it again. Left alone for a moment, that
// thread takes it several times before the word's line of memory changes sides, which costs more than all of that:
// two threads with one lock are three times as fast. A word that stays held is looked at more often.
int pauses_after(unsigned failed_tries) {
    constexpr unsigned first_tries = 16;
    return failed_tries <= first_tries ? 12 : 1;
}

}  // namespace

int32_t sleep_after(unsigned failed_tries) {
    constexpr unsigned tries_at_once = 4000;
    constexpr unsigned tries_per_sleep = 100;
    constexpr int32_t sleeps[] = {0, 10'000, 100'000, 1'000'000};
    if (failed_tries <= tries_at_once) {
        return no_sleep;
    }
    const unsigned step = (failed_tries - tries_at_once - 1) / tries_per_sleep;
    return step < std::size(sleeps) ? sleeps[step] : no_sleep;
}

void take_contended_spin(volatile int32_t& spin) {
    const support::ErrnoKeeper errno_keeper;
    unsigned failed_tries = 0;
    do {
        failed_tries += failed_tries < UINT_MAX ? 1 : 0;
        if (const int32_t microseconds = sleep_after(failed_tries); microseconds != no_sleep) {
            // A sleep is a cancellation point. Where allowing cancellation again acts on one that waits, the
            // thread ends here with nothing taken; who gives a lock back forbids it for longer.
            const support::CancellationOff uncancelled;
            usleep(static_cast<useconds_t>(microseconds));
        } else {
            support::cpu_pause(pauses_after(failed_tries));
        }
        // A held word is only looked at: an exchange would take its line of memory from the holder.
    } while (__atomic_load_n(&spin, __ATOMIC_RELAXED) != spin_free || !try_to_take_spin(spin));
}

}  // namespace velora_com::qel::locks

using namespace velora_com::qel::locks;

extern "C" {

int32_t orSL_Get(volatile int32_t* spin) {
    if (spin != nullptr) {
        take_spin(*spin);
    }
    return 0;
}

void orSL_Release(volatile int32_t* spin) {
    if (spin != nullptr) {
        release_spin(*spin);
    }
}

}  // extern "C"
