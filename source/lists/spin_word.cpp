#include "lists/spin_word.h"

#include <unistd.h>

#include "support/owners.h"
#include "vlrcomn/se_lock.h"

namespace velora_com::qel::lists {
namespace {

constexpr unsigned kTriesAtOnce = 4000;
constexpr unsigned kTriesPerSleep = 100;
constexpr useconds_t kSleeps[] = {0, 10'000, 100'000, 1'000'000};
constexpr unsigned kTriesInAll =
    kTriesAtOnce + kTriesPerSleep * (sizeof kSleeps / sizeof kSleeps[0]);

// What comes between a failed try, counted from 0, and the next one.
void back_off(unsigned attempt) {
    if (attempt >= kTriesAtOnce && attempt < kTriesInAll) {
        usleep(kSleeps[(attempt - kTriesAtOnce) / kTriesPerSleep]);
    }
}

}  // namespace

void take_contended_spin(volatile int32_t& spin) {
    const support::ErrnoKeeper errno_keeper;
    // A sleep is a cancellation point; a thread that were cancelled here while it releases a lock could
    // not tell whether it still holds it.
    const support::CancellationOff uncancelled;
    unsigned attempt = 0;
    do {
        back_off(attempt);
        attempt += attempt < kTriesInAll ? 1 : 0;
    } while (!try_to_take_spin(spin));
}

}  // namespace velora_com::qel::lists

using namespace velora_com::qel::lists;

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
