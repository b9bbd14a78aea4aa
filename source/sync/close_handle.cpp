#include <unistd.h>

#include <cstdio>
#include <utility>

#include "support/owners.h"
#include "sync/file_record.h"
#include "sync/handle_object.h"
#include "sync/mutex_record.h"
#include "sync/thread_end.h"

using namespace velora_com::qel::sync;
using velora_com::qel::support::CancellationOff;
using velora_com::qel::support::MutexGuard;

namespace {

// Drops one reference: how many are left, or nothing when that failed or the record is spent
// already.
bool drop_reference(_oruHandleObject_t& record, uint32_t& left) {
    MutexGuard lock(record.mutex);
    if (!lock || record.nRefCount == 0) {
        return false;
    }
    left = --record.nRefCount;
    return lock.unlock();
}

// A step that fails leaves the record, without a descriptor: the number may be another file's by then.
bool free_file(oruHandle record) {
    auto* file = static_cast<FileRecord*>(record->pData);
    if (file == nullptr || ::close(std::exchange(file->descriptor, -1)) != 0) {
        return false;
    }
    if (file->delete_on_close == 1 && std::remove(file->path) != 0) {
        return false;
    }
    delete file;
    HandleRecordDeleter()(record);
    return true;
}

// The locks of the other kinds are freed without being destroyed: on some systems the destruction of a
// condition that somebody still sleeps on never returns.
template <typename Data>
bool free_waitable(oruHandle record) {
    delete static_cast<Data*>(record->pData);
    delete record;
    return true;
}

}  // namespace

int oruCloseHandle(oruHandle handle) {
    if (!names_object(handle)) {
        return 1;
    }
    const CancellationOff cancellation_off;  // close and remove are cancellation points
    uint32_t left = 0;
    if (!drop_reference(*handle, left)) {
        return 0;
    }
    if (left != 0) {
        return 1;
    }
    switch (handle->nType) {
        case ORU_KIND_FILE:
            return free_file(handle);
        case ORU_KIND_EVENT:
            return free_waitable<char>(handle);
        case ORU_KIND_THREAD:
            part_from_thread(*handle);
            return free_waitable<pthread_t>(handle);
        case ORU_KIND_MUTEX:
            return free_waitable<MutexRecord>(handle);
        default:
            return 0;
    }
}
