// What pData of a mutex handle points to.
#pragma once

#include <pthread.h>

namespace velora_com::qel::sync {

struct MutexRecord {
    pthread_mutex_t inner;  // the mutex proper: whoever holds it owns the handle's mutex
    pthread_t owner;  // meaningful while bSignalled is 0; guarded by the handle record's mutex
};

}  // namespace velora_com::qel::sync
