#include "vlrcomn/system.h"

volatile int32_t bSigTermReceived = 0;

// Atomic, since other threads read the flag while a handler sets it.
void CatchSIGTERM(int) {
    __atomic_store_n(&bSigTermReceived, 1, __ATOMIC_RELAXED);
}
