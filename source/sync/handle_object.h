// The record behind every handle, and how it is made and unmade.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <memory>

#include "support/mutex.h"
#include "vlrcomn/handle.h"

namespace velora_com::qel::sync {

// A word that one thread may store while another, outside its lock, reads it.
using SignalWord = std::atomic<int32_t>;
static_assert(sizeof(SignalWord) == sizeof(int32_t) && SignalWord::is_always_lock_free);

}  // namespace velora_com::qel::sync

struct _oruHandleObject_t {
    // File: FileRecord. Thread: the cell that receives its pthread_t. Mutex: MutexRecord. Event:
    // null.
    void* pData;
    int32_t nType;  // ORU_KIND_...
    uint32_t nRefCount VLRCOMN_GUARDED_BY(mutex);
    // Event set, thread ended, mutex free. Written under `mutex`, but by an ending thread just
    // before it locks `mutex`, and looked at without it.
    velora_com::qel::sync::SignalWord bSignalled;
    pthread_cond_t cond;  // broadcast whenever bSignalled becomes 1
    velora_com::qel::support::Mutex mutex;
    // Thread that has not ended: the cell of its start block that tells it where to signal its end.
    // Null otherwise. Guarded by the lock of thread_end.h, not by `mutex`.
    velora_com::qel::sync::SignalWord** ppThreadSignalled;
};

namespace velora_com::qel::sync {

// A handle that names an object; reading its record is safe as far as the caller keeps its
// promises.
inline bool names_object(oruHandle handle) noexcept {
    return handle != nullptr && handle != ORU_INVALID_HANDLE;
}

inline bool is_kind(oruHandle handle, int32_t kind) noexcept {
    return names_object(handle) && handle->nType == kind;
}

// Destroys the locks of a record that nobody uses and frees it. pData belongs to someone else.
struct HandleRecordDeleter {
    void operator()(oruHandle record) const noexcept;
};
using HandleRecordOwner = std::unique_ptr<_oruHandleObject_t, HandleRecordDeleter>;

// A record of `kind` with one reference, unsignalled, its locks made and everything else null. Null
// when memory is exhausted, with ENOMEM in the error word, or when a lock cannot be made.
// A creating function fills pData last and hands release() to its caller.
HandleRecordOwner make_handle_record(int32_t kind) noexcept;

}  // namespace velora_com::qel::sync
