// What pData of a mutex handle points to.
#pragma once

#include <pthread.h>

namespace velora_com::qel::sync {

struct MutexRecord {
    // The mutex proper: whoever holds it owns the handle's mutex. Held from one call to another, which no
    // analysis follows.
    pthread_mutex_t inner;
    // Meaningful while bSignalled is 0. Guarded by the mutex of the handle's record, which is not in sight here.
    pthread_t owner;
};

}  // namespace velora_com::qel::sync
