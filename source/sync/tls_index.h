// The tables behind the thread-local indices.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>

#include "support/mutex.h"
#include "vlrcomn/thread.h"

namespace velora_com::qel::sync {

// A POSIX key plus 1, or 0 for none.
using KeyWord = std::atomic<uintptr_t>;

// The index's key, or 0 when the index is free. A word instead of a heap cell with the key: readers
// take no lock, and a word is never freed under them.
extern KeyWord pTlsKeyTable[ORU_TLS_INDICES];

// Guards changes of the tables, and the use of a key for storing. Taken last.
extern support::Mutex tables_lock;

// The process that allocated each index, or 0 when it is free.
extern uint32_t nTlsOwnerTable[ORU_TLS_INDICES] VLRCOMN_GUARDED_BY(tables_lock);

// Frees every index that this process allocated.
void free_tls_indices_of_process() noexcept;

// One index at a time may be kept. Once it is freed, by whomever, it is kept no more: a later use of the same
// index is somebody else's, and none of the functions below touches it.
uint32_t alloc_kept_index() noexcept;  // as oruTlsAlloc; what was kept before stays in use
bool free_kept_index() noexcept;
bool set_kept_value(void* value) noexcept;

extern KeyWord kept_key;  // the kept index's key

// The kept index's value in this thread; null when none is kept. At the price of the system's own look-up.
inline void* kept_value() noexcept {
    const uintptr_t word = kept_key.load(std::memory_order_acquire);
    return word == 0 ? nullptr : pthread_getspecific(static_cast<pthread_key_t>(word - 1));
}

}  // namespace velora_com::qel::sync
