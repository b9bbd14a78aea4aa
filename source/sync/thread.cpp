#include "vlrcomn/thread.h"

#include <new>

#include "sync/error_word.h"
#include "sync/handle_object.h"
#include "sync/thread_end.h"
#include "sync/tls_index.h"

using namespace velora_com::qel::sync;

namespace {

// Starts a detached thread on the block and stores its POSIX id.
bool start_detached(pthread_t& id, StartBlock* block) noexcept {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) {
        return false;
    }
    const bool started = pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED) == 0 &&
                         pthread_create(&id, &attributes, oruThreadJuggle, block) == 0;
    pthread_attr_destroy(&attributes);
    return started;
}

}  // namespace

oruHandle oruBeginThread(void*, uint32_t, oruThreadRoutine routine, void* parameter, uint32_t,
                         uint32_t* thread_id) {
    if (routine == nullptr) {
        note_error(EINVAL);
        return ORU_INVALID_HANDLE;
    }
    HandleRecordOwner record = make_handle_record(ORU_KIND_THREAD);
    if (!record) {
        return ORU_INVALID_HANDLE;
    }
    std::unique_ptr<pthread_t> id(new (std::nothrow) pthread_t{});
    std::unique_ptr<StartBlock> block(new (std::nothrow) StartBlock{
        &record->mutex, &record->cond, &record->bSignalled, routine, parameter, record.get()});
    if (!id || !block) {
        note_error(ENOMEM);
        return ORU_INVALID_HANDLE;
    }
    record->ppThreadSignalled = &block->signal;
    record->pData = id.get();
    if (!start_detached(*id, block.get())) {
        return ORU_INVALID_HANDLE;
    }
    static_cast<void>(block.release());  // the thread's, and perhaps freed by now
    static_cast<void>(id.release());     // the record's
    if (thread_id != nullptr) {
        *thread_id = 0;
    }
    set_pthread_sched_param(record.get());
    return record.release();
}

oruHandle oruCreateThread(void* attributes, uint32_t stack_size, oruThreadRoutine routine,
                          void* parameter, uint32_t flags, uint32_t* thread_id) {
    oruHandle handle = oruBeginThread(attributes, stack_size, routine, parameter, flags, thread_id);
    return handle == ORU_INVALID_HANDLE ? nullptr : handle;
}

// Not noexcept, and no catch: cancellation and thread exit may unwind through this frame, and an
// escaped exception finds no handler here, so that it ends the process where it was thrown.
void* oruThreadJuggle(void* start_block) {
    const auto* block = static_cast<const StartBlock*>(start_block);
    uint32_t result = 0;
    pthread_cleanup_push(oruCleanupThread, start_block);
    result = block->routine(block->parameter);
    // From here on no cancellation, asynchronous either, may take the thread between the removal of
    // the handler and the call of the same function.
    int ignored;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &ignored);
    pthread_cleanup_pop(0);
    oruCleanupThread(start_block);
    return reinterpret_cast<void*>(uintptr_t{result});
}

void oruCleanupThread(void* start_block) {
    const std::unique_ptr<StartBlock> block(static_cast<StartBlock*>(start_block));
    if (block) {
        free_tls_indices_of_process();
        signal_thread_end(*block);
    }
}

void set_pthread_sched_param(oruHandle) {}
