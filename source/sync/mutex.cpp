#include "sync/mutex_record.h"

#include <new>

#include "support/owners.h"
#include "sync/error_word.h"
#include "sync/handle_object.h"
#include "vlrcomn/sync.h"

using namespace velora_com::qel::sync;
using velora_com::qel::support::MutexGuard;

oruHandle oruCreateMutex(void*, int initial_owner, const char*) {
    std::unique_ptr<MutexRecord> mutex(new (std::nothrow) MutexRecord);
    if (!mutex) {
        note_error(ENOMEM);
        return nullptr;
    }
    HandleRecordOwner record = make_handle_record(ORU_KIND_MUTEX);
    if (!record || pthread_mutex_init(&mutex->inner, nullptr) != 0) {
        return nullptr;
    }
    if (initial_owner == 1) {
        if (pthread_mutex_lock(&mutex->inner) != 0) {
            pthread_mutex_destroy(&mutex->inner);
            return nullptr;
        }
        mutex->owner = pthread_self();
    } else {
        record->bSignalled.store(1, std::memory_order_relaxed);
    }
    record->pData = mutex.release();
    return record.release();
}

oruHandle oruOpenMutex(uint32_t, int, const char*) {
    return nullptr;
}

int oruReleaseMutex(oruHandle handle) {
    if (handle == nullptr) {
        return 0;
    }
    if (!is_kind(handle, ORU_KIND_MUTEX)) {
        note_error(EINVAL);
        return 0;
    }
    MutexGuard lock(handle->mutex);
    if (!lock) {
        return 0;
    }
    auto* mutex = static_cast<MutexRecord*>(handle->pData);
    // Unlocking a POSIX mutex that is free or someone else's is undefined.
    if (handle->bSignalled.load(std::memory_order_relaxed) == 1 ||
        !pthread_equal(mutex->owner, pthread_self()) || pthread_mutex_unlock(&mutex->inner) != 0) {
        return 0;
    }
    handle->bSignalled.store(1, std::memory_order_relaxed);
    if (pthread_cond_broadcast(&handle->cond) != 0) {
        return 0;
    }
    return lock.unlock() ? 1 : 0;
}
