#include "portability/tls_index.h"

#include <pthread.h>
#include <unistd.h>

#include "portability/errors.h"
#include "support/owners.h"

namespace velora_com::qel::portability {

// Both start as all zeros, every index free: there is nothing to clear on the first call.
std::atomic<uintptr_t> pTlsKeyTable[ORU_TLS_INDICES];
uint32_t nTlsOwnerTable[ORU_TLS_INDICES];

namespace {

// Guards changes of the tables, and the use of a key for storing. Taken last.
pthread_mutex_t tables_lock = PTHREAD_MUTEX_INITIALIZER;

uintptr_t word_of(uint32_t index) noexcept {
    return index < ORU_TLS_INDICES ? pTlsKeyTable[index].load(std::memory_order_acquire) : 0;
}

pthread_key_t key_of(uintptr_t word) noexcept {
    return static_cast<pthread_key_t>(word - 1);
}

uint32_t process_id() noexcept {
    return static_cast<uint32_t>(getpid());
}

// Frees an index that is in use, with the tables locked; false when the system keeps the key.
bool free_index(uint32_t index) noexcept {
    const pthread_key_t key = key_of(word_of(index));
    pTlsKeyTable[index].store(0, std::memory_order_release);
    nTlsOwnerTable[index] = 0;
    return pthread_key_delete(key) == 0;
}

}  // namespace

void free_tls_indices_of_process() noexcept {
    const uint32_t process = process_id();
    const support::MutexGuard lock(tables_lock);
    for (uint32_t index = 0; index < ORU_TLS_INDICES; ++index) {
        if (word_of(index) != 0 && nTlsOwnerTable[index] == process) {
            free_index(index);
        }
    }
}

}  // namespace velora_com::qel::portability

using namespace velora_com::qel::portability;
using velora_com::qel::support::MutexGuard;

uint32_t oruTlsAlloc(void) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return ORU_TLS_OUT_OF_INDEXES;
    }
    for (uint32_t index = 0; index < ORU_TLS_INDICES; ++index) {
        if (word_of(index) == 0) {
            pthread_key_t key;
            if (pthread_key_create(&key, nullptr) != 0) {
                return ORU_TLS_OUT_OF_INDEXES;
            }
            nTlsOwnerTable[index] = process_id();
            pTlsKeyTable[index].store(static_cast<uintptr_t>(key) + 1, std::memory_order_release);
            return index;
        }
    }
    note_error(EAGAIN);
    return ORU_TLS_OUT_OF_INDEXES;
}

int oruTlsFree(uint32_t index) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return 0;
    }
    if (word_of(index) == 0) {
        note_error(EINVAL);
        return 0;
    }
    return free_index(index) ? 1 : 0;
}

// Under the lock: a key freed in between may already be somebody else's, whose value would be lost.
int oruTlsSetValue(uint32_t index, void* value) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return 0;
    }
    const uintptr_t word = word_of(index);
    if (word == 0) {
        note_error(EINVAL);
        return 0;
    }
    return pthread_setspecific(key_of(word), value) == 0 ? 1 : 0;
}

// Without the lock. When the key is freed in between, the system still holds this thread's old
// value or none, and should somebody else have got the same key, this thread cannot have stored a
// value for it yet: the answer is that of a call before or after the freeing, never a stranger's
// value.
void* oruTlsGetValue(uint32_t index) {
    const uintptr_t word = word_of(index);
    if (word == 0) {
        note_error(EINVAL);
        return nullptr;
    }
    return pthread_getspecific(key_of(word));
}
