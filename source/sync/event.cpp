#include "support/owners.h"
#include "sync/error_word.h"
#include "sync/handle_object.h"
#include "vlrcomn/sync.h"

using namespace velora_com::qel::sync;
using velora_com::qel::support::MutexGuard;

namespace {

// An event that is set wakes everyone who waits for it.
int change_state(oruHandle handle, int32_t state) {
    if (!is_kind(handle, ORU_KIND_EVENT)) {
        note_error(EINVAL);
        return 0;
    }
    MutexGuard lock(handle->mutex);
    if (!lock) {
        return 0;
    }
    handle->bSignalled.store(state, std::memory_order_relaxed);
    if (state == 1 && pthread_cond_broadcast(&handle->cond) != 0) {
        return 0;
    }
    return lock.unlock() ? 1 : 0;
}

}  // namespace

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
    return change_state(handle, 1);
}

int oruResetEvent(oruHandle handle) {
    // Unlike oruSetEvent() this leaves the error word alone for the invalid handle.
    return handle == ORU_INVALID_HANDLE ? 0 : change_state(handle, 0);
}
