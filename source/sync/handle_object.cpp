#include "sync/handle_object.h"

#include <new>

#include "support/owners.h"
#include "sync/error_word.h"

namespace velora_com::qel::sync {

void HandleRecordDeleter::operator()(oruHandle record) const noexcept {
    support::ErrnoKeeper keeper;
    pthread_mutex_destroy(record->mutex.native());
    pthread_cond_destroy(&record->cond);
    delete record;
}

// Not analysed: nobody else knows the record yet.
HandleRecordOwner make_handle_record(int32_t kind) noexcept VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    std::unique_ptr<_oruHandleObject_t> record(new (std::nothrow) _oruHandleObject_t{});
    if (!record) {
        note_error(ENOMEM);
        return nullptr;
    }
    record->nType = kind;
    record->nRefCount = 1;
    record->bSignalled.store(0, std::memory_order_relaxed);
    if (pthread_cond_init(&record->cond, nullptr) != 0) {
        return nullptr;
    }
    if (pthread_mutex_init(record->mutex.native(), nullptr) != 0) {
        pthread_cond_destroy(&record->cond);
        return nullptr;
    }
    return HandleRecordOwner(record.release());
}

}  // namespace velora_com::qel::sync
