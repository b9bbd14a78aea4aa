#include <unistd.h>

#include "support/owners.h"
#include "vlrcomn/se_lock.h"
#include "vlrcomn/sync.h"

namespace {

constexpr int32_t kFree = 0;
constexpr int32_t kHeld = 1;

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

bool try_to_take(volatile int32_t* spin) {
    return oruInterlockedExchange(spin, kHeld) == kFree;
}

// Kept apart, so that taking a free word costs one exchange and nothing else.
void take_contended(volatile int32_t* spin) {
    using namespace velora_com::qel::support;
    const ErrnoKeeper errno_keeper;
    const CancellationOff uncancelled;
    for (unsigned attempt = 0;; attempt += attempt < kTriesInAll) {
        back_off(attempt);
        if (try_to_take(spin)) {
            return;
        }
    }
}

}  // namespace

extern "C" {

int32_t orSL_Get(volatile int32_t* spin) {
    if (spin != nullptr && !try_to_take(spin)) {
        take_contended(spin);
    }
    return 0;
}

void orSL_Release(volatile int32_t* spin) {
    if (spin != nullptr) {
        oruInterlockedExchange(spin, kFree);
    }
}

}  // extern "C"
