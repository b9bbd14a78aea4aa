// The two process-wide mutexes of the interlocked operations. They are two on purpose: a change by
// one is not held off while an exchange runs.
#pragma once

#include "support/mutex.h"

namespace velora_com::qel::sync {

extern support::Mutex MutexInterlockedLong;      // increments and decrements
extern support::Mutex MutexInterlockedExchange;  // exchanges

}  // namespace velora_com::qel::sync
