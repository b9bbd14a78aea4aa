#include "sync/interlocked.h"

#include "support/owners.h"
#include "sync/error_word.h"
#include "vlrcomn/sync.h"

namespace velora_com::qel::sync {

support::Mutex MutexInterlockedLong;
support::Mutex MutexInterlockedExchange;

}  // namespace velora_com::qel::sync

using namespace velora_com::qel::sync;
using velora_com::qel::support::MutexGuard;

namespace {

// Callers read and write these words outside the mutexes, so every access is atomic. The orders let
// a word serve as a lock also for those who look at it without exchanging.
int32_t load(const volatile int32_t* word) {
    return __atomic_load_n(word, __ATOMIC_ACQUIRE);
}
void store(volatile int32_t* word, int32_t value) VLRCOMN_REQUIRES(MutexInterlockedLong) {
    __atomic_store_n(word, value, __ATOMIC_RELEASE);
}

int32_t change(volatile int32_t* word, uint32_t difference) {
    if (word == nullptr) {
        note_error(EINVAL);
        return 0;
    }
    {
        const MutexGuard lock(MutexInterlockedLong);
        store(word, static_cast<int32_t>(static_cast<uint32_t>(load(word)) + difference));
    }
    // Read after the unlock: the value may be another thread's by now, as sync.h warns.
    return load(word);
}

}  // namespace

int32_t oruInterlockedIncrement(volatile int32_t* value) {
    return change(value, 1);
}

int32_t oruInterlockedDecrement(volatile int32_t* value) {
    return change(value, UINT32_MAX);
}

int32_t oruInterlockedExchange(volatile int32_t* target, int32_t value) {
    if (target == nullptr) {
        note_error(EINVAL);
        return 0;
    }
    const MutexGuard lock(MutexInterlockedExchange);
    return __atomic_exchange_n(target, value, __ATOMIC_ACQ_REL);
}
