// The two process-wide mutexes of the interlocked operations. They are two on purpose: a change by
// one is not held off while an exchange runs.
#pragma once

#include <pthread.h>

namespace velora_com::qel::sync {

extern pthread_mutex_t MutexInterlockedLong;      // increments and decrements
extern pthread_mutex_t MutexInterlockedExchange;  // exchanges

}  // namespace velora_com::qel::sync
