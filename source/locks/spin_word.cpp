#include "locks/spin_word.h"

#include <unistd.h>

#include <climits>
#include <iterator>

#include "support/cpu_pause.h"
#include "support/owners.h"
#include "vlrcomn/se_lock.h"

namespace velora_com::qel::locks {

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
            support::cpu_pause();
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
