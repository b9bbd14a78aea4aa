#include "portability/errors.h"
#include "portability/handle_object.h"
#include "support/owners.h"
#include "vlrcomn/sync.h"

using namespace velora_com::qel::portability;
using velora_com::qel::support::MutexGuard;

oruHandle oruCreateEvent(void*, int manual_reset, int initial_state, const char* name) {
    const bool named = name != nullptr && *name != '\0';
    if (manual_reset != 1 || named) {
        note_error(EINVAL);
        return nullptr;
    }
    HandleRecordOwner record = make_handle_record(ORU_KIND_EVENT);
    if (record && initial_state == 1 && oruSetEvent(record.get()) != 1) {
        note_error(EBUSY);
        return nullptr;
    }
    return record.release();
}

int oruSetEvent(oruHandle handle) {
    if (!is_kind(handle, ORU_KIND_EVENT)) {
        note_error(EINVAL);
        return 0;
    }
    MutexGuard lock(handle->mutex);
    if (!lock) {
        return 0;
    }
    handle->bSignalled.store(1, std::memory_order_relaxed);
    if (pthread_cond_broadcast(&handle->cond) != 0) {
        return 0;
    }
    return lock.unlock() ? 1 : 0;
}

int oruResetEvent(oruHandle handle) {
    if (handle == ORU_INVALID_HANDLE) {
        return 0;
    }
    if (!is_kind(handle, ORU_KIND_EVENT)) {
        note_error(EINVAL);
        return 0;
    }
    MutexGuard lock(handle->mutex);
    if (!lock) {
        return 0;
    }
    handle->bSignalled.store(0, std::memory_order_relaxed);
    return lock.unlock() ? 1 : 0;
}
